#pragma once

#include "screens/account/AuthCodeFormViewController.h"

namespace platform {
class Label;
class TextField;
} // namespace platform

// "短信验证", the first step of a change of number: an SMS code sent to the bound number and the
// current password prove the account holder; then the number to bind comes next.
class ModifyMobileOldViewController : public AuthCodeFormViewController
{
    Q_OBJECT
    Q_PROPERTY(platform::Label *labelTip READ labelTip CONSTANT)
    Q_PROPERTY(platform::TextField *fieldNewPsw READ fieldNewPsw CONSTANT)
    Q_PROPERTY(platform::TextField *fieldPassword READ fieldPassword CONSTANT)
public:
    explicit ModifyMobileOldViewController(QObject *parent = nullptr);

    platform::Label *labelTip() const { return m_labelTip; }
    // The SMS code (the name is kept as the screen has always had it).
    platform::TextField *fieldNewPsw() const { return m_fieldNewPsw; }
    platform::TextField *fieldPassword() const { return m_fieldPassword; }

    // "已向手机138******00发送验证码!" for an 11-character number, else "无手机号".
    static QString tipForNumber(const QString &phoneNumber);

    void clickButtonGetCode() override;
    void clickButtonNext() override;

protected:
    QString screenTitle() const override;
    void setLoadViewAction() override;

private:
    QString phoneNumber() const;

    platform::Label *m_labelTip;
    platform::TextField *m_fieldNewPsw;
    platform::TextField *m_fieldPassword;
};
