// Unarchiving the stored "userCookies" bytes, whatever they hold.
#include "platform/CookieArchive.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QList<QNetworkCookie> cookies = platform::CookieArchive::unarchive(bytes);
    // What was read is archived and read again.
    if (!cookies.isEmpty())
        platform::CookieArchive::unarchive(platform::CookieArchive::archive(cookies));
    return 0;
}
