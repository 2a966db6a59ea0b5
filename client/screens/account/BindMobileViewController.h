#pragma once

#include "screens/account/AuthCodeFormViewController.h"

namespace platform {
class TextField;
} // namespace platform

// "绑定手机": the number to bind, its SMS code and the current password. Reached directly when
// the account has no number, or after the old number was proven (ModifyMobileOldViewController).
class BindMobileViewController : public AuthCodeFormViewController
{
    Q_OBJECT
    Q_PROPERTY(platform::TextField *fieldMobile READ fieldMobile CONSTANT)
    Q_PROPERTY(platform::TextField *fieldAuthCode READ fieldAuthCode CONSTANT)
    Q_PROPERTY(platform::TextField *fieldPassword READ fieldPassword CONSTANT)
public:
    explicit BindMobileViewController(QObject *parent = nullptr);

    platform::TextField *fieldMobile() const { return m_fieldMobile; }
    platform::TextField *fieldAuthCode() const { return m_fieldAuthCode; }
    platform::TextField *fieldPassword() const { return m_fieldPassword; }

    void clickButtonGetCode() override;
    void clickButtonNext() override;

protected:
    QString screenTitle() const override;

private:
    platform::TextField *m_fieldMobile;
    platform::TextField *m_fieldAuthCode;
    platform::TextField *m_fieldPassword;
};
