#include "TestEnvironment.h"

#include "platform/CookieArchive.h"
#include "platform/HTTPCookieStorage.h"

#include <QDataStream>
#include <QDateTime>
#include <QIODevice>
#include <QNetworkAccessManager>
#include <QPointer>
#include <QTest>

using platform::CookieArchive;
using platform::HTTPCookieStorage;

namespace {

QNetworkCookie makeCookie(const QByteArray &name, const QByteArray &value,
                          const QString &domain = QStringLiteral("127.0.0.1"),
                          const QString &path = QStringLiteral("/"))
{
    QNetworkCookie cookie(name, value);
    cookie.setDomain(domain);
    cookie.setPath(path);
    return cookie;
}

QByteArray archiveOf(const QList<QByteArray> &rawForms, quint32 magic = CookieArchive::magic,
                     quint16 version = CookieArchive::version)
{
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_6_4);
    stream << magic << version << quint32(rawForms.size());
    for (const QByteArray &raw : rawForms)
        stream << raw;
    return data;
}

QStringList namesOf(const QList<QNetworkCookie> &cookies)
{
    QStringList names;
    for (const QNetworkCookie &cookie : cookies)
        names.append(QString::fromUtf8(cookie.name() + '=' + cookie.value()));
    return names;
}

} // namespace

class TestCookieStorage : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void archiveRoundTripsEveryAttribute_data();
    void archiveRoundTripsEveryAttribute();
    void archiveKeepsOrderAndLeavesOutUnrepresentable();
    void unarchiveRejectsBrokenArchives_data();
    void unarchiveRejectsBrokenArchives();
    void unarchiveRejectsEveryTruncation();
    void setCookieReplacesSameIdentity_data();
    void setCookieReplacesSameIdentity();
    void attachedManagersNeverOwnTheStore();
};

void TestCookieStorage::init()
{
    HTTPCookieStorage *storage = HTTPCookieStorage::shared();
    for (const QNetworkCookie &cookie : storage->cookies())
        storage->deleteCookie(cookie);
}

void TestCookieStorage::archiveRoundTripsEveryAttribute_data()
{
    QTest::addColumn<QNetworkCookie>("cookie");

    QTest::newRow("session cookie") << makeCookie("_tarvel_session", "abc123");
    QNetworkCookie expiring = makeCookie("cart_num", "3");
    expiring.setExpirationDate(QDateTime(QDate(2031, 2, 3), QTime(4, 5, 6), Qt::UTC));
    QTest::newRow("expiry") << expiring;
    QNetworkCookie secure = makeCookie("s", "1");
    secure.setSecure(true);
    QTest::newRow("Secure") << secure;
    QNetworkCookie httpOnly = makeCookie("h", "1");
    httpOnly.setHttpOnly(true);
    QTest::newRow("HttpOnly") << httpOnly;
    for (auto policy : {QNetworkCookie::SameSite::Strict, QNetworkCookie::SameSite::Lax,
                        QNetworkCookie::SameSite::None}) {
        QNetworkCookie sameSite = makeCookie("ss", "1");
        sameSite.setSameSitePolicy(policy);
        sameSite.setSecure(policy == QNetworkCookie::SameSite::None);
        QTest::addRow("SameSite %d", int(policy)) << sameSite;
    }
    QTest::newRow("domain with leading dot") << makeCookie("d", "1", ".tarvel.test");
    QTest::newRow("host-only domain") << makeCookie("d", "1", "store.tarvel.test");
    QTest::newRow("deep path") << makeCookie("p", "1", "127.0.0.1", "/cart/items");
    QTest::newRow("base64 value with =") << makeCookie("v", "QmFzZTY0LS0=--a1b2==");
    QTest::newRow("value with blanks and commas") << makeCookie("v", "a b,c");
    QNetworkCookie everything = makeCookie("all", "x%3Dy", ".tarvel.test", "/orders");
    everything.setExpirationDate(QDateTime(QDate(2040, 12, 31), QTime(23, 59, 59), Qt::UTC));
    everything.setSecure(true);
    everything.setHttpOnly(true);
    everything.setSameSitePolicy(QNetworkCookie::SameSite::Lax);
    QTest::newRow("every attribute at once") << everything;
}

void TestCookieStorage::archiveRoundTripsEveryAttribute()
{
    QFETCH(QNetworkCookie, cookie);
    const QList<QNetworkCookie> back = CookieArchive::unarchive(CookieArchive::archive({cookie}));
    QCOMPARE(back.size(), 1);
    const QNetworkCookie &restored = back.first();
    QCOMPARE(restored.name(), cookie.name());
    QCOMPARE(restored.value(), cookie.value());
    QCOMPARE(restored.domain(), cookie.domain());
    QCOMPARE(restored.path(), cookie.path());
    QCOMPARE(restored.isSessionCookie(), cookie.isSessionCookie());
    QCOMPARE(restored.expirationDate(), cookie.expirationDate());
    QCOMPARE(restored.isSecure(), cookie.isSecure());
    QCOMPARE(restored.isHttpOnly(), cookie.isHttpOnly());
    QCOMPARE(restored.sameSitePolicy(), cookie.sameSitePolicy());
}

void TestCookieStorage::archiveKeepsOrderAndLeavesOutUnrepresentable()
{
    const QList<QNetworkCookie> cookies{makeCookie("b", "1"),
                                        makeCookie("bad", "a;b"),
                                        makeCookie("a", "2"),
                                        makeCookie("", "nameless"),
                                        makeCookie("b", "3", "127.0.0.1", "/cart"),
                                        makeCookie("nl", "x\ny=z")};
    QCOMPARE(namesOf(CookieArchive::unarchive(CookieArchive::archive(cookies))),
             (QStringList{"b=1", "a=2", "b=3"}));
    QVERIFY(CookieArchive::unarchive(CookieArchive::archive({})).isEmpty());
}

void TestCookieStorage::unarchiveRejectsBrokenArchives_data()
{
    QTest::addColumn<QByteArray>("data");

    const QByteArray good = makeCookie("a", "1").toRawForm();
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("random bytes") << QByteArray("\x13\x37\xca\xfe\x00\x01garbage", 13);
    QTest::newRow("text") << QByteArray("_tarvel_session=abc; path=/");
    QTest::newRow("magic only") << archiveOf({}).left(4);
    QTest::newRow("foreign magic") << archiveOf({good}, 0x62706c69);
    QTest::newRow("future version") << archiveOf({good}, CookieArchive::magic, 2);
    QTest::newRow("trailing bytes") << archiveOf({good}) + QByteArray("\0", 1);
    QTest::newRow("more entries announced than held")
            << archiveOf({good}).replace(6, 4, QByteArray("\0\0\0\2", 4));
    QTest::newRow("huge count") << archiveOf({good}).replace(6, 4, QByteArray("\xff\xff\xff\xff"));
    QTest::newRow("entry that is no cookie") << archiveOf({good, QByteArray("; ; ;")});
    QTest::newRow("entry holding two cookies") << archiveOf({"a=1\nb=2"});
}

// A broken archive gives nothing at all, never the cookies read before the damage.
void TestCookieStorage::unarchiveRejectsBrokenArchives()
{
    QFETCH(QByteArray, data);
    QVERIFY(CookieArchive::unarchive(data).isEmpty());
}

void TestCookieStorage::unarchiveRejectsEveryTruncation()
{
    const QByteArray data = CookieArchive::archive(
            {makeCookie("_tarvel_session", "abc"), makeCookie("cart_num", "2")});
    QCOMPARE(CookieArchive::unarchive(data).size(), 2);
    for (qsizetype length = 0; length < data.size(); ++length)
        QVERIFY2(CookieArchive::unarchive(data.left(length)).isEmpty(),
                 qPrintable(QString::number(length)));
}

void TestCookieStorage::setCookieReplacesSameIdentity_data()
{
    QTest::addColumn<QNetworkCookie>("second");
    QTest::addColumn<QStringList>("stored");

    QTest::newRow("same name, domain, path")
            << makeCookie("cart_num", "5") << QStringList{"cart_num=5"};
    QTest::newRow("other path") << makeCookie("cart_num", "5", "127.0.0.1", "/cart")
                                << QStringList{"cart_num=1", "cart_num=5"};
    QTest::newRow("other domain") << makeCookie("cart_num", "5", "other.test")
                                  << QStringList{"cart_num=1", "cart_num=5"};
    QNetworkCookie expired = makeCookie("cart_num", "5");
    expired.setExpirationDate(QDateTime::currentDateTimeUtc().addDays(-1));
    QTest::newRow("expired one removes it") << expired << QStringList{};
}

void TestCookieStorage::setCookieReplacesSameIdentity()
{
    QFETCH(QNetworkCookie, second);
    QFETCH(QStringList, stored);
    HTTPCookieStorage *storage = HTTPCookieStorage::shared();
    storage->setCookie(makeCookie("cart_num", "1"));
    storage->setCookie(second);
    QCOMPARE(namesOf(storage->cookies()), stored);
}

void TestCookieStorage::attachedManagersNeverOwnTheStore()
{
    QPointer<HTTPCookieStorage> storage = HTTPCookieStorage::shared();
    storage->setCookie(makeCookie("_tarvel_session", "kept"));
    auto *first = new QNetworkAccessManager;
    auto *second = new QNetworkAccessManager;
    HTTPCookieStorage::attachTo(first);
    HTTPCookieStorage::attachTo(second);
    QCOMPARE(first->cookieJar(), storage.data());
    QCOMPARE(second->cookieJar(), storage.data());
    QCOMPARE(storage->parent(), nullptr);

    delete first;
    delete second;
    QVERIFY(!storage.isNull());
    QCOMPARE(namesOf(HTTPCookieStorage::shared()->cookies()), QStringList{"_tarvel_session=kept"});
}

TARVEL_TEST_MAIN(TestCookieStorage)
#include "tst_cookiestorage.moc"
