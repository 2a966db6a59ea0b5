#include "screens/store/GoodsDetailViewController.h"

#include "platform/ui/NavigationController.h"
#include "screens/purchase/ComingSoonViewController.h"

// Sign-in from the bottom bar: a navigation stack presented over everything; the user stays on
// this page afterwards.
void GoodsDetailViewController::presentSignIn()
{
    auto *signIn = new ComingSoonViewController(QStringLiteral("登录"),
                                                QStringLiteral("登录功能即将开放"));
    presentViewController(new platform::NavigationController(signIn), true);
}

// The cart, opened from a detail page rather than as a tab root.
void GoodsDetailViewController::openCart()
{
    pushViewController(new ComingSoonViewController(QStringLiteral("购物车"),
                                                    QStringLiteral("购物车即将开放")));
}
