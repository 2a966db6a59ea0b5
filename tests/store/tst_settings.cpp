#include "InProcessStore.h"
#include "StoreClient.h"
#include "StoreSeed.h"
#include "TestEnvironment.h"

#include <QBuffer>
#include <QImage>
#include <QtTest>

using namespace tarvel::test;

// The signed-in user's settings and the avatar upload through the object-storage sandbox.
class TestSettings : public QObject
{
    Q_OBJECT

private:
    const QString kPhone = QString::fromLatin1(StoreSeed::kDemoPhone);
    const QString kEmail = QString::fromLatin1(StoreSeed::kDemoEmail);
    const QString kPassword = QString::fromLatin1(StoreSeed::kDemoPassword);
    std::unique_ptr<InProcessStore> m_store;
    std::unique_ptr<StoreClient> m_client; // the phone demo account

    static QByteArray picture(const char *format, int side = 320)
    {
        QImage image(side, side, QImage::Format_RGB32);
        image.fill(QColor(30, 120, 200));
        QByteArray bytes;
        QBuffer buffer(&bytes);
        buffer.open(QIODevice::WriteOnly);
        image.save(&buffer, format, 100);
        return bytes;
    }

    QJsonObject credential()
    {
        return m_client->get(QStringLiteral("/setting/info.json"))
                .object()
                .value("qiniu_params")
                .toObject();
    }

    static Form uploadFields(const QJsonObject &credential)
    {
        Form fields;
        for (const char *key :
             {"token", "x:account_id", "x:timestamp", "x:tarvel_token", "x:bucket_name"})
            fields.append({QLatin1String(key), credential.value(QLatin1String(key)).toString()});
        return fields;
    }

    Answer changeInfo(const QString &nickName, const QString &gender, const QString &avatar)
    {
        return m_client->put(QStringLiteral("/setting/info.json"),
                             m_client->withToken({{QStringLiteral("account[nick_name]"), nickName},
                                                  {QStringLiteral("account[gender]"), gender},
                                                  {QStringLiteral("account[avatar]"), avatar}}));
    }

    QString requestCode(const QString &phone)
    {
        const Answer sent
                = m_client->post(QStringLiteral("/phone_number_tokens.json"),
                                 m_client->withToken({{QStringLiteral("phone_number"), phone},
                                                      {QStringLiteral("captcha"), QString()}}));
        return sent.ok() ? m_client->lastCode(phone) : QString();
    }

    Form phoneForm(const QString &phone, const QString &code, const QString &password)
    {
        return m_client->withToken({{QStringLiteral("account[phone_number]"), phone},
                                    {QStringLiteral("account[pending_phone_number_token]"), code},
                                    {QStringLiteral("account[current_password]"), password}});
    }

private slots:
    void init()
    {
        m_store = std::make_unique<InProcessStore>();
        m_client = std::make_unique<StoreClient>(m_store->baseUrl());
        QVERIFY(m_client->signIn(kPhone, kPassword).ok());
    }
    void cleanup()
    {
        m_client.reset();
        m_store.reset();
    }

    void infoCarriesTheProfileAndAFreshCredential()
    {
        const Answer answer = m_client->get(QStringLiteral("/setting/info.json"));
        QVERIFY(answer.ok());
        const QJsonObject info = answer.object();
        QCOMPARE(info.value("nick_name").toString(), QStringLiteral("演示玩家"));
        QCOMPARE(info.value("gender").toInt(), 0);
        QVERIFY(info.value("avatar").toString().startsWith(
                QLatin1Char('/'))); // a path of the store
        QCOMPARE(m_client->get(info.value("avatar").toString()).status, 200);
        const QJsonObject first = info.value("qiniu_params").toObject();
        for (const char *key :
             {"token", "x:account_id", "x:timestamp", "x:tarvel_token", "x:bucket_name"})
            QVERIFY2(!first.value(QLatin1String(key)).toString().isEmpty(), key);
        QCOMPARE(first.value("x:tarvel_token").toString(), m_client->token());
        QVERIFY(credential().value("token") != first.value("token"));
        StoreClient stranger(m_store->baseUrl());
        QCOMPARE(stranger.get(QStringLiteral("/setting/info.json")).status, 401);
    }

    void uploadStoresThePictureOnce_data()
    {
        QTest::addColumn<QByteArray>("format");
        QTest::newRow("jpeg") << QByteArray("JPG");
        QTest::newRow("png") << QByteArray("PNG");
    }
    void uploadStoresThePictureOnce()
    {
        QFETCH(QByteArray, format);
        const Form fields = uploadFields(credential());
        const QByteArray file = picture(format.constData());
        const Answer answer
                = m_client->upload(QStringLiteral("/sandbox/qiniu/upload"), fields, file);
        QCOMPARE(answer.status, 200);
        const QString address = answer.json.value("dest_url").toString();
        QVERIFY2(address.startsWith(m_store->baseUrl() + QStringLiteral("/uploads/")), answer.body);
        QVERIFY(!answer.json.contains("status")); // the storage service has no envelope
        const Answer stored = m_client->get(QUrl(address).path());
        QCOMPARE(stored.body, file);
        QCOMPARE(QImage::fromData(m_client->get(QUrl(address).path()
                                                + QStringLiteral("?imageView2/2/w/100/q/85"))
                                          .body)
                         .width(),
                 100);

        const Answer again
                = m_client->upload(QStringLiteral("/sandbox/qiniu/upload"), fields, file);
        QCOMPARE(again.status, 401);
        QVERIFY(!again.json.value("error").toString().isEmpty());

        const Answer saved = changeInfo(QStringLiteral("新昵称"), QStringLiteral("1"), address);
        QVERIFY2(saved.ok(), saved.body);
        QCOMPARE(saved.object().value("avatar").toString(), address);
        QCOMPARE(m_client->signIn(kPhone, kPassword).object().value("avatar").toString(), address);
    }

    void uploadRefusals_data()
    {
        QTest::addColumn<QString>("tamper");
        QTest::addColumn<int>("status");
        QTest::newRow("wrong token") << "token" << 401;
        QTest::newRow("other account") << "x:account_id" << 401;
        QTest::newRow("other timestamp") << "x:timestamp" << 401;
        QTest::newRow("other tarvel token") << "x:tarvel_token" << 401;
        QTest::newRow("other bucket") << "x:bucket_name" << 401;
        QTest::newRow("not a picture") << "file-text" << 415;
        QTest::newRow("gif") << "file-gif" << 415;
        QTest::newRow("over five megabytes") << "file-big" << 413;
        QTest::newRow("expired") << "clock" << 401;
    }
    void uploadRefusals()
    {
        QFETCH(QString, tamper);
        QFETCH(int, status);
        Form fields = uploadFields(credential());
        QByteArray file = picture("JPG");
        for (auto &[name, value] : fields) {
            if (name == tamper)
                value += QStringLiteral("1");
        }
        if (tamper == QLatin1String("file-text"))
            file = "just some text";
        else if (tamper == QLatin1String("file-gif"))
            file = QByteArray("GIF89a") + QByteArray(100, '\0');
        else if (tamper == QLatin1String("file-big"))
            file = picture("JPG") + QByteArray(5 * 1024 * 1024, '\0');
        else if (tamper == QLatin1String("clock"))
            m_store->advanceClock(3601);
        const Answer answer
                = m_client->upload(QStringLiteral("/sandbox/qiniu/upload"), fields, file);
        QCOMPARE(answer.status, status);
        QVERIFY(!answer.json.value("error").toString().isEmpty());
        QVERIFY(!answer.json.contains("dest_url"));
        if (tamper.startsWith(
                    QLatin1String("file"))) // a refused file does not use the credential up
            QCOMPARE(m_client->upload(QStringLiteral("/sandbox/qiniu/upload"), fields,
                                      picture("JPG"))
                             .status,
                     200);
    }

    void profileChanges_data()
    {
        QTest::addColumn<QString>("nickName");
        QTest::addColumn<QString>("gender");
        QTest::addColumn<QString>("avatar");
        QTest::addColumn<QString>("failedField");
        QTest::newRow("all fine") << "小明"
                                  << "1"
                                  << "/pictures/avatars/default.png"
                                  << "";
        QTest::newRow("quotes kept as text") << "Bob'); DROP--"
                                             << "2"
                                             << ""
                                             << "";
        QTest::newRow("empty name") << "  "
                                    << "0"
                                    << ""
                                    << "nick_name";
        QTest::newRow("long name") << QString(21, QChar(u'长')) << "0"
                                   << ""
                                   << "nick_name";
        QTest::newRow("bad gender") << "小明"
                                    << "3"
                                    << ""
                                    << "gender";
        QTest::newRow("script avatar") << "小明"
                                       << "0"
                                       << "javascript:alert(1)"
                                       << "avatar";
        QTest::newRow("another site's picture") << "小明"
                                                << "0"
                                                << "https://cdn.example.com/a.jpg"
                                                << "avatar";
        QTest::newRow("scheme-relative address") << "小明"
                                                 << "0"
                                                 << "//evil.example/x.png"
                                                 << "avatar";
        QTest::newRow("path out of the store") << "小明"
                                               << "0"
                                               << "/../../etc/passwd"
                                               << "avatar";
        QTest::newRow("upload nobody made") << "小明"
                                            << "0"
                                            << "/uploads/AAAAAAAAAAAAAAAAAAAAAA.jpg"
                                            << "avatar";
    }
    void profileChanges()
    {
        QFETCH(QString, nickName);
        QFETCH(QString, gender);
        QFETCH(QString, avatar);
        QFETCH(QString, failedField);
        const Answer answer = changeInfo(nickName, gender, avatar);
        const QJsonObject info = m_client->get(QStringLiteral("/setting/info.json")).object();
        if (failedField.isEmpty()) {
            QVERIFY2(answer.ok(), answer.body);
            QCOMPARE(info.value("nick_name").toString(), nickName);
            QCOMPARE(info.value("gender").toInt(), gender.toInt());
            QVERIFY(!info.value("avatar").toString().isEmpty());
        } else {
            QCOMPARE(answer.envelopeStatus(), QStringLiteral("fail"));
            QVERIFY(!answer.failMessage(failedField).isEmpty());
            QCOMPARE(info.value("nick_name").toString(), QStringLiteral("演示玩家"));
        }
    }

    void stateChangesNeedTheToken_data()
    {
        QTest::addColumn<QString>("token");
        QTest::newRow("missing") << "";
        QTest::newRow("wrong") << "not-the-token";
        QTest::newRow("sql") << "' OR '1'='1";
    }
    void stateChangesNeedTheToken()
    {
        QFETCH(QString, token);
        Form form{{QStringLiteral("account[nick_name]"), QStringLiteral("黑客")},
                  {QStringLiteral("account[gender]"), QStringLiteral("1")},
                  {QStringLiteral("account[avatar]"), QString()}};
        if (!token.isEmpty())
            form.prepend({QStringLiteral("authenticity_token"), token});
        const Answer answer = m_client->put(QStringLiteral("/setting/info.json"), form);
        QCOMPARE(answer.status, 403);
        QCOMPARE(m_client->get(QStringLiteral("/setting/info.json"))
                         .object()
                         .value("nick_name")
                         .toString(),
                 QStringLiteral("演示玩家"));
    }

    void passwordChange()
    {
        StoreClient otherDevice(m_store->baseUrl());
        QVERIFY(otherDevice.signIn(kPhone, kPassword).ok());
        auto change = [&](const QString &current, const QString &next, const QString &again) {
            return m_client->put(
                    QStringLiteral("/setting/password.json"),
                    m_client->withToken(
                            {{QStringLiteral("account[current_password]"), current},
                             {QStringLiteral("account[password]"), next},
                             {QStringLiteral("account[password_confirmation]"), again}}));
        };
        QCOMPARE(change(QStringLiteral("wrong-one"), QStringLiteral("brandnew99"),
                        QStringLiteral("brandnew99"))
                         .failMessage("current_password"),
                 QStringLiteral("请输入正确的当前密码"));
        QCOMPARE(
                change(kPassword, QStringLiteral("x"), QStringLiteral("x")).failMessage("password"),
                QStringLiteral("请输入至少8位的密码"));
        QVERIFY(change(kPassword, QStringLiteral("brandnew99"), QStringLiteral("brandnew99")).ok());
        QVERIFY(m_client->get(QStringLiteral("/cart.json")).ok()); // this device stays signed in
        QCOMPARE(otherDevice.get(QStringLiteral("/cart.json")).status,
                 401); // the others are signed out
        QVERIFY(!m_client->signIn(kPhone, kPassword).ok());
        QVERIFY(m_client->signIn(kPhone, QStringLiteral("brandnew99")).ok());
    }

    void bindEmail()
    {
        auto bind = [&](const QString &email, const QString &password) {
            return m_client->put(
                    QStringLiteral("/setting/email.json"),
                    m_client->withToken({{QStringLiteral("account[email]"), email},
                                         {QStringLiteral("account[current_password]"), password}}));
        };
        QCOMPARE(bind(kEmail, kPassword).failMessage("email"),
                 QStringLiteral("该邮箱已被其他账号使用，请更换邮箱"));
        QCOMPARE(bind(QStringLiteral("me@example.com"), QStringLiteral("bad"))
                         .failMessage("current_password"),
                 QStringLiteral("请输入正确的当前密码"));
        QCOMPARE(bind(QStringLiteral("not-an-address"), kPassword).failMessage("email"),
                 QStringLiteral("请输入正确的邮箱"));
        const Answer bound = bind(QStringLiteral("me@example.com"), kPassword);
        QVERIFY(bound.ok());
        // Bound only once the mailed link is followed.
        QCOMPARE(bound.object().value("email").toString(), QString());
        QCOMPARE(bound.object().value("pending_email").toString(),
                 QStringLiteral("me@example.com"));
        StoreClient byMail(m_store->baseUrl());
        QVERIFY(!byMail.signIn(QStringLiteral("me@example.com"), kPassword).ok());
        const QUrl link(
                m_client->lastMessage(QStringLiteral("me@example.com")).value("link").toString());
        QCOMPARE(link.path(), QStringLiteral("/account/email/confirm"));
        QCOMPARE(m_client->get(link.path() + QLatin1Char('?') + link.query()).status, 200);
        QCOMPARE(m_client->get(link.path() + QLatin1Char('?') + link.query()).status, 410);
        QVERIFY(byMail.signIn(QStringLiteral("me@example.com"), kPassword).ok());
        QCOMPARE(m_client->get(QStringLiteral("/setting/info.json")).object().value("email"),
                 QStringLiteral("me@example.com"));
    }

    void changingTheNumberNeedsTheOldOneChecked()
    {
        const QString fresh = QStringLiteral("13566667777");
        const QString newCode = requestCode(fresh);
        QVERIFY(!newCode.isEmpty());
        const Answer early = m_client->put(QStringLiteral("/setting/phone_number.json"),
                                           phoneForm(fresh, newCode, kPassword));
        QCOMPARE(early.status, 403);
        QCOMPARE(early.message(), QStringLiteral("请先验证当前绑定的手机号"));

        m_store->advanceClock(61);
        const QString oldCode = requestCode(kPhone);
        QCOMPARE(m_client->post(QStringLiteral("/setting/check_phone_number.json"),
                                phoneForm(fresh, oldCode, kPassword))
                         .failMessage("phone_number"),
                 QStringLiteral("与当前绑定的号码不一致，请检查手机号"));
        QVERIFY(m_client->post(QStringLiteral("/setting/check_phone_number.json"),
                               phoneForm(kPhone, oldCode, kPassword))
                        .ok());

        const Answer bound = m_client->put(QStringLiteral("/setting/phone_number.json"),
                                           phoneForm(fresh, newCode, kPassword));
        QVERIFY2(bound.ok(), bound.body);
        QCOMPARE(bound.object().value("phone_number").toString(), fresh);
        StoreClient again(m_store->baseUrl());
        QVERIFY(again.signIn(fresh, kPassword).ok());
        QVERIFY(!again.signIn(kPhone, kPassword).ok());
    }

    void anAccountWithoutNumberBindsDirectly()
    {
        StoreClient mail(m_store->baseUrl());
        QVERIFY(mail.signIn(kEmail, kPassword).ok());
        const Answer sent = mail.post(QStringLiteral("/phone_number_tokens.json"),
                                      mail.withToken({{QStringLiteral("phone_number"), kPhone},
                                                      {QStringLiteral("captcha"), QString()}}));
        QCOMPARE(sent.failMessage("phone_number"),
                 QStringLiteral("该号码已绑定其他账号，请更换手机号"));
        const QString number = QStringLiteral("13588889999");
        QVERIFY(mail.post(QStringLiteral("/phone_number_tokens.json"),
                          mail.withToken({{QStringLiteral("phone_number"), number},
                                          {QStringLiteral("captcha"), QString()}}))
                        .ok());
        const Answer bound = mail.put(
                QStringLiteral("/setting/phone_number.json"),
                mail.withToken({{QStringLiteral("account[phone_number]"), number},
                                {QStringLiteral("account[pending_phone_number_token]"),
                                 mail.lastCode(number)},
                                {QStringLiteral("account[current_password]"), kPassword}}));
        QVERIFY2(bound.ok(), bound.body);
        QCOMPARE(bound.object().value("email").toString(), kEmail);
        QCOMPARE(bound.object().value("phone_number").toString(), number);
    }
};

TARVEL_TEST_MAIN(TestSettings)
#include "tst_settings.moc"
