#pragma once

// Shared by the purchase tests: a window with one navigation stack inside a tab bar, scripted
// store answers, and waiting for the progress overlay.

#include "HudRecorder.h"
#include "tst_detailsupport.h"

#include "ScriptedHttpServer.h"
#include "app/ICTabBarController.h"

#include <QJsonDocument>

namespace purchasetest {

using detailtest::envelope;
using detailtest::failure;
using detailtest::signInDemoAccount;
using detailtest::signInLocally;
using detailtest::signOut;
using detailtest::storedCartNum;
using detailtest::waitForHud;

// A tab bar of two navigation stacks (home, cart); the first shows a plain home screen.
struct TabsHarness
{
    platform::Window window;
    ICTabBarController *tabs = new ICTabBarController;
    platform::NavigationController *navigation = nullptr;
    QPointer<platform::ViewController> home = new platform::ViewController;

    explicit TabsHarness(platform::ViewController *second = new platform::ViewController)
    {
        home->setTitle(QStringLiteral("首页"));
        navigation = new platform::NavigationController(home);
        tabs->setViewControllers({navigation, new platform::NavigationController(second)});
        window.setRootViewController(tabs);
        window.makeKeyAndVisible();
    }

    void push(platform::ViewController *controller)
    {
        navigation->pushViewController(controller, false);
    }
    platform::ViewController *top() const { return navigation->topViewController(); }
    int depth() const { return navigation->depth(); }
};

// A cart line as the store sends it.
inline QVariantMap cartLine(int id, const QString &title, const QString &list, const QString &sale)
{
    return {{QStringLiteral("id"), id},
            {QStringLiteral("title"), title},
            {QStringLiteral("type"), QStringLiteral("game")},
            {QStringLiteral("list_price"), list},
            {QStringLiteral("sale_price"), sale},
            {QStringLiteral("product_image"), QStringLiteral("/pictures/covers/%1.jpg").arg(id)}};
}

inline int requestsFor(const tarvel::test::ScriptedHttpServer &server, const QString &path)
{
    int count = 0;
    for (const auto &request : server.requests())
        count += request.path == path ? 1 : 0;
    return count;
}

// Waits until the HUD's latest text is `text`.
inline bool waitForLastHud(const QString &text, int timeoutMs = 10000)
{
    return QTest::qWaitFor(
            [text] {
                const QStringList history = HudRecorder::shared().history();
                return !history.isEmpty() && history.last() == text;
            },
            timeoutMs);
}

} // namespace purchasetest
