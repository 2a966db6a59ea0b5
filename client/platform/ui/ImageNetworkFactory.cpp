#include "platform/ui/ImageNetworkFactory.h"

#include "platform/HTTPCookieStorage.h"
#include "platform/SandboxPaths.h"
#include "platform/ui/CookieJarProxy.h"

#include <QDir>
#include <QNetworkAccessManager>
#include <QNetworkDiskCache>
#include <QQmlEngine>
#include <QThread>

namespace platform {

namespace {

// QML's picture loader asks for HTTP pipelining. Servers that answer only the first of pipelined
// requests (the store among them) then leave the other pictures waiting until the connection
// times out, so pictures go one request per connection at a time.
class SequentialNetworkManager : public QNetworkAccessManager
{
public:
    using QNetworkAccessManager::QNetworkAccessManager;

protected:
    QNetworkReply *createRequest(Operation operation, const QNetworkRequest &request,
                                 QIODevice *outgoingData) override
    {
        QNetworkRequest sequential(request);
        sequential.setAttribute(QNetworkRequest::HttpPipeliningAllowedAttribute, false);
        return QNetworkAccessManager::createRequest(operation, sequential, outgoingData);
    }
};

} // namespace

ImageNetworkFactory::ImageNetworkFactory()
{
    // The store must live in the main thread before any loader thread asks for it.
    HTTPCookieStorage::shared();
}

QString ImageNetworkFactory::cacheDirectory()
{
    const QString caches = SandboxPaths::caches();
    return caches.isEmpty() ? QString() : QDir(caches).filePath(QStringLiteral("images"));
}

QNetworkAccessManager *ImageNetworkFactory::create(QObject *parent)
{
    auto *manager = new SequentialNetworkManager(parent);
    HTTPCookieStorage *store = HTTPCookieStorage::shared();
    if (QThread::currentThread() == store->thread()) {
        HTTPCookieStorage::attachTo(manager);
    } else {
        auto *proxy = new CookieJarProxy(store);
        manager->setCookieJar(proxy); // the manager owns the proxy
    }
    const QString directory = cacheDirectory();
    if (!directory.isEmpty()) { // without a cache folder pictures still load, uncached
        auto *cache = new QNetworkDiskCache(manager);
        cache->setCacheDirectory(directory);
        cache->setMaximumCacheSize(MaximumCacheSize);
        manager->setCache(cache);
    }
    return manager;
}

void ImageNetworkFactory::install(QQmlEngine *engine)
{
    static ImageNetworkFactory factory;
    engine->setNetworkAccessManagerFactory(&factory);
}

} // namespace platform
