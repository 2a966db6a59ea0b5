#pragma once

#include <functional>

namespace platform {
class NavigationController;
}

// The sign-in screen (NavRootViewController) as whoever needs a signed-in user shows it: the root
// of a fresh navigation stack. `viewFather` says where the sign-in started; `loginSuccess` gets it
// back after a successful sign-in (an empty function is not called).
class SignInScreen
{
public:
    using LoginSuccess = std::function<void(int viewFather)>;

    SignInScreen() = delete;
    static platform::NavigationController *makeStack(int viewFather, LoginSuccess loginSuccess);
};
