#include "platform/ui/Assets.h"

#include <QFile>

namespace platform {

namespace {
const QString IconFolder = QStringLiteral(":/Tarvel/qml/icons/");
}

Assets::Assets(QObject *parent)
    : QObject(parent)
{ }

QUrl Assets::imageUrl(const QString &name)
{
    if (name.isEmpty() || name.contains(QLatin1Char('/')))
        return {};
    for (const char *suffix : {".svg", ".png"}) {
        const QString path = IconFolder + name + QLatin1String(suffix);
        if (QFile::exists(path))
            return QUrl(QStringLiteral("qrc") + path);
    }
    return {};
}

} // namespace platform
