#include "screens/account/FindPasswordViewController.h"

#include "platform/ui/Button.h"
#include "platform/ui/NavigationController.h"
#include "screens/account/FindPasswordMobileViewController.h"
#include "screens/account/FindPswByEmailViewController.h"

FindPasswordViewController::FindPasswordViewController(qint64 viewType, QObject *parent)
    : AccountFormViewController(QStringLiteral("FindPasswordView.qml"), parent)
    , m_viewType(viewType)
{ }

QString FindPasswordViewController::screenTitle() const
{
    return m_viewType == FindPassword ? QStringLiteral("找回方式") : QStringLiteral("解锁方式");
}

void FindPasswordViewController::viewWillAppear(bool animated)
{
    Q9FatherViewController::viewWillAppear(animated);
    setNavigationBarTransparent(true);
}

void FindPasswordViewController::setLoadViewAction()
{
    const bool findPassword = m_viewType == FindPassword;
    setLoginBackground();
    m_buttonMobile = new platform::Button(this);
    layoutButton(m_buttonMobile,
                 findPassword ? QStringLiteral("通过手机找回") : QStringLiteral("通过手机解锁"),
                 [this] { clickButtonMobile(); });
    m_buttonEmail = new platform::Button(this);
    layoutButton(m_buttonEmail,
                 findPassword ? QStringLiteral("通过邮箱找回") : QStringLiteral("通过邮箱解锁"),
                 [this] { clickButtonEmail(); });
    emit layoutChanged();
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
