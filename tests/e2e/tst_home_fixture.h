#pragma once

// Shared by the store screen tests: a phone window hosting one screen in a navigation stack under
// the tab bar, the API address switch and small waiting helpers.

#include "HudRecorder.h"
#include "QuickTestItems.h"

#include "app/ICTabBarController.h"
#include "platform/UserDefaults.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/UrlOpener.h"
#include "platform/ui/ViewController.h"
#include "platform/ui/Window.h"

#include <QCoreApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QStringList>
#include <QTest>

namespace tarvel::test {

// The screens talk to whatever base address this names from now on.
inline void pointApiAt(const QString &baseUrl)
{
    qputenv("TARVEL_API_BASE_URL", baseUrl.toUtf8());
}

// A window whose root is a tab bar holding one navigation stack rooted at the given screen; the
// screen loads and appears at once, as on a phone.
class ScreenHost
{
public:
    explicit ScreenHost(platform::ViewController *root)
        : m_tabs(new ICTabBarController)
        , m_navigation(new platform::NavigationController(root))
    {
        m_tabs->setViewControllers({m_navigation});
        m_window.setRootViewController(m_tabs);
        m_window.makeKeyAndVisible();
    }

    platform::Window *window() { return &m_window; }
    ICTabBarController *tabBar() const { return m_tabs; }
    platform::NavigationController *navigation() const { return m_navigation; }
    platform::ViewController *top() const { return m_navigation->topViewController(); }
    int depth() const { return m_navigation->depth(); }

private:
    platform::Window m_window;
    ICTabBarController *m_tabs;
    platform::NavigationController *m_navigation;
};

// Lets queued calls and deferred deletions run.
inline void settle()
{
    for (int i = 0; i < 3; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

// Whether `controller` is the game detail screen, and for which game.
inline bool isGoodsDetail(const platform::ViewController *controller)
{
    return controller
           && (QLatin1String(controller->metaObject()->className())
                       == QLatin1String("GoodsDetailViewController")
               || controller->objectName() == QLatin1String("GoodsDetailViewController"));
}

inline QString gameIdOf(const platform::ViewController *controller)
{
    return controller ? controller->property("gameId").toString() : QString();
}

// A fresh start for each case: no HUD, no opened addresses (the browser is never started), no
// stored cart count.
inline void resetSharedState()
{
    platform::Hud::shared().dismiss();
    HudRecorder::shared().clear();
    platform::Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
    platform::UrlOpener::shared().setHandler([](const QUrl &) { return true; });
    platform::UrlOpener::shared().clearHistory();
    platform::UserDefaults::standard().removeObjectForKey(QStringLiteral("cartnum"));
}

// Whether every grid cell inside the window shows its loaded cover (and there is one at least).
inline bool coversOnScreenLoaded(QQuickWindow *window)
{
    int onScreen = 0;
    for (QQuickItem *cell :
         findAllNamed(window->contentItem(), QStringLiteral("homePageViewCell"))) {
        const QRectF box = cell->mapRectToScene(QRectF(0, 0, cell->width(), cell->height()));
        if (!box.intersects(QRectF(0, 0, window->width(), window->height())))
            continue;
        if (!cell->property("coverReady").toBool())
            return false;
        ++onScreen;
    }
    return onScreen > 0;
}

} // namespace tarvel::test
