#include "screens/purchase/TabThreeViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/NavigationController.h"

TabThreeViewController::TabThreeViewController(int viewFather, QObject *parent)
    : Q9FatherViewController(parent)
    , m_viewFather(viewFather)
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/purchase/TabThreeView.qml")));
}

void TabThreeViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("购物车"));
    rightBarItem()->setHidden(true);
    if (isPushed())
        setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    else
        leftBarItem()->setHidden(true);
}

void TabThreeViewController::setRefleshDataAction()
{
    hideTabBar(isPushed());
}

void TabThreeViewController::setNavLeftAction()
{
    if (isPushed() && navigationController())
        navigationController()->popViewController(true);
}
