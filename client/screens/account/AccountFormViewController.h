#pragma once

#include "app/Q9FatherViewController.h"
#include "models/Object_User.h"
#include "service/ServiceCallbacks.h"

#include <QString>

#include <functional>
#include <optional>

namespace platform {
class Button;
class TextField;
} // namespace platform

// What the account forms share: the back item that pops, no right item, the picture behind the
// sign-in family of screens, the SMS-code row, the new-password pair, the signed-in user the
// security screens read and change, and the way their requests report (HUD texts with a black
// mask).
class AccountFormViewController : public Q9FatherViewController
{
    Q_OBJECT
    Q_PROPERTY(QString backgroundImage READ backgroundImage NOTIFY layoutChanged)
public:
    explicit AccountFormViewController(const QString &viewFile, QObject *parent = nullptr);

    // The picture name behind the form, empty until the view is laid out (and on screens without
    // one).
    QString backgroundImage() const { return m_backgroundImage; }

signals:
    void layoutChanged();

protected:
    // Hands the operation its four callbacks.
    using ServiceRequest = std::function<void(StartFn, EndFn, SuccessFn, FailureFn)>;

    void viewDidLoad() override;
    void setNavLeftAction() override;

    // The title this screen shows, set when its view loads.
    virtual QString screenTitle() const = 0;

    // The sign-in family's picture; layoutChanged tells the view once the rest is laid out.
    void setLoginBackground();
    // A button of the form: white title, `click` on a tap.
    void layoutButton(platform::Button *button, const QString &title, std::function<void()> click);
    // A new password (hidden) and its repeat (intended: shown as typed).
    static void layoutNewPassword(platform::TextField *password, platform::TextField *again);

    // Sends a code request with the progress, success and failure HUDs; a sent code starts the
    // countdown unless `startsCountdown` is false.
    static void requestAuthCode(const ServiceRequest &send, bool startsCountdown = true);
    // Why a new password and its repeat are refused, or an empty text.
    static QString newPasswordRefusal(const QString &password, const QString &again);
    // Resets the password of a mobile account; on success back to the first screen of the stack.
    void resetPassword(const QString &phoneNumber, const QString &imageCode,
                       const QString &authCode, const QString &password, const QString &again);

    static std::optional<Object_User> signedInUser();
    // A check that failed, or a refusal of the service, in the error HUD.
    static void showError(const QString &text);
    // A request's failure text as the user reads it.
    static void showFailure(const QString &message);
    static void showSuccess(const QString &text);
    static void showProgress(const QString &text);
    static void dismissProgress();
    // Back to the first screen of the stack, then the success HUD.
    void popToRootAndShow(const QString &success);
    // Back to the first screen of the stack.
    void popToRoot();

private:
    QString m_backgroundImage;
};
