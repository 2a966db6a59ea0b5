#include "platform/SandboxPaths.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace platform {

QString SandboxPaths::home()
{
    QString path = qEnvironmentVariable("TARVEL_HOME");
    if (path.isEmpty())
        path = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    if (path.isEmpty() || !QDir().mkpath(path))
        return {};
    return QDir::cleanPath(QDir(path).absolutePath());
}

QString SandboxPaths::documents()
{
    return ensureFolder(QStringLiteral("Documents"));
}

QString SandboxPaths::library()
{
    return ensureFolder(QStringLiteral("Library"));
}

QString SandboxPaths::preferences()
{
    return ensureFolder(QStringLiteral("Library/Preferences"));
}

QString SandboxPaths::caches()
{
    return ensureFolder(QStringLiteral("Library/Caches"));
}

QString SandboxPaths::tmp()
{
    return ensureFolder(QStringLiteral("Library/tmp"));
}

QString SandboxPaths::applications()
{
    const QString base = home();
    return base.isEmpty() ? QString() : base + QStringLiteral("/Applications");
}

QString SandboxPaths::expandTilde(const QString &path)
{
    if (path == QLatin1String("~"))
        return home();
    if (path.startsWith(QLatin1String("~/")))
        return home() + path.mid(1);
    return path;
}

bool SandboxPaths::createOwnerOnlyFile(const QString &path)
{
    QFile file(path);
    if (file.exists())
        return file.setPermissions(ownerOnly);
    // Created with the final permissions at once: the file is never readable by others.
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly, ownerOnly))
        return false;
    file.close();
    return true;
}

QString SandboxPaths::ensureFolder(const QString &relativePath)
{
    const QString base = home();
    if (base.isEmpty())
        return {};
    const QString path = base + QLatin1Char('/') + relativePath;
    return QDir().mkpath(path) ? path : QString();
}

} // namespace platform
