#include "TestEnvironment.h"

#include "service/AnswerCache.h"
#include "service/OfflineState.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace {

// A body of `size` bytes that tells which entry it belongs to.
QByteArray bodyOf(char mark, int size)
{
    return QByteArray(size, mark);
}

// Bytes one entry of `bodySize` takes on disk, measured with a cache of its own.
qint64 entrySize(const QString &key, int bodySize)
{
    QTemporaryDir folder;
    AnswerCache cache(folder.path());
    cache.store(key, QByteArray(bodySize, 'x'));
    return cache.totalSize();
}

// A probe the test answers by hand.
struct ManualProbe
{
    int sent = 0;
    std::function<void(bool)> pending;

    OfflineState::Probe probe()
    {
        return [this](std::function<void(bool)> done) {
            ++sent;
            pending = std::move(done);
        };
    }
    void answer(bool reached)
    {
        auto done = std::exchange(pending, {});
        if (done)
            done(reached);
    }
};

} // namespace

// The kept answers of the catalogue (size limit, oldest first out, surviving a restart) and the
// offline state with its probe.
class TestAnswerCache : public QObject
{
    Q_OBJECT

private slots:
    void keepsAndReplacesAnswers()
    {
        QTemporaryDir folder;
        AnswerCache cache(folder.path());
        QVERIFY(!cache.lookup(QStringLiteral("GET a")));
        cache.store(QStringLiteral("GET a"), QByteArrayLiteral("{\"status\":\"success\"}"));
        cache.store(QStringLiteral("GET b"), QByteArrayLiteral("second"));
        QCOMPARE(cache.lookup(QStringLiteral("GET a")).value_or(QByteArray()),
                 QByteArrayLiteral("{\"status\":\"success\"}"));
        cache.store(QStringLiteral("GET a"), QByteArrayLiteral("newer"));
        QCOMPARE(cache.lookup(QStringLiteral("GET a")).value_or(QByteArray()),
                 QByteArrayLiteral("newer"));
        QCOMPARE(cache.count(), 2);
        // An empty answer is an answer too.
        cache.store(QStringLiteral("GET empty"), QByteArray());
        QVERIFY(cache.lookup(QStringLiteral("GET empty")).has_value());
        QVERIFY(cache.lookup(QStringLiteral("GET empty"))->isEmpty());
    }

    void survivesARestart()
    {
        QTemporaryDir folder;
        {
            AnswerCache cache(folder.path());
            cache.store(QStringLiteral("GET old"), bodyOf('o', 100));
            cache.store(QStringLiteral("GET new"), bodyOf('n', 100));
        }
        AnswerCache again(folder.path(), entrySize(QStringLiteral("GET old"), 100) * 2);
        QCOMPARE(again.count(), 2);
        QCOMPARE(again.lookup(QStringLiteral("GET new")).value_or(QByteArray()), bodyOf('n', 100));
        // The order of storing survives too: the oldest goes first.
        again.store(QStringLiteral("GET 3rd"), bodyOf('t', 100));
        QVERIFY(!again.contains(QStringLiteral("GET old")));
        QVERIFY(again.contains(QStringLiteral("GET new")));
        QVERIFY(again.contains(QStringLiteral("GET 3rd")));
    }

    void evictsOldestFirst_data()
    {
        QTest::addColumn<int>("room"); // entries of the same size the limit holds
        QTest::addColumn<QStringList>("stored"); // in this order
        QTest::addColumn<QStringList>("kept");
        QTest::newRow("under the limit")
                << 3 << QStringList{"GET a", "GET b"} << QStringList{"GET a", "GET b"};
        QTest::newRow("exactly at the limit")
                << 2 << QStringList{"GET a", "GET b"} << QStringList{"GET a", "GET b"};
        QTest::newRow("one over") << 2 << QStringList{"GET a", "GET b", "GET c"}
                                  << QStringList{"GET b", "GET c"};
        QTest::newRow("many over") << 2 << QStringList{"GET a", "GET b", "GET c", "GET d", "GET e"}
                                   << QStringList{"GET d", "GET e"};
        QTest::newRow("stored again counts as new")
                << 2 << QStringList{"GET a", "GET b", "GET a", "GET c"}
                << QStringList{"GET a", "GET c"};
        QTest::newRow("room for one") << 1 << QStringList{"GET a", "GET b"} << QStringList{"GET b"};
    }

    void evictsOldestFirst()
    {
        QFETCH(int, room);
        QFETCH(QStringList, stored);
        QFETCH(QStringList, kept);
        const int bodySize = 500;
        // Keys of one length make entries of one size.
        QTemporaryDir folder;
        AnswerCache cache(folder.path(), entrySize(QStringLiteral("GET x"), bodySize) * room);
        for (const QString &key : stored)
            cache.store(key, bodyOf(key.back().toLatin1(), bodySize));
        QStringList found;
        for (const QString key : {"GET a", "GET b", "GET c", "GET d", "GET e"}) {
            if (cache.contains(key)) {
                found.append(key);
                QCOMPARE(cache.lookup(key).value_or(QByteArray()),
                         bodyOf(key.back().toLatin1(), bodySize));
            }
        }
        QCOMPARE(found, kept);
        QVERIFY(cache.totalSize() <= cache.maximumSize());
        // What the cache counts is what the folder holds.
        QCOMPARE(QDir(folder.path()).entryList(QDir::Files).size(), kept.size());
    }

    void answerLargerThanTheLimitIsNotKept()
    {
        QTemporaryDir folder;
        AnswerCache cache(folder.path(), entrySize(QStringLiteral("GET a"), 100));
        cache.store(QStringLiteral("GET a"), bodyOf('a', 100));
        cache.store(QStringLiteral("GET b"), bodyOf('b', 5000));
        QVERIFY(!cache.contains(QStringLiteral("GET b")));
        // The small one stays: nothing was evicted for an answer that does not fit.
        QVERIFY(cache.contains(QStringLiteral("GET a")));
    }

    void loweringTheLimitEvicts()
    {
        QTemporaryDir folder;
        AnswerCache cache(folder.path());
        for (const QString key : {"GET a", "GET b", "GET c"})
            cache.store(key, bodyOf('z', 300));
        cache.setMaximumSize(entrySize(QStringLiteral("GET a"), 300));
        QCOMPARE(cache.count(), 1);
        QVERIFY(cache.contains(QStringLiteral("GET c")));
    }

    void damagedFilesAreIgnored()
    {
        QTemporaryDir folder;
        {
            AnswerCache cache(folder.path());
            cache.store(QStringLiteral("GET a"), bodyOf('a', 50));
            cache.store(QStringLiteral("GET b"), bodyOf('b', 50));
        }
        // Cut one file short, as a crash while writing might.
        const QStringList files = QDir(folder.path()).entryList(QDir::Files);
        QCOMPARE(files.size(), 2);
        QFile damaged(QDir(folder.path()).filePath(files.first()));
        QVERIFY(damaged.open(QIODevice::ReadWrite));
        QVERIFY(damaged.resize(6));
        damaged.close();
        AnswerCache again(folder.path());
        QCOMPARE(again.count(), 1);
        const bool aKept = again.contains(QStringLiteral("GET a"));
        QCOMPARE(again.lookup(aKept ? QStringLiteral("GET a") : QStringLiteral("GET b"))
                         .value_or(QByteArray()),
                 bodyOf(aKept ? 'a' : 'b', 50));
    }

    void withoutAFolderNothingIsKept()
    {
        AnswerCache cache{QString()};
        cache.store(QStringLiteral("GET a"), QByteArrayLiteral("x"));
        QVERIFY(!cache.lookup(QStringLiteral("GET a")));
        QCOMPARE(cache.count(), 0);
    }

    void clearRemovesEverything()
    {
        QTemporaryDir folder;
        AnswerCache cache(folder.path());
        cache.store(QStringLiteral("GET a"), QByteArrayLiteral("x"));
        cache.clear();
        QCOMPARE(cache.count(), 0);
        QCOMPARE(cache.totalSize(), 0);
        QVERIFY(QDir(folder.path()).entryList(QDir::Files).isEmpty());
    }

    void probesWithBackoffWhileOffline()
    {
        OfflineState state;
        ManualProbe probe;
        state.setProbe(probe.probe());
        state.setProbeIntervals(5, 40);
        QSignalSpy changed(&state, &OfflineState::answeredFromCacheChanged);
        QSignalSpy returned(&state, &OfflineState::networkReturned);

        state.noteAnsweredFromCache();
        QVERIFY(state.answeredFromCache());
        QCOMPARE(changed.count(), 1);
        // Each miss doubles the wait, up to the longest.
        const QList<int> expected{10, 20, 40, 40};
        for (int interval : expected) {
            const int before = probe.sent;
            QTRY_COMPARE(probe.sent, before + 1);
            probe.answer(false);
            QCOMPARE(state.nextProbeInterval(), interval);
            QVERIFY(state.answeredFromCache());
        }
        QCOMPARE(returned.count(), 0);

        QTRY_VERIFY(probe.pending);
        probe.answer(true);
        QVERIFY(!state.answeredFromCache());
        QCOMPARE(changed.count(), 2);
        QCOMPARE(returned.count(), 1);
        QVERIFY(!state.isProbing());
        // Back online the next outage starts with the short wait again.
        QCOMPARE(state.nextProbeInterval(), 5);
    }

    void anyAnswerFromTheStoreEndsTheOfflineState()
    {
        OfflineState state;
        ManualProbe probe;
        state.setProbe(probe.probe());
        state.setProbeIntervals(60000, 60000);
        QSignalSpy returned(&state, &OfflineState::networkReturned);

        // Reaching the store while nothing was shown from the cache announces nothing.
        state.noteStoreReached();
        QCOMPARE(returned.count(), 0);

        state.noteAnsweredFromCache();
        state.noteAnsweredFromCache();
        QVERIFY(state.isProbing());
        state.noteStoreReached();
        QCOMPARE(returned.count(), 1);
        QVERIFY(!state.isProbing());
        QCOMPARE(probe.sent, 0);
        state.noteStoreReached();
        QCOMPARE(returned.count(), 1);
    }
};

TARVEL_TEST_MAIN(TestAnswerCache)
#include "tst_answercache.moc"
