#pragma once

#include "screens/account/AccountFormViewController.h"

#include <QString>

namespace platform {
class Button;
class Label;
class TextField;
} // namespace platform

// The SMS step of password recovery (`viewType` 0: the code and a new password) and of unlocking
// (`viewType` 1: the code only). The presenter sets the mobile number and the captcha text the user
// typed on the screen before; both successes go back to the sign-in screen.
class MessageCheckingViewController : public AccountFormViewController
{
    Q_OBJECT
    Q_PROPERTY(qint64 viewType READ viewType CONSTANT)
    Q_PROPERTY(platform::Label *labelTitle READ labelTitle CONSTANT)
    Q_PROPERTY(platform::TextField *fieldAuthCode READ fieldAuthCode CONSTANT)
    Q_PROPERTY(platform::Button *buttonAuthCode READ buttonAuthCode CONSTANT)
    Q_PROPERTY(platform::TextField *fieldPassword READ fieldPassword CONSTANT)
    Q_PROPERTY(platform::TextField *fieldPasswordAgain READ fieldPasswordAgain CONSTANT)
    Q_PROPERTY(platform::Button *buttonNext READ buttonNext CONSTANT)
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
    platform::Button *buttonAuthCode() const { return m_buttonAuthCode; }
    platform::TextField *fieldPassword() const { return m_fieldPassword; }
    platform::TextField *fieldPasswordAgain() const { return m_fieldPasswordAgain; }
    platform::Button *buttonNext() const { return m_buttonNext; }

    // The number as the title shows it: the six characters from the fourth on become "******".
    static QString maskedPhoneNumber(const QString &phoneNum);

    Q_INVOKABLE void clickButtonGetCode();
    Q_INVOKABLE void clickButtonNext();

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
    platform::Button *m_buttonAuthCode;
    platform::TextField *m_fieldPassword;
    platform::TextField *m_fieldPasswordAgain;
    platform::Button *m_buttonNext;
};
