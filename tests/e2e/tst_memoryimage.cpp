#include "TestEnvironment.h"

#include "platform/ui/MemoryImageProvider.h"

#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>

#include <memory>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using platform::MemoryImageProvider;

namespace {

QImage filled(int width, int height, Qt::GlobalColor colour)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(colour);
    return image;
}

} // namespace

// Pictures held by an object reach QML through "image://memory/..." addresses: a new address for
// each new picture, nothing left once the owner is gone, and QML showing exactly what was kept.
class TestMemoryImage : public QObject
{
    Q_OBJECT

private:
    // A QML Image in an engine that knows the provider.
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QObject> m_image;

    bool showInQml(const QUrl &source, const QSize &sourceSize = {})
    {
        m_engine = std::make_unique<QQmlEngine>();
        MemoryImageProvider::install(m_engine.get());
        MemoryImageProvider::install(m_engine.get()); // a second install changes nothing
        QQmlComponent component(m_engine.get());
        component.setData("import QtQuick\nImage { asynchronous: true }",
                          QUrl(QStringLiteral("qrc:/tests/MemoryImage.qml")));
        m_image.reset(component.create());
        if (!m_image)
            return false;
        if (sourceSize.isValid())
            m_image->setProperty("sourceSize", sourceSize);
        m_image->setProperty("source", source);
        return true;
    }

    int imageStatus() const { return m_image->property("status").toInt(); }

private slots:
    void cleanup()
    {
        m_image.reset();
        m_engine.reset();
    }

    void keysAreKeptApart_data()
    {
        QTest::addColumn<QString>("key");
        QTest::newRow("plain") << "captcha";
        QTest::newRow("slashes and query marks") << "a/b?c=%2F";
        QTest::newRow("chinese") << "头像";
    }

    void keysAreKeptApart()
    {
        QFETCH(QString, key);
        QObject owner;
        QObject other;
        const QUrl mine = MemoryImageProvider::publish(&owner, key, filled(4, 3, Qt::red));
        const QUrl theirs = MemoryImageProvider::publish(&other, key, filled(5, 5, Qt::blue));
        const QUrl second
                = MemoryImageProvider::publish(&owner, key + "2", filled(6, 2, Qt::green));
        QCOMPARE(mine.scheme(), QStringLiteral("image"));
        QCOMPARE(mine.host(), QStringLiteral("memory"));
        QCOMPARE(MemoryImageProvider::image(mine).size(), QSize(4, 3));
        QCOMPARE(MemoryImageProvider::image(mine).pixelColor(0, 0), QColor(Qt::red));
        QCOMPARE(MemoryImageProvider::image(theirs).size(), QSize(5, 5));
        QCOMPARE(MemoryImageProvider::image(second).size(), QSize(6, 2));
        // What QML gets for the address as it is written.
        MemoryImageProvider provider;
        QSize size;
        const QImage read = provider.requestImage(mine.toString().mid(15), &size, QSize());
        QCOMPARE(size, QSize(4, 3));
        QCOMPARE(read.pixelColor(3, 2), QColor(Qt::red));
    }

    void newPictureNewAddress()
    {
        QObject owner;
        const QUrl first = MemoryImageProvider::publish(&owner, "captcha", filled(4, 4, Qt::red));
        const QUrl second = MemoryImageProvider::publish(&owner, "captcha", filled(8, 8, Qt::blue));
        QVERIFY(first != second);
        // An old address shows what is held now; QML only needs the change to reload.
        QCOMPARE(MemoryImageProvider::image(first).size(), QSize(8, 8));
        QCOMPARE(MemoryImageProvider::image(second).pixelColor(0, 0), QColor(Qt::blue));

        QVERIFY(MemoryImageProvider::publish(&owner, "captcha", QImage()).isEmpty());
        QVERIFY(MemoryImageProvider::image(second).isNull());
        const QUrl third = MemoryImageProvider::publish(&owner, "captcha", filled(2, 2, Qt::red));
        QVERIFY(third != first && third != second);
        MemoryImageProvider::remove(&owner, "captcha");
        QVERIFY(MemoryImageProvider::image(third).isNull());
        QVERIFY(MemoryImageProvider::publish(nullptr, "captcha", filled(2, 2, Qt::red)).isEmpty());
        QVERIFY(MemoryImageProvider::image(QUrl("https://memory/1/Y2FwdGNoYQ/1")).isNull());
    }

    void goneWithItsOwner()
    {
        auto owner = std::make_unique<QObject>();
        const QUrl a = MemoryImageProvider::publish(owner.get(), "a", filled(3, 3, Qt::red));
        const QUrl b = MemoryImageProvider::publish(owner.get(), "b", filled(3, 3, Qt::red));
        QObject survivor;
        const QUrl kept = MemoryImageProvider::publish(&survivor, "a", filled(3, 3, Qt::red));
        owner.reset();
        QVERIFY(MemoryImageProvider::image(a).isNull());
        QVERIFY(MemoryImageProvider::image(b).isNull());
        QVERIFY(!MemoryImageProvider::image(kept).isNull());
        // A new owner, even at the same address in memory, starts with nothing.
        auto next = std::make_unique<QObject>();
        QVERIFY(MemoryImageProvider::image(a).isNull());
        QVERIFY(MemoryImageProvider::publish(next.get(), "a", filled(1, 1, Qt::red)) != a);
    }

    void qmlShowsThePicture_data()
    {
        QTest::addColumn<QSize>("sourceSize");
        QTest::addColumn<QSize>("shown");
        QTest::newRow("as kept") << QSize() << QSize(90, 36);
        QTest::newRow("scaled to the asked size") << QSize(45, 18) << QSize(45, 18);
    }

    void qmlShowsThePicture()
    {
        QFETCH(QSize, sourceSize);
        QFETCH(QSize, shown);
        QObject owner;
        const QUrl url = MemoryImageProvider::publish(&owner, "captcha", filled(90, 36, Qt::red));
        QVERIFY(showInQml(url, sourceSize));
        QTRY_COMPARE(imageStatus(), 1 /* Image.Ready */);
        QCOMPARE(m_image->property("implicitWidth").toReal(), qreal(shown.width()));
        QCOMPARE(m_image->property("implicitHeight").toReal(), qreal(shown.height()));

        // A new picture under the same key: the new address loads it.
        const QUrl next = MemoryImageProvider::publish(&owner, "captcha", filled(20, 10, Qt::blue));
        m_image->setProperty("sourceSize", QSize());
        m_image->setProperty("source", next);
        QTRY_COMPARE(m_image->property("implicitWidth").toReal(), 20.0);
    }

    void qmlFindsNothingOnceTheOwnerIsGone()
    {
        QUrl url;
        {
            QObject owner;
            url = MemoryImageProvider::publish(&owner, "captcha", filled(9, 9, Qt::red));
        }
        QVERIFY(showInQml(url));
        QTRY_COMPARE(imageStatus(), 3 /* Image.Error */);
    }
};

TARVEL_TEST_MAIN(TestMemoryImage)
#include "tst_memoryimage.moc"
