#pragma once

#include <QQmlNetworkAccessManagerFactory>
#include <QString>

class QQmlEngine;

namespace platform {

// The network managers QML loads pictures with: they send and keep cookies in the app's one cookie
// store and cache answers on disk under Library/Caches. QML may ask for managers from its image
// loading thread; those reach the cookie store through a CookieJarProxy.
class ImageNetworkFactory : public QQmlNetworkAccessManagerFactory
{
public:
    ImageNetworkFactory();

    QNetworkAccessManager *create(QObject *parent) override;

    // Makes `engine` load through the app's factory (which outlives every engine).
    static void install(QQmlEngine *engine);
    static QString cacheDirectory();

    static constexpr qint64 MaximumCacheSize = 64 * 1024 * 1024;
};

} // namespace platform
