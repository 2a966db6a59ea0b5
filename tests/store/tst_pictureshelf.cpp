#include "TestEnvironment.h"
#include "pictures/PictureShelf.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <thread>
#include <vector>

using namespace tarvel::test;

// Scaled pictures on disk: the size bound, the order of eviction, damaged files, restarts and
// writers running side by side.
class TestPictureShelf : public QObject
{
    Q_OBJECT

private:
    static constexpr qsizetype kPictureBytes = 1000;

    static QByteArray picture(const QString &key, qsizetype size = kPictureBytes)
    {
        QByteArray bytes
                = key.toUtf8().repeated(int(size / std::max<qsizetype>(1, key.size())) + 1);
        bytes.resize(size);
        return bytes;
    }
    static qint64 stored(qsizetype size = kPictureBytes)
    {
        return PictureShelf::wrap(QByteArray(size, 'x')).size();
    }
    static qint64 bytesOnDisk(const QString &directory)
    {
        qint64 total = 0;
        for (const QFileInfo &file : QDir(directory).entryInfoList(QDir::Files))
            total += file.size();
        return total;
    }
    static QStringList heldOf(const PictureShelf &shelf, const QStringList &keys)
    {
        QStringList held;
        for (const QString &key : keys) {
            if (shelf.holds(key))
                held.append(key);
        }
        return held;
    }

private slots:
    // Steps: "+a" keeps a, "+A" keeps a picture larger than the whole limit under "A", "?a"
    // reads a, "!" starts the shelf again on the same folder.
    void staysUnderItsLimitDroppingTheLeastRecentlyUsed_data()
    {
        QTest::addColumn<int>("capacity"); // in pictures
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QString>("held");
        QTest::newRow("all fit") << 3 << "+a +b +c"
                                 << "a b c";
        QTest::newRow("oldest goes first") << 3 << "+a +b +c +d"
                                           << "b c d";
        QTest::newRow("several go") << 2 << "+a +b +c +d +e"
                                    << "d e";
        QTest::newRow("a read is a use") << 3 << "+a +b +c ?a +d"
                                         << "a c d";
        QTest::newRow("keeping again replaces") << 3 << "+a +a +a +b"
                                                << "a b";
        QTest::newRow("too large for the limit is not kept") << 2 << "+a +b +A"
                                                             << "a b";
        QTest::newRow("order of use survives a restart") << 3 << "+a +b +c ?a ! +d"
                                                         << "a c d";
        QTest::newRow("smaller limit after a restart") << 3 << "+a +b +c ?a !2"
                                                       << "a c";
    }
    void staysUnderItsLimitDroppingTheLeastRecentlyUsed()
    {
        QFETCH(int, capacity);
        QFETCH(QString, steps);
        QFETCH(QString, held);
        QTemporaryDir folder;
        auto shelf = std::make_unique<PictureShelf>(folder.path(), capacity * stored());
        QStringList keys;
        for (const QString &step : steps.split(QLatin1Char(' '))) {
            const QString key = step.mid(1, 1);
            if (step.startsWith(QLatin1Char('+')) && key == key.toUpper()) {
                shelf->keep(key, picture(key, shelf->byteLimit()));
            } else if (step.startsWith(QLatin1Char('+'))) {
                shelf->keep(key, picture(key));
            } else if (step.startsWith(QLatin1Char('?'))) {
                QCOMPARE(shelf->read(key), std::optional<QByteArray>(picture(key)));
            } else {
                const int limit = step.size() > 1 ? step.mid(1).toInt() : capacity;
                shelf.reset();
                shelf = std::make_unique<PictureShelf>(folder.path(), limit * stored());
            }
            if (!keys.contains(key.toLower()) && !key.isEmpty())
                keys.append(key);
            QVERIFY(bytesOnDisk(folder.path()) <= shelf->byteLimit());
            QCOMPARE(shelf->bytesKept(), bytesOnDisk(folder.path()));
        }
        QCOMPARE(heldOf(*shelf, keys).join(QLatin1Char(' ')), held);
        for (const QString &key : heldOf(*shelf, keys))
            QCOMPARE(shelf->read(key), std::optional<QByteArray>(picture(key)));
    }

    void damagedFileIsDroppedNotServed_data()
    {
        QTest::addColumn<QString>("damage");
        QTest::newRow("last byte cut off") << "truncate-1";
        QTest::newRow("only the header left") << "truncate-header";
        QTest::newRow("empty") << "truncate-all";
        QTest::newRow("byte changed in the picture") << "flip-picture";
        QTest::newRow("byte changed in the checksum") << "flip-checksum";
        QTest::newRow("a bare picture without header") << "bare";
    }
    void damagedFileIsDroppedNotServed()
    {
        QFETCH(QString, damage);
        QTemporaryDir folder;
        PictureShelf shelf(folder.path(), 10 * stored());
        shelf.keep(QStringLiteral("k"), picture(QStringLiteral("k")));
        shelf.keep(QStringLiteral("other"), picture(QStringLiteral("other")));
        const QString path = shelf.filePath(QStringLiteral("k"));
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QByteArray contents = file.readAll();
        file.close();
        const qsizetype header = contents.size() - kPictureBytes;
        if (damage == QLatin1String("truncate-1"))
            contents.chop(1);
        else if (damage == QLatin1String("truncate-header"))
            contents.truncate(header);
        else if (damage == QLatin1String("truncate-all"))
            contents.clear();
        else if (damage == QLatin1String("flip-picture"))
            contents[header + 500] = char(contents[header + 500] ^ 0x20);
        else if (damage == QLatin1String("flip-checksum"))
            contents[6] = contents[6] == '0' ? '1' : '0';
        else
            contents = picture(QStringLiteral("k"));
        QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
        file.write(contents);
        file.close();

        QCOMPARE(shelf.read(QStringLiteral("k")), std::nullopt);
        QVERIFY(!QFile::exists(path));
        QVERIFY(!shelf.holds(QStringLiteral("k")));
        QCOMPARE(shelf.bytesKept(), bytesOnDisk(folder.path()));
        QCOMPARE(shelf.read(QStringLiteral("other")),
                 std::optional<QByteArray>(picture(QStringLiteral("other"))));
    }

    void leftoversOfCutWritesAreRemovedAtStart()
    {
        QTemporaryDir folder;
        {
            PictureShelf shelf(folder.path(), 10 * stored());
            shelf.keep(QStringLiteral("k"), picture(QStringLiteral("k")));
        }
        QFile leftover(folder.filePath(QStringLiteral("abc.pic.Xy12")));
        QVERIFY(leftover.open(QIODevice::WriteOnly));
        leftover.write(QByteArray(300, 'x'));
        leftover.close();
        PictureShelf shelf(folder.path(), 10 * stored());
        QVERIFY(!leftover.exists());
        QCOMPARE(shelf.bytesKept(), stored());
        QCOMPARE(shelf.read(QStringLiteral("k")),
                 std::optional<QByteArray>(picture(QStringLiteral("k"))));
    }

    void writersSideBySideLeaveWholeFilesWithinTheLimit()
    {
        QTemporaryDir folder;
        PictureShelf shelf(folder.path(), 40 * stored());
        std::vector<std::thread> writers;
        for (int writer = 0; writer < 8; ++writer) {
            writers.emplace_back([&shelf, writer] {
                for (int i = 0; i < 30; ++i) {
                    // half the keys are written by every thread, half by this one only
                    const QString key = i % 2 ? QStringLiteral("shared%1").arg(i)
                                              : QStringLiteral("w%1-%2").arg(writer).arg(i);
                    shelf.keep(key, picture(key));
                    shelf.read(QStringLiteral("shared%1").arg(i / 2 * 2 + 1));
                }
            });
        }
        for (std::thread &writer : writers)
            writer.join();
        QVERIFY(bytesOnDisk(folder.path()) <= shelf.byteLimit());
        QCOMPARE(shelf.bytesKept(), bytesOnDisk(folder.path()));
        const QStringList files = QDir(folder.path()).entryList(QDir::Files);
        QCOMPARE(files.filter(QStringLiteral(".pic.")), QStringList());
        int intact = 0;
        for (const QString &name : files) {
            QFile file(folder.filePath(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            QVERIFY2(PictureShelf::unwrap(file.readAll()).has_value(), qPrintable(name));
            ++intact;
        }
        QCOMPARE(intact, 40);
    }
};

TARVEL_TEST_MAIN(TestPictureShelf)
#include "tst_pictureshelf.moc"
