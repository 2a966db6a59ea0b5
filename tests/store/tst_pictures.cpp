#include "InProcessStore.h"
#include "StoreClient.h"
#include "StoreContext.h"
#include "TestEnvironment.h"
#include "pictures/SeededPictures.h"

#include <QDir>
#include <QImage>
#include <QtTest>

using namespace tarvel::test;

// Scaled pictures as the store serves them: made once, then read from disk across restarts,
// made again when their file is damaged, bounded, and ready for the app at start.
class TestPictures : public QObject
{
    Q_OBJECT

private:
    static QString scaledAddress(const QString &path, int width)
    {
        return QStringLiteral("%1?imageView2/2/w/%2/q/85").arg(path).arg(width);
    }
    static QStringList shelfFiles(InProcessStore &store)
    {
        return QDir(store.context().pictures().shelf().directory()).entryList(QDir::Files);
    }
    static qint64 scaled(InProcessStore &store) { return store.context().pictures().scaledCount(); }

private slots:
    void scaledOnceThenReadFromDisk_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("width");
        QTest::newRow("cover, grid cell at 1x") << "/pictures/covers/3.jpg" << 173;
        QTest::newRow("cover, page at 3x, enlarged") << "/pictures/covers/40.jpg" << 1125;
        QTest::newRow("banner, carousel at 2x") << "/pictures/banners/2.jpg" << 750;
        QTest::newRow("icon") << "/pictures/icons/5.png" << 64;
        QTest::newRow("avatar") << "/pictures/avatars/default.png" << 120;
    }
    void scaledOnceThenReadFromDisk()
    {
        QFETCH(QString, path);
        QFETCH(int, width);
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const Answer first = client.get(scaledAddress(path, width));
        QCOMPARE(first.status, 200);
        QCOMPARE(first.contentType, QByteArray("image/jpeg"));
        QCOMPARE(scaled(store), 1);
        const QImage original = QImage::fromData(client.get(path).body);
        const QImage image = QImage::fromData(first.body);
        QCOMPARE(image.width(), width);
        QCOMPARE(image.height(), qRound(double(original.height()) * width / original.width()));

        const Answer second = client.get(scaledAddress(path, width));
        QCOMPARE(second.body, first.body);
        QCOMPARE(scaled(store), 1);

        store.restart();
        StoreClient again(store.baseUrl());
        QCOMPARE(again.get(scaledAddress(path, width)).body, first.body);
        QCOMPARE(scaled(store), 0);

        // the same bytes as a store that has never scaled it
        InProcessStore fresh;
        StoreClient freshClient(fresh.baseUrl());
        QCOMPARE(freshClient.get(scaledAddress(path, width)).body, first.body);
        QCOMPARE(scaled(fresh), 1);
    }

    void damagedFileIsScaledAgain_data()
    {
        QTest::addColumn<int>("keep"); // bytes of the file kept, -1: one byte changed instead
        QTest::newRow("cut in half") << 2000;
        QTest::newRow("empty") << 0;
        QTest::newRow("one byte changed") << -1;
    }
    void damagedFileIsScaledAgain()
    {
        QFETCH(int, keep);
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const QString address = scaledAddress(QStringLiteral("/pictures/covers/9.jpg"), 345);
        const QByteArray made = client.get(address).body;
        const QStringList files = shelfFiles(store);
        QCOMPARE(files.size(), 1);
        QFile file(QDir(store.context().pictures().shelf().directory()).filePath(files.first()));
        QVERIFY(file.open(QIODevice::ReadWrite));
        QByteArray contents = file.readAll();
        if (keep < 0)
            contents[contents.size() - 100] = char(~contents[contents.size() - 100]);
        else
            contents.truncate(keep);
        QVERIFY(file.resize(0) && file.seek(0) && file.write(contents) == contents.size());
        file.close();

        const Answer answer = client.get(address);
        QCOMPARE(answer.status, 200);
        QCOMPARE(answer.body, made);
        QCOMPARE(scaled(store), 2);
        QCOMPARE(client.get(address).body, made);
        QCOMPARE(scaled(store), 2); // the file made again is whole
    }

    void keptCopiesStayWithinTheBound()
    {
        StoreOptions options;
        options.picturesBytes = 60 * 1024;
        InProcessStore store(options);
        StoreClient client(store.baseUrl());
        QList<QByteArray> answers;
        for (int width = 200; width <= 560; width += 40) {
            answers.append(
                    client.get(scaledAddress(QStringLiteral("/pictures/covers/12.jpg"), width))
                            .body);
            QVERIFY(store.context().pictures().shelf().bytesKept() <= options.picturesBytes);
        }
        qint64 onDisk = 0;
        for (const QFileInfo &info :
             QDir(store.context().pictures().shelf().directory()).entryInfoList(QDir::Files))
            onDisk += info.size();
        QVERIFY(onDisk <= options.picturesBytes);
        QVERIFY(shelfFiles(store).size() < answers.size());
        const qint64 before = scaled(store);
        // the newest is still kept, the oldest was dropped and is made again, the same
        QCOMPARE(client.get(scaledAddress(QStringLiteral("/pictures/covers/12.jpg"), 560)).body,
                 answers.last());
        QCOMPARE(scaled(store), before);
        QCOMPARE(client.get(scaledAddress(QStringLiteral("/pictures/covers/12.jpg"), 200)).body,
                 answers.first());
        QCOMPARE(scaled(store), before + 1);
    }

    void seededPicturesAreReadyAtStart_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<int>("width");
        QTest::addColumn<bool>("ready");
        for (int width : SeededPictures::kGridCellWidths) {
            QTest::addRow("first cover at %d", width) << "/pictures/covers/1.jpg" << width << true;
            QTest::addRow("last cover at %d", width) << "LAST" << width << true;
        }
        for (int width : SeededPictures::kFullWidths) {
            QTest::addRow("cover at %d", width) << "/pictures/covers/2.jpg" << width << true;
            QTest::addRow("banner at %d", width) << "/pictures/banners/1.jpg" << width << true;
        }
        QTest::newRow("width the app does not ask for") << "/pictures/covers/1.jpg" << 300 << false;
        QTest::newRow("icon") << "/pictures/icons/1.png" << 173 << false;
    }
    void seededPicturesAreReadyAtStart()
    {
        QFETCH(QString, path);
        QFETCH(int, width);
        QFETCH(bool, ready);
        if (!m_scaledAhead) {
            StoreOptions options;
            options.scalePicturesAhead = true;
            m_scaledAhead = std::make_unique<InProcessStore>(options);
            const Catalog &catalog = m_scaledAhead->context().catalog();
            const qint64 expected = catalog.focusRecList().size() * 3 + qint64(catalog.size()) * 6;
            QCOMPARE(scaled(*m_scaledAhead), expected);
        }
        if (path == QLatin1String("LAST"))
            path = QStringLiteral("/pictures/covers/%1.jpg")
                           .arg(m_scaledAhead->context().catalog().products().back().id);
        StoreClient client(m_scaledAhead->baseUrl());
        const qint64 before = scaled(*m_scaledAhead);
        const Answer answer = client.get(scaledAddress(path, width));
        QCOMPARE(answer.status, 200);
        QCOMPARE(QImage::fromData(answer.body).width(), width);
        QCOMPARE(scaled(*m_scaledAhead) == before, ready);
    }

    void cleanupTestCase() { m_scaledAhead.reset(); }

private:
    std::unique_ptr<InProcessStore> m_scaledAhead;
};

TARVEL_TEST_MAIN(TestPictures)
#include "tst_pictures.moc"
