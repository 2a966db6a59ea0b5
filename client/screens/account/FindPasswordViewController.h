#pragma once

#include "screens/account/AccountFormViewController.h"

#include <QPointer>

namespace platform {
class Button;
}

// The choice of how to recover a forgotten password (`viewType` 0) or unlock an account that
// failed sign-ins locked (`viewType` 1): by mobile number or by e-mail. The switch goes on to the
// screen chosen.
class FindPasswordViewController : public AccountFormViewController
{
    Q_OBJECT
    Q_PROPERTY(qint64 viewType READ viewType CONSTANT)
    Q_PROPERTY(platform::Button *buttonMobile READ buttonMobile NOTIFY layoutChanged)
    Q_PROPERTY(platform::Button *buttonEmail READ buttonEmail NOTIFY layoutChanged)
public:
    enum : qint64 { FindPassword = 0, Unlock = 1 };

    explicit FindPasswordViewController(qint64 viewType = FindPassword, QObject *parent = nullptr);

    qint64 viewType() const { return m_viewType; }
    platform::Button *buttonMobile() const { return m_buttonMobile; }
    platform::Button *buttonEmail() const { return m_buttonEmail; }

    Q_INVOKABLE void clickButtonMobile();
    Q_INVOKABLE void clickButtonEmail();

protected:
    QString screenTitle() const override;
    void viewWillAppear(bool animated) override;
    void setLoadViewAction() override;

private:
    void push(platform::ViewController *next);

    qint64 m_viewType;
    QPointer<platform::Button> m_buttonMobile;
    QPointer<platform::Button> m_buttonEmail;
};
