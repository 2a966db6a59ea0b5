// Property-list reading from arbitrary bytes (a corrupt or foreign User.plist / GTMessage.plist).
#include "platform/PropertyList.h"

#include <QByteArray>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QVariant root = platform::PropertyList::fromData(bytes);
    // Whatever was read must write back as a property list again.
    if (root.typeId() == QMetaType::QVariantList || root.typeId() == QMetaType::QVariantMap) {
        const auto written = platform::PropertyList::toData(root);
        if (written)
            platform::PropertyList::fromData(*written);
    }
    return 0;
}
