#include "screens/purchase/PendingPaymentCheck.h"

#include "app/AppDelegate.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "screens/purchase/BuySuccessViewController.h"
#include "screens/purchase/ConfirmOrderViewController.h"
#include "screens/purchase/MyOrderViewController.h"
#include "service/ApplicationState.h"
#include "service/NetWorkHelper.h"
#include "service/OwnedGames.h"
#include "service/PendingPayment.h"
#include "util/NSStringUtils.h"
#include "util/ObjectDescription.h"

#include <QDebug>
#include <QPointer>

using platform::Hud;

namespace PendingPaymentCheck {

namespace {

QString text(const QVariant &value)
{
    return value.isValid() && !value.isNull() ? objectDescription(value) : QString();
}

Outcome show(platform::NavigationController *navigation, const QString &orderId,
             const QVariantMap &answer)
{
    if (NSStringUtils::intValue(text(answer.value(QStringLiteral("completed")))) != 0) {
        OwnedGames::shared().refresh();
        if (navigation)
            navigation->pushViewController(new BuySuccessViewController(answer), true);
        return Outcome::Paid;
    }
    if (text(answer.value(QStringLiteral("state"))) == QLatin1String("in_checkout")) {
        if (navigation)
            navigation->pushViewController(
                    new ConfirmOrderViewController({orderId},
                                                   ConfirmOrderViewController::ExistingOrder),
                    true);
        return Outcome::Unpaid;
    }
    if (navigation)
        navigation->pushViewController(MyOrderViewController::initWithFatherView(0), true);
    return Outcome::Closed;
}

} // namespace

void run(platform::NavigationController *navigation, std::function<void(Outcome)> done)
{
    const std::optional<PendingPayment::Record> pending = PendingPayment::current();
    // The store tells an order's state only to its owner: wait for a launch with someone signed in.
    if (!pending || !ApplicationState::shared().userLogin()) {
        if (done)
            done(Outcome::NothingPending);
        return;
    }
    const QString orderId = pending->orderId;
    QPointer<platform::NavigationController> target(navigation);
    NetWorkHelper::shareInstance()->queryOrderWithOrder_id(
            orderId,
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("获取订单状态..."), true);
            },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [target, orderId, done](const QVariant &data, const QVariant &) {
                PendingPayment::settle(orderId);
                qInfo().noquote() << objectDescription(data);
                const Outcome outcome = show(target, orderId, data.toMap());
                if (done)
                    done(outcome);
            },
            [orderId, done](const QVariant &, const QString &message, const QVariant &response) {
                if (!response.isValid()) {
                    if (done)
                        done(Outcome::Unanswered);
                    return;
                }
                // The store refused to tell (the order is gone, or another account's): that is
                // its answer too, with nothing for this customer to see.
                PendingPayment::settle(orderId);
                qInfo().noquote() << message;
                if (done)
                    done(Outcome::Refused);
            });
}

void runOnVisibleScreen()
{
    platform::ViewController *visible = AppDelegate::shared()->visibleViewController();
    run(visible ? visible->navigationController() : nullptr);
}

} // namespace PendingPaymentCheck
