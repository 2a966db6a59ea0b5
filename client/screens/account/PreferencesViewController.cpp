#include "screens/account/PreferencesViewController.h"

#include "platform/UserDefaults.h"
#include "platform/kits/Application.h"
#include "platform/kits/GeTuiSdk.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/NavigationController.h"

namespace {

const QString IsPushKey = QStringLiteral("isPush");

} // namespace

PreferencesViewController::PreferencesViewController(QObject *parent)
    : Q9FatherViewController(parent)
    , m_switchPush(new platform::Switch(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/account/PreferencesView.qml")));
    connect(m_switchPush, &platform::Switch::toggled, this, &PreferencesViewController::openPush);
}

bool PreferencesViewController::systemAllowsNotifications()
{
    const platform::Application &application = platform::Application::shared();
    if (application.supportsUserNotificationSettings())
        return application.currentUserNotificationSettings().types.toInt() != 0;
    return application.enabledRemoteNotificationTypes().toInt() != 0;
}

void PreferencesViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("偏好设置"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void PreferencesViewController::viewWillAppear(bool animated)
{
    Q9FatherViewController::viewWillAppear(animated);
    setNavigationBarTransparent(false);
    const QVariant isPush = platform::UserDefaults::standard().objectForKey(IsPushKey);
    m_switchPush->setOn(systemAllowsNotifications() && isPush.toString() != QLatin1String("0"));
}

void PreferencesViewController::setRefleshDataAction()
{
    hideTabBar(true);
}

void PreferencesViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void PreferencesViewController::openPush(bool on)
{
    platform::UserDefaults &defaults = platform::UserDefaults::standard();
    // Stored whatever the system allows: turning push off is remembered even while the system
    // holds the app's notifications back anyway.
    defaults.setObject(on ? QStringLiteral("1") : QStringLiteral("0"), IsPushKey);
    GeTuiSdk::setPushModeForOff(!on);
    defaults.synchronize();
}
