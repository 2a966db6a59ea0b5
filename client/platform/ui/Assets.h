#pragma once

#include <QObject>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

namespace platform {

// Finds the app's pictures by the names screens use ("navLeftImageIcon", "login_user"): an SVG or
// PNG of that name among the app's icons. Unknown names give an empty address, so a view shows
// nothing rather than a broken picture.
class Assets : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
public:
    explicit Assets(QObject *parent = nullptr);

    Q_INVOKABLE static QUrl imageUrl(const QString &name);
    Q_INVOKABLE static bool hasImage(const QString &name) { return !imageUrl(name).isEmpty(); }
};

} // namespace platform
