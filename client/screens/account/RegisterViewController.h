#pragma once

#include "screens/account/AuthCodeFormViewController.h"
#include "screens/account/FoldingRowView.h"
#include "screens/account/ImageCodeButton.h"

#include <QString>
#include <QVariant>

#include <functional>

namespace platform {
class TextField;
} // namespace platform

// Registration, pushed by the sign-in screen, which hands over where the sign-in started
// (`viewFather`) and what to do after it (`myLoginSuccess`). One form registers an e-mail address
// (the account then waits for its activation mail) or a mobile number with its SMS code (the user
// is then signed in at once and the sign-in stack goes away).
class RegisterViewController : public AuthCodeFormViewController
{
    Q_OBJECT
    Q_PROPERTY(platform::TextField *fieldUser READ fieldUser CONSTANT)
    Q_PROPERTY(platform::TextField *fieldImageCode READ fieldImageCode CONSTANT)
    Q_PROPERTY(ImageCodeButton *imageCode READ imageCode CONSTANT)
    Q_PROPERTY(FoldingRowView *viewAuthCode READ viewAuthCode CONSTANT)
    Q_PROPERTY(platform::TextField *fieldAuthCode READ fieldAuthCode CONSTANT)
    Q_PROPERTY(platform::TextField *fieldPassword READ fieldPassword CONSTANT)
    Q_PROPERTY(platform::TextField *fieldPasswordAgain READ fieldPasswordAgain CONSTANT)
public:
    using LoginSuccess = std::function<void(qint64 viewFather)>;

    // The SMS row's full height: 8.75% of the 667-point screen.
    static constexpr qreal AuthCodeRowHeight = 667 * 0.0875;

    explicit RegisterViewController(QObject *parent = nullptr);

    qint64 viewFather() const { return m_viewFather; }
    void setViewFather(qint64 viewFather) { m_viewFather = viewFather; }
    LoginSuccess myLoginSuccess() const { return m_myLoginSuccess; }
    void setMyLoginSuccess(LoginSuccess loginSuccess)
    {
        m_myLoginSuccess = std::move(loginSuccess);
    }

    platform::TextField *fieldUser() const { return m_fieldUser; }
    platform::TextField *fieldImageCode() const { return m_fieldImageCode; }
    ImageCodeButton *imageCode() const { return m_imageCode; }
    FoldingRowView *viewAuthCode() const { return m_viewAuthCode; }
    platform::TextField *fieldAuthCode() const { return m_fieldAuthCode; }
    platform::TextField *fieldPassword() const { return m_fieldPassword; }
    platform::TextField *fieldPasswordAgain() const { return m_fieldPasswordAgain; }

    // Loads a new captcha picture (also the tap on the picture).
    Q_INVOKABLE void refreshData();
    Q_INVOKABLE void clickImageCode();
    void clickButtonGetCode() override;
    void clickButtonNext() override;
    // The account field lost the focus: the SMS row folds away for an e-mail address and comes
    // back for anything else.
    void textFieldDidEndEditing(platform::TextField *textField);

protected:
    QString screenTitle() const override;
    void viewWillAppear(bool animated) override;
    void setLoadViewAction() override;

private:
    void layoutFields();
    void registrationSucceeded();
    void registrationFailed(const QString &message);
    void signInAfterRegistration();
    void signInSucceeded(const QVariant &result);

    qint64 m_viewFather = 0;
    LoginSuccess m_myLoginSuccess;
    platform::TextField *m_fieldUser;
    platform::TextField *m_fieldImageCode;
    ImageCodeButton *m_imageCode;
    FoldingRowView *m_viewAuthCode;
    platform::TextField *m_fieldAuthCode;
    platform::TextField *m_fieldPassword;
    platform::TextField *m_fieldPasswordAgain;
};
