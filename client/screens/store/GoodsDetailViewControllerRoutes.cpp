#include "screens/store/GoodsDetailViewController.h"

#include "platform/ui/NavigationController.h"
#include "screens/account/NavRootViewController.h"
#include "screens/purchase/TabThreeViewController.h"

#include <QPointer>

namespace {
// Where a sign-in started, as the sign-in screen hands it back: a game's page.
constexpr int SignInFromGoodsDetail = 3;
// The cart opened from another screen rather than as a tab root.
constexpr int CartPushed = 1;
} // namespace

// Sign-in from the bottom bar: a navigation stack presented over everything; the user stays on
// this page afterwards, which shows the signed-in user's cart.
void GoodsDetailViewController::presentSignIn()
{
    QPointer<GoodsDetailViewController> self(this);
    auto *signIn = new NavRootViewController(SignInFromGoodsDetail, [self](qint64) {
        if (self)
            self->setRefleshDataAction();
    });
    presentViewController(new platform::NavigationController(signIn), true);
}

void GoodsDetailViewController::openCart()
{
    pushViewController(new TabThreeViewController(CartPushed));
}
