#include "platform/kits/KitStorage.h"

#include "platform/SandboxPaths.h"

#include <QCryptographicHash>
#include <QDir>
#include <QRandomGenerator>
#include <QSettings>

namespace platform {

namespace {
const QString InstallationIdKey = QStringLiteral("installation/id");

bool isInstallationId(const QString &text)
{
    static const QString hexDigits = QStringLiteral("0123456789abcdef");
    return text.size() == 32 && std::all_of(text.cbegin(), text.cend(), [](QChar c) {
               return hexDigits.contains(c);
           });
}

QString newInstallationId()
{
    QByteArray bytes(16, Qt::Uninitialized);
    QRandomGenerator::system()->generate(bytes.begin(), bytes.end());
    return QString::fromLatin1(bytes.toHex());
}
} // namespace

QString KitStorage::filePath()
{
    const QString folder = SandboxPaths::preferences();
    return folder.isEmpty() ? QString() : QDir(folder).filePath(QStringLiteral("kits.ini"));
}

QVariant KitStorage::value(const QString &key)
{
    const QString path = filePath();
    if (path.isEmpty())
        return {};
    return QSettings(path, QSettings::IniFormat).value(key);
}

void KitStorage::setValue(const QString &key, const QVariant &value)
{
    const QString path = filePath();
    if (path.isEmpty())
        return;
    SandboxPaths::createOwnerOnlyFile(path);
    QSettings settings(path, QSettings::IniFormat);
    settings.setValue(key, value);
    settings.sync();
}

QString KitStorage::installationId()
{
    const QString stored = value(InstallationIdKey).toString();
    if (isInstallationId(stored))
        return stored;
    const QString made = newInstallationId();
    setValue(InstallationIdKey, made);
    return made;
}

QByteArray KitStorage::deviceKey(const QString &purpose)
{
    return QCryptographicHash::hash((purpose + QLatin1Char(':') + installationId()).toUtf8(),
                                    QCryptographicHash::Sha256);
}

} // namespace platform
