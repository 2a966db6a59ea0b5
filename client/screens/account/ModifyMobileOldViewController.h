#pragma once

#include "screens/account/AccountFormViewController.h"

namespace platform {
class Button;
class Label;
class TextField;
} // namespace platform

// "短信验证", the first step of a change of number: an SMS code sent to the bound number and the
// current password prove the account holder; then the number to bind comes next.
class ModifyMobileOldViewController : public AccountFormViewController
{
    Q_OBJECT
    Q_PROPERTY(platform::Label *labelTip READ labelTip CONSTANT)
    Q_PROPERTY(platform::TextField *fieldNewPsw READ fieldNewPsw CONSTANT)
    Q_PROPERTY(platform::TextField *fieldPassword READ fieldPassword CONSTANT)
    Q_PROPERTY(platform::Button *buttonAuthCode READ buttonAuthCode CONSTANT)
    Q_PROPERTY(platform::Button *buttonNext READ buttonNext CONSTANT)
public:
    explicit ModifyMobileOldViewController(QObject *parent = nullptr);

    platform::Label *labelTip() const { return m_labelTip; }
    // The SMS code (the name is kept as the screen has always had it).
    platform::TextField *fieldNewPsw() const { return m_fieldNewPsw; }
    platform::TextField *fieldPassword() const { return m_fieldPassword; }
    platform::Button *buttonAuthCode() const { return m_buttonAuthCode; }
    platform::Button *buttonNext() const { return m_buttonNext; }

    // "已向手机138******00发送验证码!" for an 11-character number, else "无手机号".
    static QString tipForNumber(const QString &phoneNumber);

    Q_INVOKABLE void clickButtonGetCode();
    Q_INVOKABLE void clickButtonNext();

protected:
    QString screenTitle() const override;
    void setLoadViewAction() override;

private:
    QString phoneNumber() const;

    platform::Label *m_labelTip;
    platform::TextField *m_fieldNewPsw;
    platform::TextField *m_fieldPassword;
    platform::Button *m_buttonAuthCode;
    platform::Button *m_buttonNext;
};
