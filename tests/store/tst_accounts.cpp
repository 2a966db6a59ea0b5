#include "InProcessStore.h"
#include "StoreClient.h"
#include "StoreContext.h"
#include "StoreSeed.h"
#include "TestEnvironment.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>

#include <QFile>
#include <QRegularExpression>
#include <QtTest>

using namespace tarvel::test;

// Sign-in, sessions, locking, registration, captchas, SMS codes and recovery.
class TestAccounts : public QObject
{
    Q_OBJECT

private:
    const QString kPhone = QString::fromLatin1(StoreSeed::kDemoPhone);
    const QString kEmail = QString::fromLatin1(StoreSeed::kDemoEmail);
    const QString kPassword = QString::fromLatin1(StoreSeed::kDemoPassword);

    static QByteArray sessionId(const Answer &answer)
    {
        const QByteArray raw = answer.setCookie("_tarvel_session");
        return raw.mid(raw.indexOf('=') + 1, raw.indexOf(';') - raw.indexOf('=') - 1);
    }

    static Answer requestCode(StoreClient &client, const QString &path, const QString &phone)
    {
        const QString captcha = client.captcha();
        return client.post(path, {{QStringLiteral("phone_number"), phone},
                                  {QStringLiteral("captcha"), captcha}});
    }

    static Answer registerPhone(StoreClient &client, const QString &phone, const QString &password)
    {
        const Answer code = requestCode(client, QStringLiteral("/phone_number_tokens.json"), phone);
        if (!code.ok())
            return code;
        return client.post(
                QStringLiteral("/sign_up.json"),
                {{QStringLiteral("account[phone_number]"), phone},
                 {QStringLiteral("account[pending_phone_number_token]"), client.lastCode(phone)},
                 {QStringLiteral("account[captcha]"), client.captcha()},
                 {QStringLiteral("account[password]"), password},
                 {QStringLiteral("account[password_confirmation]"), password}});
    }

    static void failSignIns(StoreClient &client, const QString &login, int times)
    {
        for (int i = 0; i < times; ++i)
            client.signIn(login, QStringLiteral("wrong-password"));
    }

    static Answer followLink(StoreClient &client, const QString &link)
    {
        return client.get(QUrl(link).path() + QStringLiteral("?") + QUrl(link).query());
    }

private slots:
    void signInAnswersTheUserRecord_data()
    {
        QTest::addColumn<QString>("login");
        QTest::newRow("phone") << kPhone;
        QTest::newRow("email") << kEmail;
        QTest::newRow("email in capitals") << kEmail.toUpper();
        QTest::newRow("phone with blanks") << QStringLiteral(" %1 ").arg(kPhone);
    }
    void signInAnswersTheUserRecord()
    {
        QFETCH(QString, login);
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const Answer answer = client.signIn(login, kPassword);
        QVERIFY2(answer.ok(), answer.body);
        const QJsonObject user = answer.object();
        for (const char *key :
             {"account_id", "token", "nick_name", "email", "avatar", "phone_number"})
            QVERIFY2(user.contains(QLatin1String(key)), key);
        QVERIFY(user.value("account_id").toInteger() > 0);
        QVERIFY(user.value("token").toString().size() >= 22);
        QVERIFY(!user.value("nick_name").toString().isEmpty());
        QVERIFY(answer.setCookie("cart_num").startsWith("cart_num="));
    }

    void sessionCookieIsHttpOnlyStrictAndRenewedAtSignIn()
    {
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const Answer picture = client.get(QStringLiteral("/captcha"));
        const QByteArray anonymous = sessionId(picture);
        QVERIFY(!anonymous.isEmpty());

        const Answer signIn = client.signIn(kPhone, kPassword);
        const QByteArray raw = signIn.setCookie("_tarvel_session");
        QVERIFY(raw.contains("HttpOnly"));
        QVERIFY(raw.contains("SameSite=Strict"));
        QVERIFY(raw.contains("path=/"));
        const QByteArray signedIn = sessionId(signIn);
        QVERIFY(signedIn != anonymous);
        QVERIFY(QByteArray::fromBase64(signedIn, QByteArray::Base64UrlEncoding).size() >= 16);

        // the session of before the sign-in is gone, the new one works
        StoreClient stale(store.baseUrl());
        stale.cookies().setCookiesFromUrl({QNetworkCookie("_tarvel_session", anonymous)},
                                          QUrl(store.baseUrl()));
        QCOMPARE(stale.get(QStringLiteral("/cart.json")).status, 401);
        QVERIFY(client.get(QStringLiteral("/cart.json")).ok());
        // a second sign-in renews the id again
        QVERIFY(sessionId(client.signIn(kPhone, kPassword)) != signedIn);
    }

    void signInRefusals_data()
    {
        QTest::addColumn<QString>("login");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("message");
        QTest::newRow("wrong password") << kPhone << "nope-nope"
                                        << "error"
                                        << "账号或密码错误";
        QTest::newRow("unknown account") << "13000000000" << kPassword << "error"
                                         << "账号或密码错误";
        QTest::newRow("empty login") << "" << kPassword << "fail"
                                     << "请输入账号";
        QTest::newRow("empty password") << kPhone << ""
                                        << "fail"
                                        << "请输入密码";
        QTest::newRow("sql in login") << "' OR '1'='1' --"
                                      << "x"
                                      << "error"
                                      << "账号或密码错误";
        QTest::newRow("sql in password") << kPhone << "' OR '1'='1"
                                         << "error"
                                         << "账号或密码错误";
    }
    void signInRefusals()
    {
        QFETCH(QString, login);
        QFETCH(QString, password);
        QFETCH(QString, status);
        QFETCH(QString, message);
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const Answer answer = client.signIn(login, password);
        QCOMPARE(answer.envelopeStatus(), status);
        QCOMPARE(answer.message(), message);
        QVERIFY(answer.setCookie("_tarvel_session").isEmpty());
    }

    void fiveFailuresLockAndSmsUnlocks()
    {
        InProcessStore store;
        StoreClient client(store.baseUrl());
        failSignIns(client, kPhone, 3);
        Answer answer = client.signIn(kPhone, QStringLiteral("wrong"));
        QVERIFY(answer.message().startsWith(QStringLiteral("账号或密码错误")));
        QVERIFY(!answer.json.contains("code"));
        answer = client.signIn(kPhone, QStringLiteral("wrong"));
        QCOMPARE(answer.message(), QStringLiteral("authentication.failure.locked"));
        QCOMPARE(answer.json.value("code").toInt(), 601);
        answer = client.signIn(kPhone,
                               kPassword); // the right password does not open a locked account
        QCOMPARE(answer.json.value("code").toInt(), 601);

        QVERIFY(requestCode(client, QStringLiteral("/unlock/token.json"), kPhone).ok());
        const QString code = client.lastCode(kPhone);
        QVERIFY(QRegularExpression(QStringLiteral("^\\d{6}$")).match(code).hasMatch());
        answer = client.post(QStringLiteral("/unlock.json"),
                             {{QStringLiteral("account[phone_number]"), kPhone},
                              {QStringLiteral("account[captcha]"), QString()},
                              {QStringLiteral("account[pending_phone_number_token]"), code}});
        QVERIFY2(answer.ok(), answer.body);
        QVERIFY(client.signIn(kPhone, kPassword).ok());
        // failures start counting from zero again
        failSignIns(client, kPhone, 4);
        QVERIFY(client.signIn(kPhone, kPassword).ok());
    }

    void mailUnlocksAndLinksWorkOnce()
    {
        InProcessStore store;
        StoreClient client(store.baseUrl());
        failSignIns(client, kEmail, 5);
        QCOMPARE(client.signIn(kEmail, kPassword).json.value("code").toInt(), 601);
        const Answer sent = client.post(QStringLiteral("/unlock.json"),
                                        {{QStringLiteral("account[email]"), kEmail},
                                         {QStringLiteral("account[captcha]"), client.captcha()}});
        QVERIFY2(sent.ok(), sent.body);
        const QString link = client.lastMessage(kEmail).value("link").toString();
        QVERIFY(link.startsWith(store.baseUrl() + QStringLiteral("/account/unlock?token=")));
        const Answer page = followLink(client, link);
        QCOMPARE(page.status, 200);
        QVERIFY(page.contentType.startsWith("text/html"));
        QVERIFY(client.signIn(kEmail, kPassword).ok());
        QCOMPARE(followLink(client, link).status, 410);
    }

    void emailAccountsNeedActivation()
    {
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const QString email = QStringLiteral("new.player@example.com");
        const Answer answer
                = client.post(QStringLiteral("/sign_up.json"),
                              {{QStringLiteral("account[email]"), email},
                               {QStringLiteral("account[captcha]"), client.captcha()},
                               {QStringLiteral("account[password]"), QStringLiteral("longenough1")},
                               {QStringLiteral("account[password_confirmation]"),
                                QStringLiteral("longenough1")}});
        QVERIFY2(answer.ok(), answer.body);
        QCOMPARE(client.signIn(email, QStringLiteral("longenough1")).message(),
                 QStringLiteral("authentication.failure.unconfirmed"));
        QCOMPARE(client.signIn(email, QStringLiteral("wrong-one")).message(),
                 QStringLiteral("账号或密码错误"));
        const QString link = client.lastMessage(email).value("link").toString();
        QVERIFY(link.contains(QStringLiteral("/account/activate?token=")));
        QCOMPARE(followLink(client, link).status, 200);
        QVERIFY(client.signIn(email, QStringLiteral("longenough1")).ok());
    }

    void passwordsAreStoredAsArgon2idOnly()
    {
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const QString password = QStringLiteral("Plain-Text-Canary-42");
        QVERIFY(registerPhone(client, QStringLiteral("13711112222"), password).ok());
        {
            SQLite::Database db(store.databasePath().toStdString(), SQLite::OPEN_READONLY);
            SQLite::Statement hashes(db, "SELECT password_hash FROM accounts");
            int count = 0;
            while (hashes.executeStep()) {
                ++count;
                QVERIFY(QString::fromStdString(hashes.getColumn(0).getString())
                                .startsWith(QLatin1String("$argon2id$")));
            }
            QCOMPARE(count, 3);
        }
        for (const QString &file :
             {store.databasePath(), store.databasePath() + QStringLiteral("-wal")}) {
            QFile data(file);
            if (!data.open(QIODevice::ReadOnly))
                continue;
            const QByteArray bytes = data.readAll();
            QVERIFY(!bytes.contains(password.toUtf8()));
            QVERIFY(!bytes.contains(kPassword.toUtf8()));
        }
    }

    void registrationByPhone()
    {
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const Answer answer
                = registerPhone(client, QStringLiteral("13922223333"), QStringLiteral("password8"));
        QVERIFY2(answer.ok(), answer.body);
        const Answer user
                = client.signIn(QStringLiteral("13922223333"), QStringLiteral("password8"));
        QVERIFY(user.ok());
        QCOMPARE(user.object().value("phone_number").toString(), QStringLiteral("13922223333"));
        // the number is taken now, for another registration and for its code
        StoreClient other(store.baseUrl());
        const Answer again = requestCode(other, QStringLiteral("/phone_number_tokens.json"),
                                         QStringLiteral("13922223333"));
        QCOMPARE(again.envelopeStatus(), QStringLiteral("fail"));
        QCOMPARE(again.failMessage("phone_number"),
                 QStringLiteral("该号码已注册，请直接登录或更换手机号"));
    }

    void registrationRefusals_data()
    {
        QTest::addColumn<QString>("loginField");
        QTest::addColumn<QString>("login");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("confirmation");
        QTest::addColumn<bool>("rightCaptcha");
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("text");
        const QString phone = QStringLiteral("account[phone_number]");
        const QString email = QStringLiteral("account[email]");
        QTest::newRow("bad phone") << phone << "2391234567"
                                   << "password8"
                                   << "password8" << true << "phone_number"
                                   << "请输入正确的手机号";
        QTest::newRow("bad email") << email << "no-at-sign"
                                   << "password8"
                                   << "password8" << true << "email"
                                   << "请输入正确的邮箱";
        QTest::newRow("short password") << email << "a@b.cn"
                                        << "seven77"
                                        << "seven77" << true << "password"
                                        << "请输入至少8位的密码";
        QTest::newRow("confirmation differs") << email << "a@b.cn"
                                              << "password8"
                                              << "password9" << true << "password_confirmation"
                                              << "两次输入不一致，请重新输入确认密码";
        QTest::newRow("wrong captcha") << email << "a@b.cn"
                                       << "password8"
                                       << "password8" << false << "captcha"
                                       << "请重新输入正确的图片验证码";
        QTest::newRow("email taken") << email << StoreSeed::kDemoEmail << "password8"
                                     << "password8" << true << "email"
                                     << "该邮箱已注册，请直接登录或更换邮箱";
        QTest::newRow("phone without code") << phone << "13500000001"
                                            << "password8"
                                            << "password8" << true << "pending_phone_number_token"
                                            << "请输入短信验证码";
    }
    void registrationRefusals()
    {
        QFETCH(QString, loginField);
        QFETCH(QString, login);
        QFETCH(QString, password);
        QFETCH(QString, confirmation);
        QFETCH(bool, rightCaptcha);
        QFETCH(QString, field);
        QFETCH(QString, text);
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const QString captcha = client.captcha();
        const Answer answer
                = client.post(QStringLiteral("/sign_up.json"),
                              {{loginField, login},
                               {QStringLiteral("account[captcha]"),
                                rightCaptcha ? captcha : QStringLiteral("XXXX")},
                               {QStringLiteral("account[password]"), password},
                               {QStringLiteral("account[password_confirmation]"), confirmation}});
        QCOMPARE(answer.envelopeStatus(), QStringLiteral("fail"));
        QCOMPARE(answer.status, 422);
        QCOMPARE(answer.failMessage(field), text);
        SQLite::Database db(store.databasePath().toStdString(), SQLite::OPEN_READONLY);
        SQLite::Statement count(db, "SELECT COUNT(*) FROM accounts");
        count.executeStep();
        QCOMPARE(count.getColumn(0).getInt(), 2); // nothing was created
    }

    void captchaIsCaseInsensitiveAndDiscardedAfterFiveWrongAnswers()
    {
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const Form form{{QStringLiteral("phone_number"), QStringLiteral("13600000001")}};
        const QString captcha = client.captcha();
        QCOMPARE(captcha.size(), 4);
        QVERIFY(client.post(QStringLiteral("/phone_number_tokens.json"),
                            form + Form{{QStringLiteral("captcha"), captcha.toLower()}})
                        .ok());

        const QString next = client.captcha();
        for (int i = 0; i < 5; ++i) {
            const Answer wrong = client.post(
                    QStringLiteral("/phone_number_tokens.json"),
                    Form{{QStringLiteral("phone_number"), QStringLiteral("13600000002")},
                         {QStringLiteral("captcha"), QStringLiteral("0000")}});
            QCOMPARE(wrong.failMessage("captcha"), QStringLiteral("请重新输入正确的图片验证码"));
        }
        const Answer late
                = client.post(QStringLiteral("/phone_number_tokens.json"),
                              Form{{QStringLiteral("phone_number"), QStringLiteral("13600000002")},
                                   {QStringLiteral("captcha"), next}});
        QCOMPARE(late.envelopeStatus(), QStringLiteral("fail"));
        QCOMPARE(client.get(QStringLiteral("/sandbox/captcha.json")).status, 404);
    }

    void smsCodesAreRateLimitedAndReplaced()
    {
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const QString phone = QStringLiteral("13600000003");
        QVERIFY(requestCode(client, QStringLiteral("/phone_number_tokens.json"), phone).ok());
        const QString first = client.lastCode(phone);
        const Answer tooSoon
                = requestCode(client, QStringLiteral("/phone_number_tokens.json"), phone);
        QCOMPARE(tooSoon.status, 429);
        QVERIFY(tooSoon.message().contains(QStringLiteral("秒后再试")));
        store.advanceClock(61);
        QVERIFY(requestCode(client, QStringLiteral("/phone_number_tokens.json"), phone).ok());
        const QString second = client.lastCode(phone);
        const Form account{
                {QStringLiteral("account[phone_number]"), phone},
                {QStringLiteral("account[captcha]"), client.captcha()},
                {QStringLiteral("account[password]"), QStringLiteral("password8")},
                {QStringLiteral("account[password_confirmation]"), QStringLiteral("password8")}};
        if (first != second) { // six random digits may repeat
            const Answer old = client.post(
                    QStringLiteral("/sign_up.json"),
                    account + Form{{QStringLiteral("account[pending_phone_number_token]"), first}});
            QCOMPARE(old.failMessage("pending_phone_number_token"),
                     QStringLiteral("无效或已过期，请重新获取短信验证码"));
        }
        QVERIFY(client.post(QStringLiteral("/sign_up.json"),
                            account
                                    + Form{{QStringLiteral("account[pending_phone_number_token]"),
                                            second}})
                        .ok());
    }

    void smsCodeRules_data()
    {
        QTest::addColumn<QString>("rule");
        QTest::newRow("expires after ten minutes") << "expired";
        QTest::newRow("still valid before") << "fresh";
        QTest::newRow("single use") << "reused";
        QTest::newRow("five tries") << "tries";
    }
    void smsCodeRules()
    {
        QFETCH(QString, rule);
        InProcessStore store;
        StoreClient client(store.baseUrl());
        QVERIFY(requestCode(client, QStringLiteral("/password/token.json"), kPhone).ok());
        const QString code = client.lastCode(kPhone);
        auto reset = [&](const QString &sent, const QString &password) {
            return client.post(QStringLiteral("/password.json"),
                               {{QStringLiteral("account[phone_number]"), kPhone},
                                {QStringLiteral("account[captcha]"), QString()},
                                {QStringLiteral("account[pending_phone_number_token]"), sent},
                                {QStringLiteral("account[password]"), password},
                                {QStringLiteral("account[password_confirmation]"), password}});
        };
        const QString wrong = code == QLatin1String("000000") ? QStringLiteral("111111")
                                                              : QStringLiteral("000000");
        if (rule == QLatin1String("expired")) {
            store.advanceClock(601);
            QCOMPARE(reset(code, QStringLiteral("newpassword1")).envelopeStatus(),
                     QStringLiteral("fail"));
            QVERIFY(client.signIn(kPhone, kPassword).ok());
        } else if (rule == QLatin1String("fresh")) {
            store.advanceClock(590);
            QVERIFY(reset(code, QStringLiteral("newpassword1")).ok());
            QVERIFY(client.signIn(kPhone, QStringLiteral("newpassword1")).ok());
            QVERIFY(!client.signIn(kPhone, kPassword).ok());
        } else if (rule == QLatin1String("reused")) {
            QVERIFY(reset(code, QStringLiteral("newpassword1")).ok());
            QCOMPARE(reset(code, QStringLiteral("newpassword2")).envelopeStatus(),
                     QStringLiteral("fail"));
            QVERIFY(client.signIn(kPhone, QStringLiteral("newpassword1")).ok());
        } else {
            for (int i = 0; i < 5; ++i)
                QCOMPARE(reset(wrong, QStringLiteral("newpassword1")).envelopeStatus(),
                         QStringLiteral("fail"));
            QCOMPARE(reset(code, QStringLiteral("newpassword1")).envelopeStatus(),
                     QStringLiteral("fail"));
            QVERIFY(client.signIn(kPhone, kPassword).ok());
        }
    }

    void recoveryRefusesUnknownNumbers()
    {
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const Answer answer = requestCode(client, QStringLiteral("/password/token.json"),
                                          QStringLiteral("13000000009"));
        QCOMPARE(answer.failMessage("phone_number"),
                 QStringLiteral("该号码尚未注册，请检查手机号"));
        QVERIFY(client.lastMessage(QStringLiteral("13000000009")).isEmpty());
    }

    void passwordRecoveryByMail()
    {
        InProcessStore store;
        StoreClient client(store.baseUrl());
        const Answer sent = client.post(QStringLiteral("/password.json"),
                                        {{QStringLiteral("account[email]"), kEmail},
                                         {QStringLiteral("account[captcha]"), client.captcha()}});
        QVERIFY2(sent.ok(), sent.body);
        const QString link = client.lastMessage(kEmail).value("link").toString();
        const QString token = QUrlQuery(QUrl(link)).queryItemValue(QStringLiteral("token"));
        QCOMPARE(followLink(client, link).status, 200);
        const Answer mismatch
                = client.post(QStringLiteral("/account/password/edit"),
                              {{QStringLiteral("token"), token},
                               {QStringLiteral("password"), QStringLiteral("fromthemail1")},
                               {QStringLiteral("password_confirmation"), QStringLiteral("other")}});
        QCOMPARE(mismatch.status, 422);
        const Answer done = client.post(
                QStringLiteral("/account/password/edit"),
                {{QStringLiteral("token"), token},
                 {QStringLiteral("password"), QStringLiteral("fromthemail1")},
                 {QStringLiteral("password_confirmation"), QStringLiteral("fromthemail1")}});
        QCOMPARE(done.status, 200);
        QVERIFY(client.signIn(kEmail, QStringLiteral("fromthemail1")).ok());
        QVERIFY(!client.signIn(kEmail, kPassword).ok());
    }
};

TARVEL_TEST_MAIN(TestAccounts)
#include "tst_accounts.moc"
