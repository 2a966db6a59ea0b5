#include "screens/account/RecoveryFormViewController.h"

#include "platform/ui/Button.h"
#include "platform/ui/TextField.h"
#include "screens/account/ImageCodeButton.h"

RecoveryFormViewController::RecoveryFormViewController(qint64 viewType,
                                                       const QString &userPlaceholder,
                                                       const QString &nextTitle, QObject *parent)
    : AccountFormViewController(QStringLiteral("RecoveryFormView.qml"), parent)
    , m_viewType(viewType)
    , m_userPlaceholder(userPlaceholder)
    , m_nextTitle(nextTitle)
    , m_fieldUser(new platform::TextField(this))
    , m_fieldAuthCode(new platform::TextField(this))
    , m_imageCode(new ImageCodeButton(this))
    , m_buttonNext(new platform::Button(this))
{ }

QString RecoveryFormViewController::screenTitle() const
{
    return QStringLiteral("找回密码");
}

void RecoveryFormViewController::setLoadViewAction()
{
    setLoginBackground();
    m_fieldUser->setPlaceholder(m_userPlaceholder);
    m_fieldAuthCode->setPlaceholder(QStringLiteral("请输入验证码"));
    connect(m_imageCode, &platform::Button::clicked, this,
            &RecoveryFormViewController::clickImageCode);
    layoutButton(m_buttonNext, m_nextTitle, [this] { clickButtonNext(); });
    emit layoutChanged();
    refreshData();
}

void RecoveryFormViewController::refreshData()
{
    m_imageCode->refreshData();
}

void RecoveryFormViewController::clickImageCode()
{
    refreshData();
}
