#pragma once

// Shared by the shell tests: bringing the application delegate back to a fresh start between
// cases, and catching what QML complains about.

#include "HudRecorder.h"
#include "QuickTestItems.h"
#include "app/AppDelegate.h"
#include "app/ICTabBarController.h"
#include "platform/UserDefaults.h"
#include "platform/ui/AlertCenter.h"
#include "platform/ui/Hud.h"
#include "platform/ui/Window.h"
#include "service/ICCookiesHelper.h"
#include "service/ICSessionHelper.h"

#include <QCoreApplication>
#include <QStringList>
#include <QTest>

namespace shelltest {

// Runs what is queued on the main loop (the deferred screen hooks) and what waits for deletion.
inline void settle()
{
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

// Signed out, nothing stored, an empty window, no badge, the countdown idle.
inline void resetApplication()
{
    AppDelegate *delegate = AppDelegate::shared();
    delegate->window()->setRootViewController(nullptr);
    delegate->setUserLogin(std::nullopt);
    delegate->setLabelRedDot(nullptr);
    delegate->setTagsSender({});
    delegate->setTags({});
    ICSessionHelper::userClearData();
    ICCookiesHelper::deleteCookies();
    auto &defaults = platform::UserDefaults::standard();
    for (const char *key : {"cartnum", "isCountdown", "username", "isPush"})
        defaults.removeObjectForKey(QString::fromLatin1(key));
    defaults.synchronize();
    platform::Hud::shared().dismiss();
    HudRecorder::shared().clear();
    platform::AlertCenter::shared().clear();
    settle();
}

inline ICTabBarController *launchedTabBar()
{
    return qobject_cast<ICTabBarController *>(
            AppDelegate::shared()->window()->rootViewController());
}

inline Object_User userWithPhone(const QString &phone)
{
    Object_User user;
    user.account_id = QStringLiteral("7");
    user.nick_name = QStringLiteral("演示玩家");
    user.phone_number = phone;
    user.token = QStringLiteral("token-7");
    return user;
}

} // namespace shelltest
