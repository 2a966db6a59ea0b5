#pragma once

// What the registration and recovery tests share: a tarvel-store in the process with its sandbox
// (captcha answers, SMS codes and mails are read from it, never made up), the sign-in screen
// presented the way the tab bar does it, and HUD records that print readably.

#include "HudRecorder.h"
#include "InProcessStore.h"
#include "StoreContext.h"
#include "tst_signin_support.h"

#include "accounts/Accounts.h"
#include "app/AppDelegate.h"
#include "core/Crypto.h"
#include "platform/UserDefaults.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/ViewController.h"
#include "platform/ui/Window.h"
#include "screens/account/ImageCodeButton.h"
#include "screens/account/NavRootViewController.h"
#include "service/ICCookiesHelper.h"
#include "service/ICSessionHelper.h"
#include "service/NetWorkHelper.h"

#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QSignalSpy>

#include <SQLiteCpp/Database.h>

#include <memory>

namespace tarvel::test {

using HudRecords = QList<HudRecorder::Record>;

inline HudRecorder::Record progressHud(const QString &text)
{
    return {platform::Hud::Progress, text, true};
}
inline HudRecorder::Record successHud(const QString &text, bool masked = true)
{
    return {platform::Hud::Success, text, masked};
}
inline HudRecorder::Record errorHud(const QString &text, bool masked = true)
{
    return {platform::Hud::Error, text, masked};
}
inline HudRecords hudRecords()
{
    return HudRecorder::shared().records();
}
inline void clearHud()
{
    platform::Hud::shared().dismiss();
    HudRecorder::shared().clear();
}
// Waits until `count` HUDs were shown.
inline bool waitForHuds(qsizetype count)
{
    return QTest::qWaitFor([count] { return hudRecords().size() >= count; }, 10000);
}

// The store and the app's state around it, fresh for each test function.
class AccountFixture
{
public:
    AccountFixture()
        : m_store(std::make_unique<InProcessStore>(sandboxOptions()))
    { }

    // The sandbox tells the captcha answers and holds the SMS and mails.
    static StoreOptions sandboxOptions()
    {
        StoreOptions options;
        options.sandbox = true;
        return options;
    }

    InProcessStore &store() { return *m_store; }
    QString baseUrl() const { return m_store->baseUrl(); }
    platform::Window *window() const { return m_window.get(); }
    QList<qint64> completions() const { return m_completions; }

    // Signed out, nothing stored, the countdown idle, the service this store.
    void reset()
    {
        qputenv("TARVEL_API_BASE_URL", m_store->baseUrl().toUtf8());
        for (const QString &key : {QStringLiteral("username"), QStringLiteral("cartnum")})
            platform::UserDefaults::standard().removeObjectForKey(key);
        ICCookiesHelper::deleteCookies();
        ICSessionHelper::userClearData();
        AppDelegate::shared()->setUserLogin(std::nullopt);
        // A countdown left running by a test ends quickly.
        AppDelegate *delegate = AppDelegate::shared();
        delegate->setCountdownTickInterval(5);
        const auto counting = [] {
            return platform::UserDefaults::standard()
                    .objectForKey(QStringLiteral("isCountdown"))
                    .toBool();
        };
        if (counting())
            delegate->setTimerStart();
        (void)QTest::qWaitFor([&] { return !counting(); }, 10000);
        clearHud();
        m_completions.clear();
        QmlWarnings::clear();
    }

    void closeWindow()
    {
        m_window.reset();
        settle();
    }

    // An account only one test uses (password "secret123"), so that locking it or changing its
    // password touches nobody else.
    void createAccount(const QString &phone, const QString &email, bool confirmed = true)
    {
        const QString hash = Crypto::hashPassword(QStringLiteral("secret123"));
        m_store->context().database().write([&](SQLite::Database &db) {
            return Accounts::create(db, phone, email, hash, QStringLiteral("测试玩家"), confirmed,
                                    m_store->context().now());
        });
    }

    // The sign-in screen presented over a home screen the way the tab bar does it.
    NavRootViewController *presentSignIn(qint64 father = 0)
    {
        m_window = std::make_unique<platform::Window>();
        auto *home = new platform::NavigationController(new platform::ViewController);
        m_window->setRootViewController(home);
        m_window->makeKeyAndVisible();
        auto *signIn = (new NavRootViewController)
                               ->initWithViewFather(father, [this](qint64 viewFather) {
                                   m_completions.append(viewFather);
                               });
        home->presentViewController(new platform::NavigationController(signIn), true);
        const bool ready = QTest::qWaitFor([signIn] { return !signIn->imageHead().isEmpty(); });
        settle();
        return ready ? signIn : nullptr;
    }

    // The "data" of a GET on the store, with the app's cookies (its session).
    QVariant storeData(const QString &pathAndQuery)
    {
        QNetworkAccessManager *network = NetWorkHelper::shareInstance()->networkManager();
        QNetworkReply *reply = network->get(QNetworkRequest(QUrl(baseUrl() + pathAndQuery)));
        QSignalSpy finished(reply, &QNetworkReply::finished);
        if (!reply->isFinished())
            finished.wait(10000);
        const QVariant data
                = QJsonDocument::fromJson(reply->readAll()).toVariant().toMap().value("data");
        reply->deleteLater();
        return data;
    }

    // The text of the captcha picture the app was shown last.
    QString captchaText()
    {
        return storeData("/sandbox/captcha.json").toMap().value("captcha").toString();
    }

    // The newest SMS or mail to `recipient`.
    QVariantMap lastMessage(const QString &recipient)
    {
        const QVariantList messages
                = storeData("/sandbox/outbox.json?to="
                            + QString::fromLatin1(QUrl::toPercentEncoding(recipient)))
                          .toList();
        return messages.isEmpty() ? QVariantMap() : messages.constFirst().toMap();
    }
    QString smsCode(const QString &phone) { return lastMessage(phone).value("code").toString(); }

    // A GET as a browser would send it (no app cookies): the status and the page.
    static std::pair<int, QString> fetchPage(const QString &url)
    {
        QNetworkAccessManager network;
        QNetworkReply *reply = network.get(QNetworkRequest(QUrl(url)));
        QSignalSpy finished(reply, &QNetworkReply::finished);
        finished.wait(10000);
        const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        const QString body = QString::fromUtf8(reply->readAll());
        reply->deleteLater();
        return {status, body};
    }

    // Waits for the captcha picture of `button` to arrive.
    static bool waitForCaptcha(ImageCodeButton *button)
    {
        return QTest::qWaitFor([button] { return !button->backgroundImageUrl().isEmpty(); }, 10000);
    }

private:
    std::unique_ptr<InProcessStore> m_store;
    std::unique_ptr<platform::Window> m_window;
    QList<qint64> m_completions;
};

} // namespace tarvel::test
