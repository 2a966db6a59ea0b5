#include "app/Q9FatherViewController.h"

#include "app/ICTabBarController.h"
#include "app/ScreenLook.h"
#include "platform/ui/BarButtonItem.h"

#include <QTimer>

Q9FatherViewController::Q9FatherViewController(QObject *parent)
    : platform::ViewController(parent)
    , m_backgroundColor(ScreenLook::defaultBackgroundColor())
    , m_navTitleColor(ScreenLook::defaultNavTitleColor())
    , m_navTitleFontSize(ScreenLook::DefaultNavTitleFontSize)
    , m_navBarColor(ScreenLook::defaultNavBarColor())
{
    setHidesBottomBarWhenPushed(true);
    connect(leftBarItem(), &platform::BarButtonItem::triggered, this,
            [this] { setNavLeftAction(); });
    connect(rightBarItem(), &platform::BarButtonItem::triggered, this,
            [this] { setNavRightAction(); });
}

void Q9FatherViewController::viewDidLoad()
{
    platform::ViewController::viewDidLoad();
    setBackgroundColor(ScreenLook::defaultBackgroundColor());
    setNavTitleWithString(QString());
    setNavTitleAttributesWithTextColor(ScreenLook::defaultNavTitleColor(),
                                       ScreenLook::DefaultNavTitleFontSize);
    setNavBarBackgroundColor(ScreenLook::defaultNavBarColor());
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("navLeftImageIcon"), QString());
    setNavRightDefaultItemWithImageIcon(QStringLiteral("navRightImageIcon"), QString());
    // After the subclass's own view-load code has run.
    QTimer::singleShot(0, this, [this] { setLoadViewAction(); });
}

void Q9FatherViewController::viewWillAppear(bool animated)
{
    platform::ViewController::viewWillAppear(animated);
    QTimer::singleShot(0, this, [this] { setRefleshDataAction(); });
}

void Q9FatherViewController::setBackgroundColor(const QColor &color)
{
    if (m_backgroundColor == color)
        return;
    m_backgroundColor = color;
    emit appearanceStyleChanged();
}

void Q9FatherViewController::setNavHidden(bool hidden)
{
    setNavigationBarHidden(hidden);
}

void Q9FatherViewController::setNavTitleWithString(const QString &title)
{
    setTitle(title);
}

void Q9FatherViewController::setNavTitleAttributesWithTextColor(const QColor &color, int fontSize)
{
    m_navTitleColor = color;
    m_navTitleFontSize = fontSize;
    emit appearanceStyleChanged();
}

void Q9FatherViewController::setNavBarBackgroundColor(const QColor &color)
{
    m_navBarColor = color;
    emit appearanceStyleChanged();
}

void Q9FatherViewController::setNavLeftDefaultItemWithImageIcon(const QString &imageName,
                                                                const QString &title)
{
    leftBarItem()->configure(imageName, title);
    leftBarItem()->setTitleColor(ScreenLook::defaultItemTitleColor());
}

void Q9FatherViewController::setNavRightDefaultItemWithImageIcon(const QString &imageName,
                                                                 const QString &title)
{
    rightBarItem()->configure(imageName, title);
    rightBarItem()->setTitleColor(ScreenLook::defaultItemTitleColor());
}

void Q9FatherViewController::hideTabBar(bool hidden)
{
    if (auto *tabBar = qobject_cast<ICTabBarController *>(tabBarController()))
        tabBar->hideTabBar(hidden);
}

void Q9FatherViewController::setEndEdingAction()
{
    emit endEditingRequested();
}
