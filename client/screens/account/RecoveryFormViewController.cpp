#include "screens/account/RecoveryFormViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Button.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TextField.h"
#include "screens/account/ImageCodeButton.h"

RecoveryFormViewController::RecoveryFormViewController(qint64 viewType,
                                                       const QString &userPlaceholder,
                                                       const QString &nextTitle, QObject *parent)
    : Q9FatherViewController(parent)
    , m_viewType(viewType)
    , m_userPlaceholder(userPlaceholder)
    , m_nextTitle(nextTitle)
    , m_fieldUser(new platform::TextField(this))
    , m_fieldAuthCode(new platform::TextField(this))
    , m_imageCode(new ImageCodeButton(this))
    , m_buttonNext(new platform::Button(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/account/RecoveryFormView.qml")));
}

void RecoveryFormViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("找回密码"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void RecoveryFormViewController::setLoadViewAction()
{
    m_backgroundImage = QStringLiteral("login_background");
    m_fieldUser->setPlaceholder(m_userPlaceholder);
    m_fieldAuthCode->setPlaceholder(QStringLiteral("请输入验证码"));
    connect(m_imageCode, &platform::Button::clicked, this,
            &RecoveryFormViewController::clickImageCode);
    m_buttonNext->setTitle(m_nextTitle);
    m_buttonNext->setTitleColor(Qt::white);
    connect(m_buttonNext, &platform::Button::clicked, this,
            &RecoveryFormViewController::clickButtonNext);
    emit layoutChanged();
    refreshData();
}

void RecoveryFormViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void RecoveryFormViewController::refreshData()
{
    m_imageCode->refreshData();
}

void RecoveryFormViewController::clickImageCode()
{
    refreshData();
}

void RecoveryFormViewController::popToSignIn()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popToRootViewController(true);
}
