#include "TestEnvironment.h"

#include "platform/PropertyList.h"
#include "service/ICDataHelper.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <list>

using platform::PropertyList;

using PathGetter = QString (*)();
Q_DECLARE_METATYPE(PathGetter)

namespace {

constexpr QFileDevice::Permissions kOthersAndGroup
        = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup
          | QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;

const QVariantMap kFirst{{"title", "A"}, {"content", "one"}, {"url", "/products/1"}};
const QVariantMap kSecond{{"title", "B"}, {"content", "two"}, {"url", "/products/2"}};
const QVariantMap kFirstAgain{{"title", "A2"}, {"content", "three"}, {"url", "/products/1"}};

void writeBytes(const QString &path, const QByteArray &bytes)
{
    QVERIFY(QDir().mkpath(QFileInfo(path).absolutePath()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QString messagesPath()
{
    return QDir(ICDataHelper::docPath()).filePath("GTMessage.plist");
}

// Puts the message file in place: a list, garbage bytes, or nothing (missing).
void prepareMessages(const QVariant &content)
{
    if (content.typeId() == QMetaType::QVariantList)
        QVERIFY(PropertyList::write(content, messagesPath()));
    else if (content.typeId() == QMetaType::QByteArray)
        writeBytes(messagesPath(), content.toByteArray());
}

} // namespace

class TestDataHelper : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void folders_data();
    void folders();
    void getFilesNameListsEverythingBelow();
    void createFile_data();
    void createFile();
    void deleteFile_data();
    void deleteFile();
    void savedFilesReadBackOwnerOnly();
    void getFileWithName_data();
    void getFileWithName();
    void dataSaveDictWith_data();
    void dataSaveDictWith();
    void dataDeleteDictWithKey_data();
    void dataDeleteDictWithKey();
    void dataGetDictWithKey_data();
    void dataGetDictWithKey();

private:
    QString home() const { return m_homes.back().path(); }
    std::list<QTemporaryDir> m_homes;
    QTemporaryDir m_workingDir;
};

void TestDataHelper::init()
{
    QTemporaryDir &home = m_homes.emplace_back();
    QVERIFY(home.isValid());
    qputenv("TARVEL_HOME", home.path().toUtf8());
    QVERIFY(QDir::setCurrent(m_workingDir.path()));
}

void TestDataHelper::folders_data()
{
    QTest::addColumn<PathGetter>("getter");
    QTest::addColumn<QString>("relativePath");
    QTest::addColumn<bool>("exists");

    QTest::newRow("appPath") << PathGetter(ICDataHelper::appPath) << "Applications" << false;
    QTest::newRow("docPath") << PathGetter(ICDataHelper::docPath) << "Documents" << true;
    QTest::newRow("libPrefPath") << PathGetter(ICDataHelper::libPrefPath) << "Library/Preference"
                                 << false;
    QTest::newRow("libCachePath") << PathGetter(ICDataHelper::libCachePath) << "Library/Caches"
                                  << true;
    QTest::newRow("tmpPath, inside Library")
            << PathGetter(ICDataHelper::tmpPath) << "Library/tmp" << true;
}

void TestDataHelper::folders()
{
    QFETCH(PathGetter, getter);
    QFETCH(QString, relativePath);
    QFETCH(bool, exists);
    const QString path = getter();
    QCOMPARE(path, QDir(home()).absoluteFilePath(relativePath));
    QCOMPARE(QFileInfo(path).isDir(), exists);
}

void TestDataHelper::getFilesNameListsEverythingBelow()
{
    const QString root = ICDataHelper::docPath();
    writeBytes(root + "/a/b/c.txt", "c");
    writeBytes(root + "/d.plist", "d");
    writeBytes(root + "/.hidden", "h");
    QVERIFY(QDir().mkpath(root + "/empty"));

    const QStringList expected{".hidden", "a", "a/b", "a/b/c.txt", "d.plist", "empty"};
    QCOMPARE(ICDataHelper::GetFilesName(root), expected);
    QCOMPARE(ICDataHelper::GetFilesName("~/Documents"), expected);
    QCOMPARE(ICDataHelper::GetFilesName(root + "/missing"), QStringList());
    QCOMPARE(ICDataHelper::GetFilesName(""), QStringList());
}

void TestDataHelper::createFile_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QByteArray>("before"); // null: no file before
    QTest::addColumn<bool>("created");

    QTest::newRow("new file") << "DOCS" << QByteArray() << true;
    QTest::newRow("existing file is emptied") << "DOCS" << QByteArray("old") << true;
    QTest::newRow("folder given with ~") << "~/Documents" << QByteArray() << true;
    QTest::newRow("missing folder: nothing made anywhere") << "~/missing" << QByteArray() << false;
}

void TestDataHelper::createFile()
{
    QFETCH(QString, folder);
    QFETCH(QByteArray, before);
    QFETCH(bool, created);
    if (folder == "DOCS")
        folder = ICDataHelper::docPath();
    const QString target = QDir(ICDataHelper::docPath()).filePath("note.txt");
    if (!before.isNull())
        writeBytes(target, before);

    QVERIFY(ICDataHelper::CreateFile(folder, "note.txt"));
    QCOMPARE(QFile::exists(target), created);
    if (created)
        QCOMPARE(QFileInfo(target).size(), 0);
    QCOMPARE(QDir::currentPath(), QDir(m_workingDir.path()).canonicalPath());
    QVERIFY(!QFile::exists(m_workingDir.filePath("note.txt")));
    QVERIFY(!QFile::exists(home() + "/missing"));
}

void TestDataHelper::deleteFile_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("answer");
    QTest::addColumn<QStringList>("remaining"); // below the app home's Documents

    QTest::newRow("file") << "DOCS/User.plist" << true << QStringList{"keep", "keep/x.txt"};
    QTest::newRow("file given with ~")
            << "~/Documents/User.plist" << true << QStringList{"keep", "keep/x.txt"};
    QTest::newRow("folder with content") << "DOCS/keep" << true << QStringList{"User.plist"};
    QTest::newRow("missing item") << "DOCS/nothing" << true
                                  << QStringList{"User.plist", "keep", "keep/x.txt"};
    QTest::newRow("relative to the working folder")
            << "User.plist" << true << QStringList{"User.plist", "keep", "keep/x.txt"};
    QTest::newRow("empty path") << "" << false << QStringList{"User.plist", "keep", "keep/x.txt"};
    QTest::newRow("the app home itself")
            << "~" << false << QStringList{"User.plist", "keep", "keep/x.txt"};
}

void TestDataHelper::deleteFile()
{
    QFETCH(QString, path);
    QFETCH(bool, answer);
    QFETCH(QStringList, remaining);
    const QString documents = ICDataHelper::docPath();
    writeBytes(documents + "/User.plist", "user");
    writeBytes(documents + "/keep/x.txt", "x");
    writeBytes(m_workingDir.filePath("User.plist"), "in the working folder");
    path.replace("DOCS", documents);

    QCOMPARE(ICDataHelper::DeleteFile(path), answer);
    QCOMPARE(ICDataHelper::GetFilesName(documents), remaining);
    QCOMPARE(QFile::exists(m_workingDir.filePath("User.plist")), path != "User.plist");
    QCOMPARE(QDir::currentPath(), QDir(m_workingDir.path()).canonicalPath());
}

void TestDataHelper::savedFilesReadBackOwnerOnly()
{
    const QVariantList list{QVariantMap{{"account_id", "1"}}, QVariantMap{}};
    QVERIFY(ICDataHelper::SaveFileWithName("User.plist", list));
    QCOMPARE(ICDataHelper::GetFileWithName("User.plist"), std::optional<QVariantList>(list));
    const QString path = QDir(ICDataHelper::docPath()).filePath("User.plist");
    QCOMPARE(QFile::permissions(path) & kOthersAndGroup, QFileDevice::Permissions());
}

void TestDataHelper::getFileWithName_data()
{
    QTest::addColumn<QVariant>("content");
    QTest::addColumn<bool>("found");

    QTest::newRow("missing") << QVariant() << false;
    QTest::newRow("list") << QVariant(QVariantList{kFirst}) << true;
    QTest::newRow("empty list") << QVariant(QVariantList{}) << true;
    QTest::newRow("corrupt") << QVariant(QByteArray("<?xml version=\"1.0\"?><plist><arr")) << false;
    QTest::newRow("foreign root") << QVariant(*PropertyList::toData(QVariantMap{{"title", "A"}}))
                                  << false;
}

void TestDataHelper::getFileWithName()
{
    QFETCH(QVariant, content);
    QFETCH(bool, found);
    prepareMessages(content);
    const auto list = ICDataHelper::GetFileWithName("GTMessage.plist");
    QCOMPARE(list.has_value(), found);
    if (found)
        QCOMPARE(*list, content.toList());
}

void TestDataHelper::dataSaveDictWith_data()
{
    QTest::addColumn<QVariant>("before");
    QTest::addColumn<QVariantList>("saved");
    QTest::addColumn<QList<bool>>("answers");
    QTest::addColumn<QVariantList>("after");

    QTest::newRow("equal records stored once") << QVariant() << QVariantList{kFirst, kFirst}
                                               << QList{true, false} << QVariantList{kFirst};
    QTest::newRow("different records appended in order")
            << QVariant() << QVariantList{kSecond, kFirst} << QList{true, true}
            << QVariantList{kSecond, kFirst};
    QTest::newRow("same url, other content is another record")
            << QVariant(QVariantList{kFirst}) << QVariantList{kFirstAgain} << QList{true}
            << QVariantList{kFirst, kFirstAgain};
    QTest::newRow("already stored in the file")
            << QVariant(QVariantList{kSecond, kFirst}) << QVariantList{kFirst} << QList{false}
            << QVariantList{kSecond, kFirst};
    QTest::newRow("corrupt file starts a new list")
            << QVariant(QByteArray("\x01garbage")) << QVariantList{kFirst} << QList{true}
            << QVariantList{kFirst};
}

void TestDataHelper::dataSaveDictWith()
{
    QFETCH(QVariant, before);
    QFETCH(QVariantList, saved);
    QFETCH(QList<bool>, answers);
    QFETCH(QVariantList, after);
    prepareMessages(before);
    for (qsizetype i = 0; i < saved.size(); ++i)
        QCOMPARE(ICDataHelper::DataSaveDictWith(saved.at(i).toMap(), "GTMessage.plist"),
                 answers.at(i));
    QCOMPARE(PropertyList::readArray(messagesPath()), std::optional<QVariantList>(after));
}

void TestDataHelper::dataDeleteDictWithKey_data()
{
    QTest::addColumn<QVariant>("before");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QVariantList>("after");

    const QVariantMap numbered{{"id", qlonglong(7)}, {"title", "N"}};
    const QVariantMap untitled{{"url", "/x"}};

    QTest::newRow("missing file is created empty") << QVariant() << "url"
                                                   << "/products/1" << QVariantList{};
    QTest::newRow("only the first match goes")
            << QVariant(QVariantList{kFirst, kSecond, kFirstAgain}) << "url"
            << "/products/1" << QVariantList{kSecond, kFirstAgain};
    QTest::newRow("no match keeps the list") << QVariant(QVariantList{kFirst}) << "url"
                                             << "/none" << QVariantList{kFirst};
    QTest::newRow("number matched by its text") << QVariant(QVariantList{numbered, kFirst}) << "id"
                                                << "7" << QVariantList{kFirst};
    QTest::newRow("empty text never matches an absent key")
            << QVariant(QVariantList{untitled}) << "title"
            << "" << QVariantList{untitled};
    QTest::newRow("corrupt file is replaced by an empty list")
            << QVariant(QByteArray("\x01garbage")) << "url"
            << "/x" << QVariantList{};
}

void TestDataHelper::dataDeleteDictWithKey()
{
    QFETCH(QVariant, before);
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QVariantList, after);
    prepareMessages(before);
    QVERIFY(ICDataHelper::DataDeleteDictWithKey(key, value, "GTMessage.plist"));
    QCOMPARE(PropertyList::readArray(messagesPath()), std::optional<QVariantList>(after));
}

void TestDataHelper::dataGetDictWithKey_data()
{
    QTest::addColumn<QVariant>("before");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QVariantMap>("expected"); // empty: nothing found

    QTest::newRow("first match") << QVariant(QVariantList{kSecond, kFirst, kFirstAgain})
                                 << "/products/1" << kFirst;
    QTest::newRow("no match") << QVariant(QVariantList{kSecond}) << "/products/1" << QVariantMap();
    QTest::newRow("missing file") << QVariant() << "/products/1" << QVariantMap();
}

void TestDataHelper::dataGetDictWithKey()
{
    QFETCH(QVariant, before);
    QFETCH(QString, value);
    QFETCH(QVariantMap, expected);
    prepareMessages(before);
    const auto found = ICDataHelper::DataGetDictWithKey("url", value, "GTMessage.plist");
    QCOMPARE(found.value_or(QVariantMap()), expected);
    QCOMPARE(found.has_value(), !expected.isEmpty());
    QCOMPARE(QFile::exists(messagesPath()), before.isValid()); // reading never creates the file
}

TARVEL_TEST_MAIN(TestDataHelper)
#include "tst_datahelper.moc"
