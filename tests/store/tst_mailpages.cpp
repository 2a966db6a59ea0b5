#include "InProcessStore.h"
#include "StoreClient.h"
#include "StoreSeed.h"
#include "TestEnvironment.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

using namespace tarvel::test;

namespace {

const QString Chromium = QStringLiteral("/usr/bin/chromium");

} // namespace

// The links of account mails opened in a real browser (headless Chromium), as a customer clicks
// them: activation, unlock, and the new-password form filled in and sent. Skipped where Chromium
// is not installed.
class TestMailPages : public QObject
{
    Q_OBJECT

private:
    const QString kEmail = QString::fromLatin1(StoreSeed::kDemoEmail);
    const QString kPassword = QString::fromLatin1(StoreSeed::kDemoPassword);
    QTemporaryDir m_browserHome;

    // The sandbox holds the mails whose links are opened.
    static StoreOptions sandboxOptions()
    {
        StoreOptions options;
        options.sandbox = true;
        return options;
    }

    // What the browser shows for `url` once its scripts and navigations settled.
    QString browse(const QString &url)
    {
        QTemporaryDir profile(m_browserHome.filePath(QStringLiteral("profile-XXXXXX")));
        QProcess browser;
        browser.setProcessChannelMode(QProcess::SeparateChannels);
        browser.start(Chromium, {QStringLiteral("--headless"), QStringLiteral("--no-sandbox"),
                                 QStringLiteral("--disable-gpu"),
                                 QStringLiteral("--disable-background-networking"),
                                 QStringLiteral("--no-first-run"),
                                 QStringLiteral("--user-data-dir=") + profile.path(),
                                 QStringLiteral("--virtual-time-budget=5000"),
                                 QStringLiteral("--dump-dom"), url});
        if (!browser.waitForFinished(60000)) {
            browser.kill();
            browser.waitForFinished();
            return {};
        }
        return QString::fromUtf8(browser.readAllStandardOutput());
    }

    // A page on disk that sends `fields` to `action` as the browser sends a filled-in form.
    QString submittingPage(const QString &action, const QList<std::pair<QString, QString>> &fields)
    {
        QString inputs;
        for (const auto &[name, value] : fields)
            inputs += QStringLiteral("<input type=\"hidden\" name=\"%1\" value=\"%2\">")
                              .arg(name.toHtmlEscaped(), value.toHtmlEscaped());
        const QString path = m_browserHome.filePath(QStringLiteral("submit.html"));
        QFile file(path);
        file.open(QIODevice::WriteOnly | QIODevice::Truncate);
        file.write(QStringLiteral("<!DOCTYPE html><html><body><form method=\"post\" "
                                  "action=\"%1\">%2</form><script>document.forms[0].submit()"
                                  "</script></body></html>")
                           .arg(action.toHtmlEscaped(), inputs)
                           .toUtf8());
        return QUrl::fromLocalFile(path).toString();
    }

    static void failSignIns(StoreClient &client, const QString &login, int times)
    {
        for (int i = 0; i < times; ++i)
            client.signIn(login, QStringLiteral("wrong-password"));
    }

private slots:
    void initTestCase()
    {
        if (!QFile::exists(Chromium))
            QSKIP("/usr/bin/chromium is not installed (Debian package chromium); the mail link "
                  "pages are not checked in a browser");
        QVERIFY(m_browserHome.isValid());
    }

    void activationLinkActivates()
    {
        InProcessStore store(sandboxOptions());
        StoreClient client(store.baseUrl());
        const QString email = QStringLiteral("browser.player@example.com");
        const Answer signedUp
                = client.post(QStringLiteral("/sign_up.json"),
                              {{QStringLiteral("account[email]"), email},
                               {QStringLiteral("account[captcha]"), client.captcha()},
                               {QStringLiteral("account[password]"), QStringLiteral("longenough1")},
                               {QStringLiteral("account[password_confirmation]"),
                                QStringLiteral("longenough1")}});
        QVERIFY2(signedUp.ok(), signedUp.body);
        const QString link = client.lastMessage(email).value(QStringLiteral("link")).toString();

        const QString page = browse(link);
        QVERIFY2(page.contains(QStringLiteral("<h1>账号已激活</h1>")), qPrintable(page));
        QVERIFY(client.signIn(email, QStringLiteral("longenough1")).ok());
        // A link works once.
        QVERIFY(browse(link).contains(QStringLiteral("<h1>链接无效</h1>")));
    }

    void unlockLinkUnlocks()
    {
        InProcessStore store(sandboxOptions());
        StoreClient client(store.baseUrl());
        failSignIns(client, kEmail, 5);
        QCOMPARE(client.signIn(kEmail, kPassword).json.value("code").toInt(), 601);
        const Answer sent = client.post(QStringLiteral("/unlock.json"),
                                        {{QStringLiteral("account[email]"), kEmail},
                                         {QStringLiteral("account[captcha]"), client.captcha()}});
        QVERIFY2(sent.ok(), sent.body);
        const QString link = client.lastMessage(kEmail).value(QStringLiteral("link")).toString();

        const QString page = browse(link);
        QVERIFY2(page.contains(QStringLiteral("<h1>账号已解锁</h1>")), qPrintable(page));
        QVERIFY(client.signIn(kEmail, kPassword).ok());
    }

    void resetLinkSetsTheNewPassword()
    {
        InProcessStore store(sandboxOptions());
        StoreClient client(store.baseUrl());
        const Answer sent = client.post(QStringLiteral("/password.json"),
                                        {{QStringLiteral("account[email]"), kEmail},
                                         {QStringLiteral("account[captcha]"), client.captcha()}});
        QVERIFY2(sent.ok(), sent.body);
        const QString link = client.lastMessage(kEmail).value(QStringLiteral("link")).toString();

        // The form as the browser shows it.
        const QString form = browse(link);
        QVERIFY2(form.contains(QStringLiteral("<h1>设置新密码</h1>")), qPrintable(form));
        QVERIFY(form.contains(QStringLiteral("name=\"password\"")));
        QVERIFY(form.contains(QStringLiteral("name=\"password_confirmation\"")));
        const QRegularExpressionMatch token
                = QRegularExpression(QStringLiteral("name=\"token\" value=\"([^\"]+)\""))
                          .match(form);
        QVERIFY(token.hasMatch());
        const QString action = store.baseUrl() + QStringLiteral("/account/password/edit");

        // Two different passwords: the form comes back saying so; the link still works.
        const QString mismatch
                = browse(submittingPage(action, {{"token", token.captured(1)},
                                                 {"password", "fromthebrowser1"},
                                                 {"password_confirmation", "fromthebrowser2"}}));
        QVERIFY2(mismatch.contains(QStringLiteral("两次输入的密码不一致")), qPrintable(mismatch));
        QVERIFY(mismatch.contains(QStringLiteral("name=\"password\"")));

        const QString done
                = browse(submittingPage(action, {{"token", token.captured(1)},
                                                 {"password", "fromthebrowser1"},
                                                 {"password_confirmation", "fromthebrowser1"}}));
        QVERIFY2(done.contains(QStringLiteral("<h1>密码已更新</h1>")), qPrintable(done));
        QVERIFY(client.signIn(kEmail, QStringLiteral("fromthebrowser1")).ok());
        QVERIFY(!client.signIn(kEmail, kPassword).ok());
        QVERIFY(browse(link).contains(QStringLiteral("<h1>链接无效</h1>")));
    }
};

TARVEL_TEST_MAIN(TestMailPages)
#include "tst_mailpages.moc"
