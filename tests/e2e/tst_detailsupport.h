#pragma once

// Shared by the game-detail, related-items, library and share tests: a window with one navigation
// stack, the store's answers for a game, and sign-in.

#include "HudRecorder.h"
#include "app/AppDelegate.h"
#include "platform/HTTPCookieStorage.h"
#include "platform/UserDefaults.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/ViewController.h"
#include "platform/ui/Window.h"
#include "screens/store/GoodsDetailViewController.h"
#include "service/ICCookiesHelper.h"
#include "service/NetWorkHelper.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QPointer>
#include <QTest>

namespace detailtest {

// A window showing a navigation stack whose root is a plain "home" screen.
struct StackHarness
{
    platform::Window window;
    platform::NavigationController *navigation = nullptr;
    QPointer<platform::ViewController> home = new platform::ViewController;

    StackHarness()
    {
        home->setTitle(QStringLiteral("首页"));
        navigation = new platform::NavigationController(home);
        window.setRootViewController(navigation);
        window.makeKeyAndVisible();
    }

    void push(platform::ViewController *controller)
    {
        navigation->pushViewController(controller, false);
    }
    platform::ViewController *top() const { return navigation->topViewController(); }
    int depth() const { return navigation->depth(); }
};

// Pushes the page of `gameId` and waits until it has loaded and rendered its description (or
// failed). Answers the page.
inline GoodsDetailViewController *openDetail(StackHarness &harness, const QString &gameId)
{
    auto *detail = new GoodsDetailViewController;
    detail->setGameId(gameId);
    harness.push(detail);
    return detail;
}

inline bool waitUntilLoaded(GoodsDetailViewController *detail, int timeoutMs = 10000)
{
    return QTest::qWaitFor(
            [detail] { return detail->isLoaded() && !detail->webView()->isLoading(); }, timeoutMs);
}

// Waits until the HUD has shown `text` (of any kind).
inline bool waitForHud(const QString &text, int timeoutMs = 10000)
{
    return QTest::qWaitFor([text] { return HudRecorder::shared().history().contains(text); },
                           timeoutMs);
}

// A success envelope around `data`.
inline QByteArray envelope(const QVariant &data)
{
    return QJsonDocument::fromVariant(
                   QVariantMap{{QStringLiteral("status"), QStringLiteral("success")},
                               {QStringLiteral("message"), QString()},
                               {QStringLiteral("data"), data}})
            .toJson(QJsonDocument::Compact);
}

inline QByteArray failure(const QString &status, const QString &message)
{
    return QJsonDocument::fromVariant(
                   QVariantMap{{QStringLiteral("status"), status},
                               {QStringLiteral("message"), message},
                               {QStringLiteral("data"), QVariant::fromValue(nullptr)}})
            .toJson(QJsonDocument::Compact);
}

// A plain released base game as the store describes it, with `overrides` put over it.
inline QVariantMap gameAnswer(const QVariantMap &overrides = {})
{
    auto names = [](const QStringList &list) {
        QVariantList entries;
        for (const QString &name : list)
            entries.append(QVariantMap{{QStringLiteral("name"), name}});
        return entries;
    };
    QVariantMap game{
            {QStringLiteral("id"), 7},
            {QStringLiteral("title"), QStringLiteral("霓虹编年史")},
            {QStringLiteral("alias_name"), QStringLiteral("Neon Chronicles")},
            {QStringLiteral("list_price"), QStringLiteral("168")},
            {QStringLiteral("sale_price"), QStringLiteral("42")},
            {QStringLiteral("release_date"), QStringLiteral("1480125600")},
            {QStringLiteral("blocked"), QStringLiteral("0")},
            {QStringLiteral("min_age"), QString()},
            {QStringLiteral("pubtype"), QStringLiteral("Steam 激活码")},
            {QStringLiteral("raw_summary"),
             QStringLiteral("<p>霓虹都市里的<strong>冒险</strong>。</p>")},
            {QStringLiteral("product_image"),
             QStringLiteral("http://127.0.0.1:1/pictures/covers/7.jpg")},
            {QStringLiteral("tags"), names({QStringLiteral("动作"), QStringLiteral("冒险")})},
            {QStringLiteral("os"), names({QStringLiteral("Win")})},
            {QStringLiteral("languages"),
             names({QStringLiteral("简体中文"), QStringLiteral("英语")})},
            {QStringLiteral("publishers"),
             names({QStringLiteral("Aurora Interactive"), QStringLiteral("Second")})},
            {QStringLiteral("developers"), names({QStringLiteral("Lantern Works")})},
            {QStringLiteral("dlcs"), QVariantList()},
            {QStringLiteral("included_bundles"), QVariantList()},
    };
    for (auto it = overrides.cbegin(); it != overrides.cend(); ++it)
        game.insert(it.key(), it.value());
    return game;
}

inline QVariantMap relatedItem(int id, const QString &title, const QString &list,
                               const QString &sale)
{
    return {{QStringLiteral("id"), id},
            {QStringLiteral("title"), title},
            {QStringLiteral("type_name"), QStringLiteral("DLC")},
            {QStringLiteral("list_price"), list},
            {QStringLiteral("sale_price"), sale}};
}

// Signs the phone demo account in against the store at ApiBaseUrl() and makes it the app's user.
inline bool signInDemoAccount()
{
    bool done = false;
    NetWorkHelper::shareInstance()->signInWithAccountEmail(
            QStringLiteral("13800138000"), QStringLiteral("tarvel2024"), {}, {},
            [&done](const QVariant &data, const QVariant &) {
                AppDelegate::shared()->setUserLogin(
                        JSONModel::initWithDictionary<Object_User>(data));
                done = true;
            },
            [&done](const QVariant &, const QString &message, const QVariant &) {
                qWarning() << "sign-in failed:" << message;
                done = true;
            });
    return QTest::qWaitFor([&done] { return done; }, 10000) && AppDelegate::shared()->isSignedIn();
}

// A signed-in user without a session on any service (for scripted answers).
inline void signInLocally()
{
    Object_User user;
    user.account_id = QStringLiteral("1");
    user.token = QStringLiteral("token");
    AppDelegate::shared()->setUserLogin(user);
}

inline void signOut()
{
    AppDelegate::shared()->setUserLogin(std::nullopt);
    ICCookiesHelper::deleteCookies();
}

inline QString storedCartNum()
{
    return platform::UserDefaults::standard().objectForKey(QStringLiteral("cartnum")).toString();
}

} // namespace detailtest
