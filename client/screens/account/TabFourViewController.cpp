#include "screens/account/TabFourViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "service/ApplicationState.h"

TabFourViewController::TabFourViewController(QObject *parent)
    : Q9FatherViewController(parent)
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/account/TabFourView.qml")));
}

void TabFourViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("我的Tarvel"));
    leftBarItem()->setHidden(true);
    rightBarItem()->setHidden(true);
}

void TabFourViewController::viewWillAppear(bool animated)
{
    Q9FatherViewController::viewWillAppear(animated);
    setNavigationBarTransparent(true);
}

void TabFourViewController::setRefleshDataAction()
{
    hideTabBar(false);
    const std::optional<Object_User> user = ApplicationState::shared().userLogin();
    m_nickName = user ? user->nick_name : QString();
    emit userShown();
}
