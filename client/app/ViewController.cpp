#include "app/ViewController.h"

#include "TarvelConfig.h"
#include "app/AppDelegate.h"
#include "app/ICTabBarController.h"
#include "app/LeftViewController.h"
#include "app/MainViewController.h"
#include "app/RightViewController.h"
#include "app/SlidePanelController.h"
#include "app/UserGuideViewController.h"
#include "models/Object_User.h"
#include "platform/UserDefaults.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/Window.h"
#include "screens/account/MyMessageViewController.h"
#include "screens/account/NavRootViewController.h"
#include "screens/account/TabFourViewController.h"
#include "screens/purchase/TabThreeViewController.h"
#include "screens/store/TabOneViewController.h"
#include "service/ICCookiesHelper.h"
#include "service/ICSessionHelper.h"

namespace {

const QString GuideShownValue = QStringLiteral("YES");

platform::Window *appWindow()
{
    return AppDelegate::shared()->window();
}

} // namespace

ViewController::ViewController(QObject *parent)
    : platform::ViewController(parent)
{ }

void ViewController::viewDidLoad()
{
    platform::ViewController::viewDidLoad();
    goForwardToTabBar();
    loginSystemByLocal();
}

void ViewController::goForwardToTabBar()
{
    const QList<platform::ViewController *> roots = {
            new TabOneViewController,
            new TabThreeViewController(0),
            new TabFourViewController,
            new MyMessageViewController,
    };
    QList<platform::ViewController *> stacks;
    for (platform::ViewController *root : roots)
        stacks.append(new platform::NavigationController(root));
    auto *tabBar = new ICTabBarController;
    tabBar->setViewControllers(stacks);
    appWindow()->setRootViewController(tabBar);
}

void ViewController::loginSystemByLocal()
{
    if (!ICSessionHelper::userIsLoginSelf())
        return;
    const std::optional<Object_User> user = JSONModel::initWithDictionary<Object_User>(
            ICSessionHelper::userGetinfo().value_or(QVariantMap()));
    if (!user || user->account_id.isEmpty())
        return;
    AppDelegate::shared()->setUserLogin(user);
    ICCookiesHelper::setCookies();
    goForwardToTabBar();
}

void ViewController::goForwardToNavRoot()
{
    appWindow()->setRootViewController(
            new platform::NavigationController(new NavRootViewController(0, {})));
}

void ViewController::goForwardToSliderPanel()
{
    auto *panel = new SlidePanelController;
    panel->setCenterPanel(new platform::NavigationController(new MainViewController));
    panel->setLeftPanel(new LeftViewController);
    panel->setRightPanel(new RightViewController);
    appWindow()->setRootViewController(panel);
}

void ViewController::goForwardToUserGuide()
{
    const QString key = userGuideFlagKey(currentVersion());
    auto &defaults = platform::UserDefaults::standard();
    if (defaults.objectForKey(key).toString() == GuideShownValue)
        return;
    platform::ViewController *root = appWindow()->rootViewController();
    if (!root)
        return;
    defaults.setObject(GuideShownValue, key);
    defaults.synchronize();
    root->presentViewController(new UserGuideViewController({QStringLiteral("dguide_learn1"),
                                                             QStringLiteral("dguide_learn2"),
                                                             QStringLiteral("dguide_learn3")}),
                                true);
}

QString ViewController::userGuideFlagKey(const QString &version)
{
    return QStringLiteral("FirstJoin") + version;
}

QString ViewController::currentVersion()
{
    return QString::fromUtf8(tarvel::config::AppVersion);
}
