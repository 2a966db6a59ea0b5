#pragma once

#include "screens/account/AccountFormViewController.h"

namespace platform {
class Button;
class TextField;
} // namespace platform

// An account form that asks for an SMS code (`buttonAuthCode`) and then goes on (`buttonNext`);
// each screen sends its own code request and checks its own fields.
class AuthCodeFormViewController : public AccountFormViewController
{
    Q_OBJECT
    Q_PROPERTY(platform::Button *buttonAuthCode READ buttonAuthCode CONSTANT)
    Q_PROPERTY(platform::Button *buttonNext READ buttonNext CONSTANT)
public:
    platform::Button *buttonAuthCode() const { return m_buttonAuthCode; }
    platform::Button *buttonNext() const { return m_buttonNext; }

    Q_INVOKABLE virtual void clickButtonGetCode() = 0;
    Q_INVOKABLE virtual void clickButtonNext() = 0;

protected:
    AuthCodeFormViewController(const QString &viewFile, QObject *parent);

    // The SMS code's field beside the code button, and the button that goes on titled `nextTitle`.
    void layoutAuthCode(platform::TextField *field, const QString &nextTitle);

private:
    platform::Button *m_buttonAuthCode;
    platform::Button *m_buttonNext;
};
