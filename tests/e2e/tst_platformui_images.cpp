#include "ScriptedHttpServer.h"
#include "TestEnvironment.h"

#include "platform/HTTPCookieStorage.h"
#include "platform/ui/CookieJarProxy.h"
#include "platform/ui/ImageNetworkFactory.h"

#include <QBuffer>
#include <QDir>
#include <QImage>
#include <QNetworkAccessManager>
#include <QNetworkDiskCache>
#include <QNetworkReply>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QSignalSpy>
#include <QThread>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using namespace platform;
using namespace tarvel::test;

namespace {

QByteArray pngBytes()
{
    QImage image(8, 8, QImage::Format_RGB32);
    image.fill(QColor(60, 102, 183));
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QNetworkCookie cookie(const QByteArray &name, const QByteArray &value)
{
    QNetworkCookie result(name, value);
    result.setDomain(QStringLiteral("127.0.0.1"));
    result.setPath(QStringLiteral("/"));
    return result;
}

QByteArray cookieValue(const RecordedRequest &request, const QByteArray &name)
{
    for (const auto &[key, value] : request.cookies()) {
        if (key == name)
            return value;
    }
    return {};
}

QByteArray storedValue(const QUrl &url, const QByteArray &name)
{
    for (const QNetworkCookie &stored : HTTPCookieStorage::shared()->cookiesForURL(url)) {
        if (stored.name() == name)
            return stored.value();
    }
    return {};
}

} // namespace

// Pictures load through managers that share the app's cookie store (also from QML's loader
// thread) and keep a disk cache in the app's Library/Caches.
class TestPlatformUiImages : public QObject
{
    Q_OBJECT

private:
    ScriptedHttpServer m_server;
    ImageNetworkFactory m_factory;

private slots:
    void initTestCase() { QVERIFY(m_server.listen()); }

    void init()
    {
        for (const QNetworkCookie &old : HTTPCookieStorage::shared()->cookies())
            HTTPCookieStorage::shared()->deleteCookie(old);
        m_server.clearRequests();
    }

    void managersShareTheCookieStoreAndCacheUnderCaches()
    {
        std::unique_ptr<QNetworkAccessManager> manager(m_factory.create(nullptr));
        QCOMPARE(manager->cookieJar(), HTTPCookieStorage::shared());
        auto *cache = qobject_cast<QNetworkDiskCache *>(manager->cache());
        QVERIFY(cache);
        const QString expected
                = QDir(qEnvironmentVariable("TARVEL_HOME")).filePath("Library/Caches/images");
        QCOMPARE(QDir(cache->cacheDirectory()).absolutePath(), QDir(expected).absolutePath());
        manager.reset();
        QVERIFY(HTTPCookieStorage::shared()); // the store outlives its managers
        QVERIFY(HTTPCookieStorage::shared()->cookies().isEmpty());
    }

    void picturesAreNeverPipelined()
    {
        // QML asks for pipelining; a server answering only the first pipelined request would
        // leave the other pictures hanging.
        m_server.route("/covers/2.png", ScriptedResponse::text(pngBytes(), "image/png"));
        std::unique_ptr<QNetworkAccessManager> manager(m_factory.create(nullptr));
        QNetworkRequest request(QUrl(m_server.baseUrl() + "/covers/2.png"));
        request.setAttribute(QNetworkRequest::HttpPipeliningAllowedAttribute, true);
        QNetworkReply *reply = manager->get(request);
        QSignalSpy finished(reply, &QNetworkReply::finished);
        QVERIFY(finished.wait(5000));
        QCOMPARE(reply->error(), QNetworkReply::NoError);
        QCOMPARE(reply->request()
                         .attribute(QNetworkRequest::HttpPipeliningAllowedAttribute)
                         .toBool(),
                 false);
        reply->deleteLater();
    }

    void answersComeFromTheDiskCacheAcrossManagers()
    {
        m_server.route("/covers/1.png", ScriptedResponse::text(pngBytes(), "image/png")
                                                .withHeader("Cache-Control", "max-age=3600"));
        const QUrl url(m_server.baseUrl() + "/covers/1.png?imageView2/2/w/300/q/85");
        for (int attempt = 0; attempt < 2; ++attempt) {
            std::unique_ptr<QNetworkAccessManager> manager(m_factory.create(nullptr));
            QNetworkRequest request(url);
            request.setAttribute(QNetworkRequest::CacheLoadControlAttribute,
                                 QNetworkRequest::PreferCache);
            QNetworkReply *reply = manager->get(request);
            QSignalSpy finished(reply, &QNetworkReply::finished);
            QVERIFY(finished.wait(5000));
            QCOMPARE(reply->error(), QNetworkReply::NoError);
            QCOMPARE(reply->attribute(QNetworkRequest::SourceIsFromCacheAttribute).toBool(),
                     attempt == 1);
            reply->deleteLater();
        }
        QCOMPARE(m_server.requestCount(), 1);
    }

    void qmlPicturesCarryAndKeepCookies()
    {
        HTTPCookieStorage::shared()->setCookie(cookie("_tarvel_session", "s3cr3t"));
        m_server.route("/avatars/7.png", ScriptedResponse::text(pngBytes(), "image/png")
                                                 .withHeader("Set-Cookie", "cart_num=3; Path=/"));
        QQmlEngine engine;
        engine.addImportPath(QStringLiteral("qrc:/"));
        ImageNetworkFactory::install(&engine);
        QQmlComponent component(&engine);
        component.setData("import QtQuick\nimport Tarvel\nRemoteImage { width: 40; height: 40 }",
                          QUrl(QStringLiteral("qrc:/tests/Images.qml")));
        std::unique_ptr<QObject> image(component.create());
        QVERIFY2(image, qPrintable(component.errorString()));
        image->setProperty("source", QUrl(m_server.baseUrl() + "/avatars/7.png"));
        QTRY_COMPARE(image->property("status").toInt(), 1 /* Image.Ready */);

        QCOMPARE(m_server.requestCount(), 1);
        QCOMPARE(cookieValue(m_server.lastRequest(), "_tarvel_session"), QByteArray("s3cr3t"));
        // What the picture's answer set reaches the one store (from the loader's thread).
        const QUrl cart(m_server.baseUrl() + "/cart.json");
        QTRY_COMPARE(storedValue(cart, "cart_num"), QByteArray("3"));
    }

    void proxyReadsTheStoreFromAnotherThread()
    {
        HTTPCookieStorage::shared()->setCookie(cookie("_tarvel_session", "abc"));
        const QUrl url(m_server.baseUrl() + "/store.json");
        QList<QNetworkCookie> seen;
        QThread *worker = QThread::create([&seen, url] {
            CookieJarProxy proxy(HTTPCookieStorage::shared());
            seen = proxy.cookiesForUrl(url);
            proxy.setCookiesFromUrl({QNetworkCookie("cart_num", "5")}, url);
        });
        QSignalSpy done(worker, &QThread::finished);
        worker->start();
        QVERIFY(done.wait(5000)); // the main loop keeps running, answering the worker
        delete worker;
        QCOMPARE(seen.size(), 1);
        QCOMPARE(seen.constFirst().value(), QByteArray("abc"));
        QTRY_COMPARE(storedValue(url, "cart_num"), QByteArray("5"));
    }

    void proxyWithoutAStoreHasNothing()
    {
        auto *store = new QNetworkCookieJar();
        CookieJarProxy proxy(store);
        QVERIFY(proxy.insertCookie(cookie("a", "1")));
        QCOMPARE(proxy.cookiesForUrl(QUrl("http://127.0.0.1/")).size(), 1);
        delete store;
        QVERIFY(proxy.cookiesForUrl(QUrl("http://127.0.0.1/")).isEmpty());
        QVERIFY(!proxy.insertCookie(cookie("b", "2")));
    }
};

TARVEL_TEST_MAIN(TestPlatformUiImages)
#include "tst_platformui_images.moc"
