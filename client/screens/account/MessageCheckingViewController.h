#pragma once

#include "screens/account/AuthCodeFormViewController.h"

#include <QString>

namespace platform {
class Label;
class TextField;
} // namespace platform

// The SMS step of password recovery (`viewType` 0: the code and a new password) and of unlocking
// (`viewType` 1: the code only). The presenter sets the mobile number and the captcha text the user
// typed on the screen before; both successes go back to the sign-in screen.
class MessageCheckingViewController : public AuthCodeFormViewController
{
    Q_OBJECT
    Q_PROPERTY(qint64 viewType READ viewType CONSTANT)
    Q_PROPERTY(platform::Label *labelTitle READ labelTitle CONSTANT)
    Q_PROPERTY(platform::TextField *fieldAuthCode READ fieldAuthCode CONSTANT)
    Q_PROPERTY(platform::TextField *fieldPassword READ fieldPassword CONSTANT)
    Q_PROPERTY(platform::TextField *fieldPasswordAgain READ fieldPasswordAgain CONSTANT)
public:
    enum : qint64 { FindPassword = 0, Unlock = 1 };

    explicit MessageCheckingViewController(qint64 viewType = FindPassword,
                                           QObject *parent = nullptr);

    QString phoneNum() const { return m_phoneNum; }
    void setPhoneNum(const QString &phoneNum) { m_phoneNum = phoneNum; }
    QString strImageCode() const { return m_strImageCode; }
    void setStrImageCode(const QString &imageCode) { m_strImageCode = imageCode; }
    qint64 viewType() const { return m_viewType; }

    platform::Label *labelTitle() const { return m_labelTitle; }
    platform::TextField *fieldAuthCode() const { return m_fieldAuthCode; }
    platform::TextField *fieldPassword() const { return m_fieldPassword; }
    platform::TextField *fieldPasswordAgain() const { return m_fieldPasswordAgain; }

    // The number as the title shows it: the six characters from the fourth on become "******".
    static QString maskedPhoneNumber(const QString &phoneNum);

    void clickButtonGetCode() override;
    void clickButtonNext() override;

protected:
    QString screenTitle() const override;
    void setLoadViewAction() override;
    void setRefleshDataAction() override;

private:
    void layoutFields();
    void setNewPassword();
    void unlockAccount();

    qint64 m_viewType;
    QString m_phoneNum;
    QString m_strImageCode;
    platform::Label *m_labelTitle;
    platform::TextField *m_fieldAuthCode;
    platform::TextField *m_fieldPassword;
    platform::TextField *m_fieldPasswordAgain;
};
