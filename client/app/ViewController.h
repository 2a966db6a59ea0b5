#pragma once

#include "platform/ui/ViewController.h"

#include <QString>

// The root controller installed at launch. Once its view has loaded it puts the tab bar in its
// place and restores a remembered sign-in. The other roots (sign-in, sliding panel) and the user
// guide stay available as class operations.
//
// Not to be confused with platform::ViewController, the base of every controller. It has no
// meta-object of its own on purpose: the QML type registration knows the base by the same short
// name and would take this class for it.
class ViewController : public platform::ViewController
{
public:
    explicit ViewController(QObject *parent = nullptr);

    // Four navigation stacks (home, cart, my page, messages) under an ICTabBarController, made
    // the window's root.
    static void goForwardToTabBar();
    // A stored user with an account id becomes the signed-in user, the stored cookies go back
    // into the cookie store and the tab bar is rebuilt; anything else stays signed out.
    static void loginSystemByLocal();
    // The sign-in screen in a navigation stack as the window's root.
    static void goForwardToNavRoot();
    // The sliding-panel root: MainViewController in a navigation stack over the left and right
    // panels.
    static void goForwardToSliderPanel();
    // Presents the user guide over the root, once per app version.
    static void goForwardToUserGuide();
    // The defaults key remembering that the guide was shown for `version`.
    static QString userGuideFlagKey(const QString &version);
    static QString currentVersion();

protected:
    void viewDidLoad() override;
};
