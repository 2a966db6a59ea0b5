#include "TestEnvironment.h"

#include "platform/UserDefaults.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <list>

using platform::UserDefaults;

namespace {

constexpr QFileDevice::Permissions kOthersAndGroup
        = QFileDevice::ReadGroup | QFileDevice::WriteGroup | QFileDevice::ExeGroup
          | QFileDevice::ReadOther | QFileDevice::WriteOther | QFileDevice::ExeOther;

QByteArray readBytes(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestUserDefaults : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void valuesKeepTheirTypeAcrossRestart_data();
    void valuesKeepTheirTypeAcrossRestart();
    void removalPersists_data();
    void removalPersists();
    void changesAreSignalled_data();
    void changesAreSignalled();
    void unreadableFileReadsAsNothing_data();
    void unreadableFileReadsAsNothing();
    void fileIsOwnerOnly();
    void reloadFollowsTheAppHome();

private:
    // Switches to a fresh app home; when `preferences` is given it becomes that home's file.
    void switchHome(const QByteArray &preferences = QByteArray());
    // The next launch: the same file read from disk by a new process (a new path, so that no
    // cached reading of the old one is reused).
    void restart();

    std::list<QTemporaryDir> m_homes;
};

void TestUserDefaults::init()
{
    switchHome();
}

void TestUserDefaults::switchHome(const QByteArray &preferences)
{
    QTemporaryDir &home = m_homes.emplace_back();
    QVERIFY(home.isValid());
    qputenv("TARVEL_HOME", home.path().toUtf8());
    if (!preferences.isNull()) {
        QVERIFY(QDir().mkpath(home.filePath("Library/Preferences")));
        QFile file(UserDefaults::filePath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(preferences);
    }
    UserDefaults::standard().reload();
}

void TestUserDefaults::restart()
{
    QVERIFY(UserDefaults::standard().synchronize());
    const QByteArray stored = readBytes(UserDefaults::filePath());
    QVERIFY(!stored.isEmpty());
    switchHome(stored);
}

void TestUserDefaults::valuesKeepTheirTypeAcrossRestart_data()
{
    QTest::addColumn<QVariant>("value");

    QTest::newRow("text") << QVariant(QStringLiteral("13800138000"));
    QTest::newRow("CJK text") << QVariant(QStringLiteral("玩家一号"));
    QTest::newRow("empty text") << QVariant(QString(""));
    QTest::newRow("text that looks like a bool") << QVariant(QStringLiteral("true"));
    QTest::newRow("text starting with @") << QVariant(QStringLiteral("@ByteArray(x)"));
    QTest::newRow("text with line breaks and =") << QVariant(QStringLiteral("a=b\n[c]\r\n;d"));
    QTest::newRow("bool true") << QVariant(true);
    QTest::newRow("bool false") << QVariant(false);
    QTest::newRow("bytes with NUL") << QVariant(QByteArray("\0\x01\xff=\n", 5));
    QTest::newRow("empty bytes") << QVariant(QByteArray(""));
    QTest::newRow("integer") << QVariant(qlonglong(-42));
    QTest::newRow("real") << QVariant(0.1);
}

void TestUserDefaults::valuesKeepTheirTypeAcrossRestart()
{
    QFETCH(QVariant, value);
    UserDefaults::standard().setObject(value, "key");
    restart();
    const QVariant stored = UserDefaults::standard().objectForKey("key");
    QCOMPARE(stored.typeId(), value.typeId());
    QCOMPARE(stored, value);
}

void TestUserDefaults::removalPersists_data()
{
    QTest::addColumn<bool>("byInvalidValue");

    QTest::newRow("set to an invalid value") << true;
    QTest::newRow("removeObjectForKey") << false;
}

void TestUserDefaults::removalPersists()
{
    QFETCH(bool, byInvalidValue);
    UserDefaults &defaults = UserDefaults::standard();
    defaults.setObject(QByteArray("cookies"), "userCookies");
    defaults.setObject(true, "isCountdown");
    restart();
    if (byInvalidValue)
        UserDefaults::standard().setObject(QVariant(), "userCookies");
    else
        UserDefaults::standard().removeObjectForKey("userCookies");
    QVERIFY(!UserDefaults::standard().objectForKey("userCookies").isValid());
    restart();
    QVERIFY(!UserDefaults::standard().objectForKey("userCookies").isValid());
    QCOMPARE(UserDefaults::standard().objectForKey("isCountdown"), QVariant(true));
}

void TestUserDefaults::changesAreSignalled_data()
{
    QTest::addColumn<QVariant>("before"); // invalid: the key is absent
    QTest::addColumn<QVariant>("after"); // invalid: the key is removed
    QTest::addColumn<bool>("signalled");

    QTest::newRow("new key") << QVariant() << QVariant("3") << true;
    QTest::newRow("changed text") << QVariant("3") << QVariant("4") << true;
    QTest::newRow("same text again") << QVariant("3") << QVariant("3") << false;
    QTest::newRow("same bytes again")
            << QVariant(QByteArray("a")) << QVariant(QByteArray("a")) << false;
    QTest::newRow("text to bool") << QVariant("1") << QVariant(true) << true;
    QTest::newRow("removed") << QVariant("0") << QVariant() << true;
    QTest::newRow("absent key removed") << QVariant() << QVariant() << false;
}

void TestUserDefaults::changesAreSignalled()
{
    QFETCH(QVariant, before);
    QFETCH(QVariant, after);
    QFETCH(bool, signalled);

    UserDefaults &defaults = UserDefaults::standard();
    defaults.setObject(before, "cartnum");
    QSignalSpy spy(&defaults, &UserDefaults::valueChanged);
    defaults.setObject(after, "cartnum");

    QCOMPARE(spy.size(), signalled ? 1 : 0);
    if (signalled) {
        QCOMPARE(spy.first().at(0).toString(), QStringLiteral("cartnum"));
        QCOMPARE(spy.first().at(1).value<QVariant>(), before);
        QCOMPARE(spy.first().at(2).value<QVariant>(), after);
    }
    QCOMPARE(defaults.objectForKey("cartnum"), after);
}

void TestUserDefaults::unreadableFileReadsAsNothing_data()
{
    QTest::addColumn<QByteArray>("content");

    QTest::newRow("empty file") << QByteArray("");
    QTest::newRow("binary garbage") << QByteArray("\x00\xff\xfe[General\n==\n@Variant(\x01", 24);
    QTest::newRow("property list")
            << QByteArray("<?xml version=\"1.0\"?><plist version=\"1.0\"><dict><key>username"
                          "</key><string>x</string></dict></plist>");
    QTest::newRow("another program's INI") << QByteArray("[General]\nusername=x\n");
    QTest::newRow("values without format version") << QByteArray("[Values]\nusername=x\n");
}

void TestUserDefaults::unreadableFileReadsAsNothing()
{
    QFETCH(QByteArray, content);
    switchHome(content);
    UserDefaults &defaults = UserDefaults::standard();
    QVERIFY(!defaults.objectForKey("username").isValid());
    if (!content.isEmpty()) // kept aside, not overwritten
        QCOMPARE(readBytes(UserDefaults::filePath() + ".unreadable"), content);

    defaults.setObject(QStringLiteral("13800138000"), "username");
    restart();
    QCOMPARE(UserDefaults::standard().objectForKey("username"), QVariant("13800138000"));
}

void TestUserDefaults::fileIsOwnerOnly()
{
    UserDefaults::standard().setObject(QByteArray("session"), "userCookies");
    QVERIFY(UserDefaults::standard().synchronize());
    const QString path = UserDefaults::filePath();
    QVERIFY(path.endsWith("/Library/Preferences/Tarvel.ini"));
    QVERIFY(QFile::exists(path));
    QCOMPARE(QFile::permissions(path) & kOthersAndGroup, QFileDevice::Permissions());
}

void TestUserDefaults::reloadFollowsTheAppHome()
{
    UserDefaults::standard().setObject(QStringLiteral("first"), "username");
    QVERIFY(UserDefaults::standard().synchronize());
    const QByteArray firstHome = qgetenv("TARVEL_HOME");

    switchHome();
    QVERIFY(!UserDefaults::standard().objectForKey("username").isValid());

    qputenv("TARVEL_HOME", firstHome);
    UserDefaults::standard().reload();
    QCOMPARE(UserDefaults::standard().objectForKey("username"), QVariant("first"));
}

TARVEL_TEST_MAIN(TestUserDefaults)
#include "tst_userdefaults.moc"
