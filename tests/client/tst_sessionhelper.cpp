#include "TestEnvironment.h"

#include "models/Object_User.h"
#include "platform/HTTPCookieStorage.h"
#include "platform/PropertyList.h"
#include "platform/TextHolder.h"
#include "platform/UserDefaults.h"
#include "service/ApplicationState.h"
#include "service/ICCookiesHelper.h"
#include "service/ICDataHelper.h"
#include "service/ICSessionHelper.h"
#include "util/AppConfig.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <list>

using platform::HTTPCookieStorage;
using platform::PropertyList;
using platform::UserDefaults;

// A text field as the sign-in screens hand it over.
class FakeTextField : public QObject, public platform::TextHolder
{
    Q_OBJECT
    Q_INTERFACES(platform::TextHolder)
public:
    explicit FakeTextField(const QString &text)
        : m_text(text)
    { }
    QString text() const override { return m_text; }
    void setText(const QString &text) override { m_text = text; }

private:
    QString m_text;
};

namespace {

QString serviceHost()
{
    return QUrl(ApiBaseUrl()).host();
}

QNetworkCookie serviceCookie(const QByteArray &name, const QByteArray &value,
                             const QString &path = QStringLiteral("/"))
{
    QNetworkCookie cookie(name, value);
    cookie.setDomain(serviceHost());
    cookie.setPath(path);
    return cookie;
}

QStringList cookieTexts(const QList<QNetworkCookie> &cookies)
{
    QStringList texts;
    for (const QNetworkCookie &cookie : cookies)
        texts.append(QString::fromUtf8(cookie.toRawForm()));
    texts.sort();
    return texts;
}

void wipeLiveCookies()
{
    HTTPCookieStorage *storage = HTTPCookieStorage::shared();
    for (const QNetworkCookie &cookie : storage->cookies())
        storage->deleteCookie(cookie);
}

QString userFilePath()
{
    return QDir(ICDataHelper::docPath()).filePath("User.plist");
}

} // namespace

class TestSessionHelper : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanupTestCase() { ApplicationState::install(nullptr); }
    void userIsLoginFollowsTheApplicationState();
    void savedUserValuesAreText_data();
    void savedUserValuesAreText();
    void numberAccountIdRestoresAsText();
    void storedUser_data();
    void storedUser();
    void userClearDataRemovesTheFile();
    void stringCheckEmail_data();
    void stringCheckEmail();
    void stringCheckMobile_data();
    void stringCheckMobile();
    void stringCheckMobileIgnoresOtherObjects();
    void isEmptyCookiesAnswersWhetherCookiesAreStored_data();
    void isEmptyCookiesAnswersWhetherCookiesAreStored();
    void setCookiesIgnoresUnusableArchives_data();
    void setCookiesIgnoresUnusableArchives();
    void signInThenRelaunchThenSignOut();
    void cartNumFromCookie_data();
    void cartNumFromCookie();

private:
    // The next launch: live state gone, the stored state read again.
    void relaunch();

    std::list<QTemporaryDir> m_homes;
    PlainApplicationState m_state;
};

void TestSessionHelper::init()
{
    QTemporaryDir &home = m_homes.emplace_back();
    QVERIFY(home.isValid());
    qputenv("TARVEL_HOME", home.path().toUtf8());
    UserDefaults::standard().reload();
    wipeLiveCookies();
    m_state.setUserLogin(std::nullopt);
    ApplicationState::install(&m_state);
}

void TestSessionHelper::relaunch()
{
    m_state.setUserLogin(std::nullopt);
    wipeLiveCookies();
    UserDefaults::standard().reload();
}

void TestSessionHelper::userIsLoginFollowsTheApplicationState()
{
    QVERIFY(!ICSessionHelper::userIsLogin());
    m_state.setUserLogin(Object_User());
    QVERIFY(ICSessionHelper::userIsLogin());
    m_state.setUserLogin(std::nullopt);
    QVERIFY(!ICSessionHelper::userIsLogin());
}

void TestSessionHelper::savedUserValuesAreText_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("stored");

    QTest::newRow("JSON number") << QVariant(12345.0) << "12345";
    QTest::newRow("integer") << QVariant(qlonglong(9007199254740993)) << "9007199254740993";
    QTest::newRow("fraction") << QVariant(58.5) << "58.5";
    QTest::newRow("null") << QVariant::fromValue(nullptr) << "<null>";
    QTest::newRow("text") << QVariant(QStringLiteral("玩家 one")) << QStringLiteral("玩家 one");
    QTest::newRow("empty text") << QVariant(QString("")) << "";
    QTest::newRow("bool") << QVariant(true) << "1";
}

void TestSessionHelper::savedUserValuesAreText()
{
    QFETCH(QVariant, value);
    QFETCH(QString, stored);
    ICSessionHelper::userSaveObjectUser({{"token", "tk"}, {"value", value}});

    const auto file = PropertyList::readArray(userFilePath());
    QVERIFY(file);
    QCOMPARE(file->size(), 1);
    const QVariantMap user = file->first().toMap();
    QCOMPARE(user.keys(), (QStringList{"token", "value"}));
    QCOMPARE(user.value("value").typeId(), QMetaType::QString);
    QCOMPARE(user.value("value").toString(), stored);
}

void TestSessionHelper::numberAccountIdRestoresAsText()
{
    const QVariantMap answer{{"account_id", 1024.0},
                             {"token", "csrf-token"},
                             {"nick_name", QStringLiteral("玩家")},
                             {"avatar", QVariant::fromValue(nullptr)},
                             {"level", 3.0}};
    ICSessionHelper::userSaveObjectUser(answer);
    relaunch();

    QVERIFY(ICSessionHelper::userIsLoginSelf());
    const auto stored = ICSessionHelper::userGetinfo();
    QVERIFY(stored);
    QCOMPARE(stored->value("level"), QVariant("3"));
    const auto user = JSONModel::initWithDictionary<Object_User>(*stored);
    QVERIFY(user);
    QCOMPARE(user->account_id, QStringLiteral("1024"));
    QCOMPARE(user->token, QStringLiteral("csrf-token"));
    QCOMPARE(user->nick_name, QStringLiteral("玩家"));
}

void TestSessionHelper::storedUser_data()
{
    QTest::addColumn<QByteArray>("content"); // null: no file
    QTest::addColumn<bool>("found");

    const auto plist = [](const QVariant &root) { return *PropertyList::toData(root); };
    QTest::newRow("no file") << QByteArray() << false;
    QTest::newRow("empty array") << plist(QVariantList{}) << false;
    QTest::newRow("first element not a dictionary")
            << plist(QVariantList{"x", QVariantMap{{"account_id", "1"}}}) << false;
    QTest::newRow("stored user") << plist(QVariantList{QVariantMap{{"account_id", "1"}}}) << true;
    QTest::newRow("user without account_id still counts as stored")
            << plist(QVariantList{QVariantMap{{"token", "t"}}}) << true;
}

void TestSessionHelper::storedUser()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, found);
    if (!content.isNull()) {
        QFile file(userFilePath());
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    QCOMPARE(ICSessionHelper::userIsLoginSelf(), found);
    QCOMPARE(ICSessionHelper::userGetinfo().has_value(), found);
}

void TestSessionHelper::userClearDataRemovesTheFile()
{
    ICSessionHelper::userClearData(); // nothing stored yet: harmless
    ICSessionHelper::userSaveObjectUser({{"account_id", "1"}});
    QVERIFY(QFile::exists(userFilePath()));
    ICSessionHelper::userClearData();
    QVERIFY(!QFile::exists(userFilePath()));
    QVERIFY(!ICSessionHelper::userIsLoginSelf());
    QVERIFY(QDir(ICDataHelper::docPath()).exists());
}

void TestSessionHelper::stringCheckEmail_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");

    QTest::newRow("plain") << "player@example.com" << true;
    QTest::newRow("dots, plus, percent, dash") << "a.b+c%d-e@mail.qq.com" << true;
    QTest::newRow("upper case") << "PLAYER@EXAMPLE.CN" << true;
    QTest::newRow("four-letter ending") << "a@b.info" << true;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("no @") << "player.example.com" << false;
    QTest::newRow("two @") << "a@b@example.com" << false;
    QTest::newRow("one-letter ending") << "a@b.c" << false;
    QTest::newRow("five-letter ending") << "a@b.abcde" << false;
    QTest::newRow("digit in ending") << "a@b.c0m" << false;
    QTest::newRow("dash in domain") << "a@my-site.com" << false;
    QTest::newRow("leading blank") << " a@b.com" << false;
    QTest::newRow("trailing line end") << "a@b.com\n" << false;
    QTest::newRow("CJK name") << QStringLiteral("玩家@example.com") << false;
}

void TestSessionHelper::stringCheckEmail()
{
    QFETCH(QString, text);
    QFETCH(bool, valid);
    QCOMPARE(ICSessionHelper::stringCheckEmail(text), valid);
}

void TestSessionHelper::stringCheckMobile_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<QString>("textAfter");

    QTest::newRow("leading blank, trailing line end") << " 13800138000\n" << true << "13800138000";
    QTest::newRow("bare 11 digits") << "13800138000" << true << "13800138000";
    QTest::newRow("tabs and CR LF") << "\t13800138000 \r\n" << true << "13800138000";
    QTest::newRow("ideographic space")
            << QStringLiteral("\u300013800138000\u3000") << true << "13800138000";
    QTest::newRow("10 digits") << "1380013800" << false << "1380013800";
    QTest::newRow("12 digits") << "138001380001" << false << "138001380001";
    QTest::newRow("10 digits, trimmed anyway") << " 1380013800 \n" << false << "1380013800";
    QTest::newRow("blank inside") << "138 0013 8000" << false << "138 0013 8000";
    QTest::newRow("letter") << "1380013800a" << false << "1380013800a";
    QTest::newRow("plus sign") << "+8613800138000" << false << "+8613800138000";
    QTest::newRow("full-width digits") << QStringLiteral("１３８００１３８０００") << false
                                       << QStringLiteral("１３８００１３８０００");
    QTest::newRow("empty") << "" << false << "";
}

void TestSessionHelper::stringCheckMobile()
{
    QFETCH(QString, text);
    QFETCH(bool, valid);
    QFETCH(QString, textAfter);
    FakeTextField field(text);
    QCOMPARE(ICSessionHelper::stringCheckMobile(&field), valid);
    QCOMPARE(field.text(), textAfter);
}

void TestSessionHelper::stringCheckMobileIgnoresOtherObjects()
{
    QObject label;
    label.setProperty("text", QStringLiteral(" 13800138000\n"));
    QVERIFY(!ICSessionHelper::stringCheckMobile(&label));
    QCOMPARE(label.property("text").toString(), QStringLiteral(" 13800138000\n"));
    QVERIFY(!ICSessionHelper::stringCheckMobile(nullptr));
}

void TestSessionHelper::isEmptyCookiesAnswersWhetherCookiesAreStored_data()
{
    QTest::addColumn<QVariant>("stored"); // invalid: nothing stored
    QTest::addColumn<bool>("answer");

    QTest::newRow("nothing stored") << QVariant() << false;
    QTest::newRow("an archive") << QVariant(QByteArray("archive")) << true;
    QTest::newRow("empty bytes") << QVariant(QByteArray("")) << true;
}

// The name says the opposite of the answer: true means cookies are stored.
void TestSessionHelper::isEmptyCookiesAnswersWhetherCookiesAreStored()
{
    QFETCH(QVariant, stored);
    QFETCH(bool, answer);
    UserDefaults::standard().setObject(stored, "userCookies");
    QCOMPARE(ICCookiesHelper::isEmptyCookies(), answer);
}

void TestSessionHelper::setCookiesIgnoresUnusableArchives_data()
{
    QTest::addColumn<QVariant>("stored");

    QTest::newRow("nothing stored") << QVariant();
    QTest::newRow("empty bytes") << QVariant(QByteArray(""));
    QTest::newRow("garbage bytes") << QVariant(QByteArray("\x13\x37garbage"));
    QTest::newRow("text instead of bytes") << QVariant(QStringLiteral("_tarvel_session=x"));
}

void TestSessionHelper::setCookiesIgnoresUnusableArchives()
{
    QFETCH(QVariant, stored);
    HTTPCookieStorage::shared()->setCookie(serviceCookie("live", "1"));
    UserDefaults::standard().setObject(stored, "userCookies");
    ICCookiesHelper::setCookies();
    QCOMPARE(cookieTexts(HTTPCookieStorage::shared()->cookies()),
             cookieTexts({serviceCookie("live", "1")}));
}

void TestSessionHelper::signInThenRelaunchThenSignOut()
{
    HTTPCookieStorage *storage = HTTPCookieStorage::shared();
    QNetworkCookie session = serviceCookie("_tarvel_session", "s3ss10n==");
    session.setHttpOnly(true);
    storage->setCookie(session);
    storage->setCookie(serviceCookie("cart_num", "2"));
    QNetworkCookie otherHost("tracker", "1");
    otherHost.setDomain("ads.example");
    otherHost.setPath("/");
    storage->setCookie(otherHost);

    // Sign-in success.
    const QVariantMap answer{{"account_id", 77.0}, {"token", "tk"}};
    ICCookiesHelper::saveCookiesWithUrl(ApiBaseUrl() + "/sign_in.json");
    m_state.setUserLogin(JSONModel::initWithDictionary<Object_User>(answer));
    ICSessionHelper::userSaveObjectUser(answer);
    QVERIFY(ICSessionHelper::userIsLogin());
    QVERIFY(ICCookiesHelper::isEmptyCookies());

    // Next launch: the service's cookies come back, nothing else.
    relaunch();
    QVERIFY(ICSessionHelper::userIsLoginSelf());
    QVERIFY(storage->cookies().isEmpty());
    ICCookiesHelper::setCookies();
    QCOMPARE(cookieTexts(storage->cookies()),
             cookieTexts({session, serviceCookie("cart_num", "2")}));

    // Sign-out.
    storage->setCookie(otherHost);
    m_state.setUserLogin(std::nullopt);
    ICSessionHelper::userClearData();
    ICCookiesHelper::deleteCookies();
    QVERIFY(!ICSessionHelper::userIsLogin());
    QVERIFY(!ICSessionHelper::userIsLoginSelf());
    QVERIFY(!ICCookiesHelper::isEmptyCookies());
    QVERIFY(storage->cookies().isEmpty());

    // The launch after that stays signed out.
    relaunch();
    ICCookiesHelper::setCookies();
    QVERIFY(!ICSessionHelper::userIsLoginSelf());
    QVERIFY(!ICCookiesHelper::isEmptyCookies());
    QVERIFY(storage->cookies().isEmpty());
}

void TestSessionHelper::cartNumFromCookie_data()
{
    QTest::addColumn<QList<QNetworkCookie>>("cookies");
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("found");
    QTest::addColumn<QString>("cartnum");

    QNetworkCookie elsewhere("cart_num", "9");
    elsewhere.setDomain("other.example");
    elsewhere.setPath("/");

    QTest::newRow("cookie present")
            << QList{serviceCookie("cart_num", "3")} << "/cart/add.json" << true << "3";
    QTest::newRow("zero") << QList{serviceCookie("cart_num", "0")} << "/cart/remove.json" << true
                          << "0";
    QTest::newRow("no cookie: unchanged")
            << QList{serviceCookie("_tarvel_session", "x")} << "/cart.json" << false << "5";
    QTest::newRow("other host: unchanged") << QList{elsewhere} << "/cart.json" << false << "5";
    QTest::newRow("other path: unchanged") << QList{serviceCookie("cart_num", "3", "/orders")}
                                           << "/cart/submit.json" << false << "5";
}

void TestSessionHelper::cartNumFromCookie()
{
    QFETCH(QList<QNetworkCookie>, cookies);
    QFETCH(QString, path);
    QFETCH(bool, found);
    QFETCH(QString, cartnum);

    UserDefaults &defaults = UserDefaults::standard();
    defaults.setObject(QStringLiteral("5"), "cartnum");
    for (const QNetworkCookie &cookie : cookies)
        HTTPCookieStorage::shared()->setCookie(cookie);
    QSignalSpy badge(&defaults, &UserDefaults::valueChanged);

    QCOMPARE(ICCookiesHelper::updateCartNumFromCookiesForPath(path), found);
    QCOMPARE(defaults.objectForKey("cartnum"), QVariant(cartnum));
    QCOMPARE(badge.size(), found ? 1 : 0);
    relaunch();
    QCOMPARE(UserDefaults::standard().objectForKey("cartnum"), QVariant(cartnum));
}

TARVEL_TEST_MAIN(TestSessionHelper)
#include "tst_sessionhelper.moc"
