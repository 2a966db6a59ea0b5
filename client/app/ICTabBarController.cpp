#include "app/ICTabBarController.h"

ICTabBarController::ICTabBarController(QObject *parent)
    : platform::TabBarController(parent)
{ }

void ICTabBarController::hideTabBar(bool hide)
{
    if (hide == m_isHide)
        return;
    m_isHide = hide;
    setTabBarHidden(hide);
    emit isHideChanged();
}

void ICTabBarController::selectViewControllerAtIndex(int index)
{
    setSelectedIndex(index);
}
