#include "screens/account/AccountFormViewController.h"

#include "app/AppDelegate.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "screens/account/FailureMessage.h"

using platform::Hud;

AccountFormViewController::AccountFormViewController(const QString &viewFile, QObject *parent)
    : Q9FatherViewController(parent)
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/account/") + viewFile));
}

void AccountFormViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(screenTitle());
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void AccountFormViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

std::optional<Object_User> AccountFormViewController::signedInUser()
{
    return AppDelegate::shared()->userLogin();
}

void AccountFormViewController::showError(const QString &text)
{
    Hud::shared().showErrorWithStatus(text, true);
}

// The service's field refusals arrive as printed descriptions whose "message" and "human_name"
// pieces make the sentence; a failure that is already a sentence (a network or session error)
// is shown as it is rather than as an empty HUD.
void AccountFormViewController::showFailure(const QString &message)
{
    Hud::shared().showErrorWithStatus(FailureMessage::readable(message), true);
}

void AccountFormViewController::showSuccess(const QString &text)
{
    Hud::shared().showSuccessWithStatus(text, true);
}

void AccountFormViewController::showProgress(const QString &text)
{
    Hud::shared().showWithStatus(text, true);
}

void AccountFormViewController::dismissProgress()
{
    Hud::shared().dismiss();
}

void AccountFormViewController::popToRootAndShow(const QString &success)
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popToRootViewController(true);
    showSuccess(success);
}
