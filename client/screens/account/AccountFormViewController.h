#pragma once

#include "app/Q9FatherViewController.h"
#include "models/Object_User.h"

#include <QString>

#include <optional>

// What the security sub-screens share: the back item that pops, no right item, the signed-in user
// they read and change, and the way their requests report (HUD texts with a black mask).
class AccountFormViewController : public Q9FatherViewController
{
    Q_OBJECT
public:
    explicit AccountFormViewController(const QString &viewFile, QObject *parent = nullptr);

protected:
    void viewDidLoad() override;
    void setNavLeftAction() override;

    // The title this screen shows, set when its view loads.
    virtual QString screenTitle() const = 0;

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
};
