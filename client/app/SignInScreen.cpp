#include "app/SignInScreen.h"

#include "platform/ui/NavigationController.h"

#if __has_include("screens/account/NavRootViewController.h")
#include "screens/account/NavRootViewController.h"
#define TARVEL_HAS_SIGN_IN_SCREEN 1
#else
#include "app/Q9FatherViewController.h"
#endif

platform::NavigationController *SignInScreen::makeStack(int viewFather, LoginSuccess loginSuccess)
{
#ifdef TARVEL_HAS_SIGN_IN_SCREEN
    auto *screen = new NavRootViewController(viewFather, std::move(loginSuccess));
#else
    // Until the sign-in screen exists, a titled page holds its place.
    Q_UNUSED(viewFather)
    Q_UNUSED(loginSuccess)
    auto *screen = new Q9FatherViewController;
    screen->setTitle(QStringLiteral("登录"));
#endif
    return new platform::NavigationController(screen);
}
