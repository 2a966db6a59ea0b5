#pragma once

#include "screens/account/AccountFormViewController.h"

namespace platform {
class Button;
class TextField;
} // namespace platform

// "密码修改": the current password, the new one twice, and the save button. The screen checks
// only that nothing is empty and that the two new ones agree; the service judges the rest.
class ModifyPasswordViewController : public AccountFormViewController
{
    Q_OBJECT
    Q_PROPERTY(platform::TextField *fieldOldPassword READ fieldOldPassword CONSTANT)
    Q_PROPERTY(platform::TextField *fieldNewPassword READ fieldNewPassword CONSTANT)
    Q_PROPERTY(platform::TextField *fieldNewPasswordAgain READ fieldNewPasswordAgain CONSTANT)
    Q_PROPERTY(platform::Button *buttonSave READ buttonSave CONSTANT)
public:
    explicit ModifyPasswordViewController(QObject *parent = nullptr);

    platform::TextField *fieldOldPassword() const { return m_fieldOldPassword; }
    platform::TextField *fieldNewPassword() const { return m_fieldNewPassword; }
    platform::TextField *fieldNewPasswordAgain() const { return m_fieldNewPasswordAgain; }
    platform::Button *buttonSave() const { return m_buttonSave; }

    Q_INVOKABLE void clickButtonSave();

protected:
    QString screenTitle() const override;

private:
    platform::TextField *m_fieldOldPassword;
    platform::TextField *m_fieldNewPassword;
    platform::TextField *m_fieldNewPasswordAgain;
    platform::Button *m_buttonSave;
};
