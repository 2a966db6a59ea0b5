#pragma once

#include "screens/account/AccountFormViewController.h"

#include <QString>

namespace platform {
class Button;
class TextField;
} // namespace platform

// A stand-alone form that sets a new password for a mobile account, given the number, the captcha
// text and the SMS code by whoever opens it. No flow of the app opens it today.
class SetNewPasswordViewController : public AccountFormViewController
{
    Q_OBJECT
    Q_PROPERTY(platform::TextField *fieldPassword READ fieldPassword CONSTANT)
    Q_PROPERTY(platform::TextField *fieldPasswordAgain READ fieldPasswordAgain CONSTANT)
    Q_PROPERTY(platform::Button *buttonNext READ buttonNext CONSTANT)
public:
    explicit SetNewPasswordViewController(QObject *parent = nullptr);

    QString strPhoneNum() const { return m_strPhoneNum; }
    void setStrPhoneNum(const QString &phoneNum) { m_strPhoneNum = phoneNum; }
    QString strImageCode() const { return m_strImageCode; }
    void setStrImageCode(const QString &imageCode) { m_strImageCode = imageCode; }
    QString strAuthCode() const { return m_strAuthCode; }
    void setStrAuthCode(const QString &authCode) { m_strAuthCode = authCode; }

    platform::TextField *fieldPassword() const { return m_fieldPassword; }
    platform::TextField *fieldPasswordAgain() const { return m_fieldPasswordAgain; }
    platform::Button *buttonNext() const { return m_buttonNext; }

    Q_INVOKABLE void clickButtonNext();

protected:
    QString screenTitle() const override;
    void setLoadViewAction() override;

private:
    QString m_strPhoneNum;
    QString m_strImageCode;
    QString m_strAuthCode;
    platform::TextField *m_fieldPassword;
    platform::TextField *m_fieldPasswordAgain;
    platform::Button *m_buttonNext;
};
