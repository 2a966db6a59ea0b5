#pragma once

#include <functional>

namespace platform {
class NavigationController;
}

// After a launch: the payment the app was closed in the middle of (PendingPayment) is asked of
// the store, and its answer alone decides what the customer sees: the purchase result of a paid
// order, the order screen of one still unpaid, or the order history for one the store closed.
// Without an answer the order stays remembered for the next launch.
namespace PendingPaymentCheck {

enum class Outcome {
    NothingPending, // no remembered order, or nobody signed in to ask for
    Paid, // the purchase result is shown
    Unpaid, // the order screen of the unpaid order is shown
    Closed, // neither paid nor payable (cancelled): the order history is shown
    Refused, // the store does not know the order for this account: forgotten, nothing shown
    Unanswered, // the store could not be reached; the order stays remembered
};

// Asks about the remembered order and shows the result on `navigation`; `done` hears the outcome.
void run(platform::NavigationController *navigation,
         std::function<void(Outcome)> done = std::function<void(Outcome)>());
// The same on the navigation stack of the screen in front of the application's window.
void runOnVisibleScreen();

} // namespace PendingPaymentCheck
