#include "screens/account/AuthCodeFormViewController.h"

#include "platform/ui/Button.h"
#include "platform/ui/TextField.h"

AuthCodeFormViewController::AuthCodeFormViewController(const QString &viewFile, QObject *parent)
    : AccountFormViewController(viewFile, parent)
    , m_buttonAuthCode(new platform::Button(this))
    , m_buttonNext(new platform::Button(this))
{ }

void AuthCodeFormViewController::layoutAuthCode(platform::TextField *field,
                                                const QString &nextTitle)
{
    field->setPlaceholder(QStringLiteral("请输入短信验证码"));
    field->setKeyboardType(platform::TextField::NumberPad);
    layoutButton(m_buttonAuthCode, QStringLiteral("获取验证码"), [this] { clickButtonGetCode(); });
    layoutButton(m_buttonNext, nextTitle, [this] { clickButtonNext(); });
}
