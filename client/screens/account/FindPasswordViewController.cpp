#include "screens/account/FindPasswordViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Button.h"
#include "platform/ui/NavigationController.h"
#include "screens/account/FindPasswordMobileViewController.h"
#include "screens/account/FindPswByEmailViewController.h"

FindPasswordViewController::FindPasswordViewController(qint64 viewType, QObject *parent)
    : Q9FatherViewController(parent)
    , m_viewType(viewType)
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/account/FindPasswordView.qml")));
}

void FindPasswordViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(m_viewType == FindPassword ? QStringLiteral("找回方式")
                                                     : QStringLiteral("解锁方式"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void FindPasswordViewController::viewWillAppear(bool animated)
{
    Q9FatherViewController::viewWillAppear(animated);
    setNavigationBarTransparent(true);
}

void FindPasswordViewController::setLoadViewAction()
{
    const bool findPassword = m_viewType == FindPassword;
    m_backgroundImage = QStringLiteral("login_background");
    m_buttonMobile = new platform::Button(this);
    m_buttonMobile->setTitle(findPassword ? QStringLiteral("通过手机找回")
                                          : QStringLiteral("通过手机解锁"));
    m_buttonMobile->setTitleColor(Qt::white);
    connect(m_buttonMobile, &platform::Button::clicked, this,
            &FindPasswordViewController::clickButtonMobile);
    m_buttonEmail = new platform::Button(this);
    m_buttonEmail->setTitle(findPassword ? QStringLiteral("通过邮箱找回")
                                         : QStringLiteral("通过邮箱解锁"));
    m_buttonEmail->setTitleColor(Qt::white);
    connect(m_buttonEmail, &platform::Button::clicked, this,
            &FindPasswordViewController::clickButtonEmail);
    emit layoutChanged();
}

void FindPasswordViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void FindPasswordViewController::clickButtonMobile()
{
    push(new FindPasswordMobileViewController(m_viewType));
}

void FindPasswordViewController::clickButtonEmail()
{
    push(new FindPswByEmailViewController(m_viewType));
}

void FindPasswordViewController::push(platform::ViewController *next)
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->pushViewController(next, true);
    else
        delete next;
}
