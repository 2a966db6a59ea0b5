#pragma once

#include "screens/account/AccountFormViewController.h"

namespace platform {
class Button;
class TextField;
} // namespace platform

// "绑定邮箱": the address to bind and the current password.
class BindEmailViewController : public AccountFormViewController
{
    Q_OBJECT
    Q_PROPERTY(platform::TextField *fieldEmail READ fieldEmail CONSTANT)
    Q_PROPERTY(platform::TextField *fieldPassword READ fieldPassword CONSTANT)
    Q_PROPERTY(platform::Button *buttonNext READ buttonNext CONSTANT)
public:
    explicit BindEmailViewController(QObject *parent = nullptr);

    platform::TextField *fieldEmail() const { return m_fieldEmail; }
    platform::TextField *fieldPassword() const { return m_fieldPassword; }
    platform::Button *buttonNext() const { return m_buttonNext; }

    Q_INVOKABLE void clickButtonNext();

protected:
    QString screenTitle() const override;

private:
    platform::TextField *m_fieldEmail;
    platform::TextField *m_fieldPassword;
    platform::Button *m_buttonNext;
};
