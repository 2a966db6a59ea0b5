#include "platform/ui/ImageNetworkFactory.h"

#include "platform/HTTPCookieStorage.h"
#include "platform/ui/CookieJarProxy.h"

#include <QCoreApplication>
#include <QDir>
#include <QNetworkAccessManager>
#include <QNetworkDiskCache>
#include <QQmlEngine>
#include <QStandardPaths>
#include <QThread>

namespace platform {

namespace {

// The app home as the sandbox defines it: TARVEL_HOME, else the platform's app-data folder.
QString appHome()
{
    const QString home = qEnvironmentVariable("TARVEL_HOME");
    if (!home.isEmpty())
        return home;
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

} // namespace

ImageNetworkFactory::ImageNetworkFactory()
{
    // The store must live in the main thread before any loader thread asks for it.
    HTTPCookieStorage::shared();
}

QString ImageNetworkFactory::cacheDirectory()
{
    return QDir(appHome()).filePath(QStringLiteral("Library/Caches/images"));
}

QNetworkAccessManager *ImageNetworkFactory::create(QObject *parent)
{
    auto *manager = new QNetworkAccessManager(parent);
    HTTPCookieStorage *store = HTTPCookieStorage::shared();
    if (QThread::currentThread() == store->thread()) {
        HTTPCookieStorage::attachTo(manager);
    } else {
        auto *proxy = new CookieJarProxy(store);
        manager->setCookieJar(proxy); // the manager owns the proxy
    }
    auto *cache = new QNetworkDiskCache(manager);
    cache->setCacheDirectory(cacheDirectory());
    cache->setMaximumCacheSize(MaximumCacheSize);
    manager->setCache(cache);
    return manager;
}

void ImageNetworkFactory::install(QQmlEngine *engine)
{
    static ImageNetworkFactory factory;
    engine->setNetworkAccessManagerFactory(&factory);
}

} // namespace platform
