#pragma once

#include <QImage>
#include <QQuickImageProvider>
#include <QString>
#include <QUrl>

class QObject;
class QQmlEngine;

namespace platform {

// Pictures that live in memory only (a captcha fetched from the service, a chosen avatar), shown
// by QML as "image://memory/..." addresses. An owner object publishes a picture under a key and
// binds the address it gets back; publishing again gives a new address, so QML reloads. The
// pictures of an owner go away with it. Every engine that shows such pictures needs install().
class MemoryImageProvider : public QQuickImageProvider
{
public:
    static inline const QString ProviderId = QStringLiteral("memory");

    MemoryImageProvider();

    // Makes "image://memory/..." addresses load in `engine` (which owns the provider it adds).
    static void install(QQmlEngine *engine);

    // Keeps `image` for `owner` under `key` and answers the address that shows it; a null image
    // removes the picture and answers an empty address.
    static QUrl publish(QObject *owner, const QString &key, const QImage &image);
    static void remove(QObject *owner, const QString &key);
    // The picture an address shows now; a null image when there is none.
    static QImage image(const QUrl &url);

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};

} // namespace platform
