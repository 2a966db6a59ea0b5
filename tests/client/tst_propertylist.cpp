#include "TestEnvironment.h"

#include "platform/PropertyList.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <plist/plist.h>

#include <cstdlib>
#include <limits>
#include <unistd.h>

using platform::PropertyList;

namespace {

constexpr QFileDevice::Permissions kOthersAndGroup
        = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup
          | QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;

QDateTime utc(int year, int month, int day, int hour, int minute, int second)
{
    return QDateTime(QDate(year, month, day), QTime(hour, minute, second), Qt::UTC);
}

void writeBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

QByteArray readBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// A binary property list made by libplist itself: ["binary", 7, {"k": true}].
QByteArray binaryPropertyList()
{
    plist_t root = plist_new_array();
    plist_array_append_item(root, plist_new_string("binary"));
    plist_array_append_item(root, plist_new_uint(7));
    plist_t dictionary = plist_new_dict();
    plist_dict_set_item(dictionary, "k", plist_new_bool(1));
    plist_array_append_item(root, dictionary);
    char *bytes = nullptr;
    uint32_t length = 0;
    plist_to_bin(root, &bytes, &length);
    QByteArray result(bytes, static_cast<qsizetype>(length));
    plist_to_bin_free(bytes);
    plist_free(root);
    return result;
}

QByteArray nestedArrays(int depth)
{
    return "<?xml version=\"1.0\"?><plist version=\"1.0\">" + QByteArray("<array>").repeated(depth)
           + QByteArray("</array>").repeated(depth) + "</plist>";
}

} // namespace

class TestPropertyList : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void roundTrip_data();
    void roundTrip();
    void emptyTextStaysPresent();
    void readsBinaryPropertyLists();
    void readsNothingFromUnusableFiles_data();
    void readsNothingFromUnusableFiles();
    void refusesValuesWithoutPropertyListForm_data();
    void refusesValuesWithoutPropertyListForm();
    void failedWriteKeepsPreviousFile_data();
    void failedWriteKeepsPreviousFile();
    void filePermissions_data();
    void filePermissions();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    QString path(const QString &name) const { return m_dir->filePath(name); }
};

void TestPropertyList::init()
{
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

void TestPropertyList::roundTrip_data()
{
    QTest::addColumn<QVariant>("root");

    QTest::newRow("nested containers") << QVariant(
            QVariantMap{{"list", QVariantList{"a", qlonglong(1), true, QVariantMap{{"k", "v"}}}},
                        {"map", QVariantMap{{"inner", QVariantList{}}}}});
    QTest::newRow("text with markup and CJK")
            << QVariant(QVariantList{QStringLiteral("汉字 <b>&amp;</b> \"'\n\ttab"), "  "});
    QTest::newRow("booleans") << QVariant(QVariantList{true, false});
    QTest::newRow("integers") << QVariant(QVariantList{qlonglong(0), qlonglong(-5),
                                                       std::numeric_limits<qlonglong>::max(),
                                                       std::numeric_limits<qlonglong>::min()});
    QTest::newRow("reals") << QVariant(QVariantList{0.1, -2.5, 1e300, 5e-324});
    QTest::newRow("data with zero bytes")
            << QVariant(QVariantList{QByteArray("\0\1\xff\n", 4), QByteArray()});
    QTest::newRow("dates") << QVariant(QVariantList{
            utc(2024, 5, 6, 7, 8, 9), utc(2001, 1, 1, 0, 0, 0), utc(1990, 12, 31, 23, 59, 59)});
    QTest::newRow("empty array") << QVariant(QVariantList{});
    QTest::newRow("empty dictionary") << QVariant(QVariantMap{});
    QTest::newRow("keys with markup and CJK")
            << QVariant(QVariantMap{{QStringLiteral("<键 & \"x\">"), "v"}, {"", "empty key"}});
}

void TestPropertyList::roundTrip()
{
    QFETCH(QVariant, root);
    QVERIFY(PropertyList::write(root, path("file.plist")));
    QCOMPARE(PropertyList::read(path("file.plist")), root);
    QCOMPARE(PropertyList::fromData(readBytes(path("file.plist"))), root);
}

void TestPropertyList::emptyTextStaysPresent()
{
    QVERIFY(PropertyList::write(QVariantMap{{"email", ""}}, path("user.plist")));
    const auto stored = PropertyList::readDictionary(path("user.plist"));
    QVERIFY(stored);
    QVERIFY(stored->contains("email"));
    QVERIFY(!stored->value("email").toString().isNull());
}

void TestPropertyList::readsBinaryPropertyLists()
{
    writeBytes(path("binary.plist"), binaryPropertyList());
    const auto list = PropertyList::readArray(path("binary.plist"));
    QVERIFY(list);
    QCOMPARE(*list, (QVariantList{"binary", qlonglong(7), QVariantMap{{"k", true}}}));
}

void TestPropertyList::readsNothingFromUnusableFiles_data()
{
    QTest::addColumn<bool>("exists");
    QTest::addColumn<QByteArray>("content");

    const QByteArray xmlArray = *PropertyList::toData(QVariantList{"a", QVariantMap{{"b", 1}}});
    const QByteArray binary = binaryPropertyList();

    QTest::newRow("missing file") << false << QByteArray();
    QTest::newRow("empty file") << true << QByteArray();
    QTest::newRow("binary garbage") << true << QByteArray("\x00\xff\x13\x37garbage\x01", 12);
    QTest::newRow("truncated XML") << true << xmlArray.left(xmlArray.size() / 2);
    QTest::newRow("truncated binary") << true << binary.left(binary.size() - 10);
    QTest::newRow("binary header, garbage body") << true << QByteArray("bplist00\x01\x02\x03");
    QTest::newRow("JSON") << true << QByteArray(R"([{"account_id":"1"}])");
    QTest::newRow("HTML") << true << QByteArray("<html><body>502 Bad Gateway</body></html>");
    QTest::newRow("dictionary root") << true << *PropertyList::toData(QVariantMap{{"a", "b"}});
    QTest::newRow("text root") << true
                               << QByteArray("<?xml version=\"1.0\"?><plist version=\"1.0\">"
                                             "<string>a</string></plist>");
    QTest::newRow("nesting too deep") << true << nestedArrays(5000);
    QTest::newRow("NUL byte inside a string")
            << true
            << QByteArray(xmlArray).replace("<string>a</string>",
                                            QByteArray("<string>a\0b</string>", 20));
}

// readArray answers nothing for every one of them, and none of them crashes the reader.
void TestPropertyList::readsNothingFromUnusableFiles()
{
    QFETCH(bool, exists);
    QFETCH(QByteArray, content);
    if (exists)
        writeBytes(path("GTMessage.plist"), content);
    QVERIFY(!PropertyList::readArray(path("GTMessage.plist")));
}

void TestPropertyList::refusesValuesWithoutPropertyListForm_data()
{
    QTest::addColumn<QVariant>("root");

    QTest::newRow("null") << QVariant(QVariantList{QVariant::fromValue(nullptr)});
    QTest::newRow("invalid") << QVariant(QVariantMap{{"a", QVariant()}});
    QTest::newRow("URL") << QVariant(QVariantList{QUrl("http://example.com")});
    QTest::newRow("text with NUL") << QVariant(QVariantList{QString::fromUtf8("a\0b", 3)});
    QTest::newRow("date before 1933") << QVariant(QVariantList{utc(1900, 1, 1, 0, 0, 0)});
    QTest::newRow("unsigned above int64")
            << QVariant(QVariantList{std::numeric_limits<qulonglong>::max()});
    QTest::newRow("deep inside") << QVariant(
            QVariantMap{{"ok", "x"}, {"list", QVariantList{QVariantMap{{"bad", QVariant()}}}}});
    QTest::newRow("root is text") << QVariant(QStringLiteral("text"));
}

void TestPropertyList::refusesValuesWithoutPropertyListForm()
{
    QFETCH(QVariant, root);
    QVERIFY(!PropertyList::toData(root));
    QVERIFY(!PropertyList::write(root, path("refused.plist")));
    QVERIFY(!QFile::exists(path("refused.plist")));
}

void TestPropertyList::failedWriteKeepsPreviousFile_data()
{
    QTest::addColumn<QVariant>("replacement");
    QTest::addColumn<bool>("readOnlyFolder");

    QTest::newRow("value without property-list form")
            << QVariant(QVariantList{QVariant::fromValue(nullptr)}) << false;
    QTest::newRow("read-only folder") << QVariant(QVariantList{"new"}) << true;
}

void TestPropertyList::failedWriteKeepsPreviousFile()
{
    QFETCH(QVariant, replacement);
    QFETCH(bool, readOnlyFolder);
    if (readOnlyFolder && geteuid() == 0)
        QSKIP("root writes into read-only folders");

    const QString folder = path("Documents");
    QVERIFY(QDir().mkpath(folder));
    const QString file = folder + "/User.plist";
    const QVariantList previous{QVariantMap{{"account_id", "1"}}};
    QVERIFY(PropertyList::write(previous, file));
    const QByteArray previousBytes = readBytes(file);
    if (readOnlyFolder)
        QVERIFY(QFile::setPermissions(folder, QFileDevice::ReadOwner | QFileDevice::ExeOwner));

    const bool written = PropertyList::write(replacement, file);
    QFile::setPermissions(folder,
                          QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
    QVERIFY(!written);
    QCOMPARE(readBytes(file), previousBytes);
    QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList{"User.plist"});
}

void TestPropertyList::filePermissions_data()
{
    QTest::addColumn<bool>("existsBefore");
    QTest::addColumn<int>("access");
    QTest::addColumn<bool>("ownerOnly");

    QTest::newRow("owner-only new file") << false << int(PropertyList::Access::OwnerOnly) << true;
    QTest::newRow("owner-only replaces an open file")
            << true << int(PropertyList::Access::OwnerOnly) << true;
    QTest::newRow("default keeps the replaced file's permissions")
            << true << int(PropertyList::Access::Default) << false;
}

void TestPropertyList::filePermissions()
{
    QFETCH(bool, existsBefore);
    QFETCH(int, access);
    QFETCH(bool, ownerOnly);

    const QString file = path("User.plist");
    if (existsBefore) {
        writeBytes(file, "old");
        QVERIFY(QFile::setPermissions(file, QFileDevice::ReadOwner | QFileDevice::WriteOwner
                                                    | QFileDevice::ReadGroup
                                                    | QFileDevice::ReadOther));
    }
    QVERIFY(PropertyList::write(QVariantList{"x"}, file, PropertyList::Access(access)));
    const bool othersLocked = (QFile::permissions(file) & kOthersAndGroup) == 0;
    QCOMPARE(othersLocked, ownerOnly);
    QCOMPARE(PropertyList::readArray(file), std::optional<QVariantList>(QVariantList{"x"}));
}

TARVEL_TEST_MAIN(TestPropertyList)
#include "tst_propertylist.moc"
