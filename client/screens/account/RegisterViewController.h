#pragma once

#include "screens/account/ComingSoonViewController.h"

#include <functional>

// Registration, opened from the sign-in screen, which hands over where the sign-in started and
// what to do after it, so that a registration that signs the user in completes the same way.
// The form itself is not in the app yet; the page says so.
class RegisterViewController : public ComingSoonViewController
{
    Q_OBJECT
public:
    using LoginSuccess = std::function<void(qint64 viewFather)>;

    explicit RegisterViewController(QObject *parent = nullptr);

    qint64 viewFather() const { return m_viewFather; }
    void setViewFather(qint64 viewFather) { m_viewFather = viewFather; }
    LoginSuccess myLoginSuccess() const { return m_myLoginSuccess; }
    void setMyLoginSuccess(LoginSuccess loginSuccess)
    {
        m_myLoginSuccess = std::move(loginSuccess);
    }

protected:
    QString screenTitle() const override;
    QString screenNote() const override;

private:
    qint64 m_viewFather = 0;
    LoginSuccess m_myLoginSuccess;
};
