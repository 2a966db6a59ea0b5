#pragma once

#include "screens/account/AccountFormViewController.h"

#include <QPointer>
#include <QString>
#include <QVariant>

#include <functional>

namespace platform {
class Button;
class TextField;
} // namespace platform

// The sign-in screen. Whoever needs a signed-in user creates it with initWithViewFather, makes it
// the root of a new navigation stack and presents that; after a successful sign-in the screen
// hands `viewFather` back to `myLoginSuccess` and dismisses the stack.
class NavRootViewController : public AccountFormViewController
{
    Q_OBJECT
    Q_PROPERTY(QString imageHead READ imageHead NOTIFY layoutChanged)
    Q_PROPERTY(platform::TextField *fieldUser READ fieldUser CONSTANT)
    Q_PROPERTY(platform::TextField *fieldPassword READ fieldPassword CONSTANT)
    Q_PROPERTY(platform::Button *buttonLogin READ buttonLogin CONSTANT)
    Q_PROPERTY(platform::Button *buttonRegister READ buttonRegister CONSTANT)
    Q_PROPERTY(platform::Button *buttonForget READ buttonForget CONSTANT)
public:
    using LoginSuccess = std::function<void(qint64 viewFather)>;

    static const QString usernameKey; // "username"

    explicit NavRootViewController(QObject *parent = nullptr);
    // The same as initWithViewFather on a new screen.
    NavRootViewController(qint64 viewFather, LoginSuccess loginSuccess, QObject *parent = nullptr);
    // Keeps the block and the number only when a block is given; returns this screen.
    NavRootViewController *initWithViewFather(qint64 viewFather, LoginSuccess loginSuccess);

    qint64 viewFather() const { return m_viewFather; }
    LoginSuccess myLoginSuccess() const { return m_myLoginSuccess; }

    // Picture names, empty until the view is laid out.
    QString imageHead() const { return m_imageHead; }
    platform::TextField *fieldUser() const { return m_fieldUser; }
    platform::TextField *fieldPassword() const { return m_fieldPassword; }
    platform::Button *buttonLogin() const { return m_buttonLogin; }
    platform::Button *buttonRegister() const { return m_buttonRegister; }
    platform::Button *buttonForget() const { return m_buttonForget; }

    Q_INVOKABLE void clickButtonLogin();
    Q_INVOKABLE void clickButtonRegister();
    Q_INVOKABLE void clickButtonForget();
    // Shows or hides the password's characters.
    Q_INVOKABLE void clickButtonEye();
    // Refreshes the stored cart count from the cart_num cookie of a fresh cart read.
    static void getCartNum();

protected:
    QString screenTitle() const override;
    void viewWillAppear(bool animated) override;
    void setLoadViewAction() override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

private:
    void layoutFields();
    void signInSucceeded(const QVariant &result);
    void signInFailed(const QString &message, const QVariant &response);
    void pushFindPassword(qint64 viewType);

    qint64 m_viewFather = 0;
    LoginSuccess m_myLoginSuccess;
    QString m_imageHead;
    platform::TextField *m_fieldUser;
    platform::TextField *m_fieldPassword;
    platform::Button *m_buttonLogin;
    platform::Button *m_buttonRegister;
    platform::Button *m_buttonForget;
};
