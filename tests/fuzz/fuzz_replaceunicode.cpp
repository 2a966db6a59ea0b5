// Feeds arbitrary text to the unescaping helpers that read values out of failure texts.

#include "util/NSStringTools.h"

#include <QString>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const QString unescaped = NSStringTools::replaceUnicode(text);
    // Unescaping never lengthens the text, except for a "\r\n" pair, which it shortens too.
    if (unescaped.size() > text.size())
        __builtin_trap();
    NSStringTools::replaceString(text);
    return 0;
}
