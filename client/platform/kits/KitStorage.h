#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

namespace platform {

// What the kits keep on this device, apart from the app's own data: an installation id made once
// per app home (from which the push token and the sandbox's WeChat identity derive) and the push
// channel's progress. Kept in Library/Preferences/kits.ini, readable by the owner only.
class KitStorage
{
public:
    KitStorage() = delete;

    // 32 lowercase hexadecimal characters, the same for the life of the app home.
    static QString installationId();
    // 32 bytes standing for this device, unique to `purpose` ("apns", "getui:<app id>", ...).
    static QByteArray deviceKey(const QString &purpose);

    static QVariant value(const QString &key);
    static void setValue(const QString &key, const QVariant &value);

    static QString filePath();
};

} // namespace platform
