// Cart, order and payment operations of NetWorkHelper. Every state change carries the signed-in
// user's token; signed out, none is sent and the service's refusal reaches FailureFn.
#include "service/NetWorkHelper.h"

void NetWorkHelper::getCartDataWithStartFn(const StartFn &startFn, const EndFn &endFn,
                                           const SuccessFn &successFn, const FailureFn &failureFn)
{
    getWithParams({}, apiUrl(QStringLiteral("/cart.json")), startFn, endFn, successFn, failureFn);
}

void NetWorkHelper::removeGoodsFromCartWithGameIds(const QString &gameIds, const StartFn &startFn,
                                                   const EndFn &endFn, const SuccessFn &successFn,
                                                   const FailureFn &failureFn)
{
    RequestParams params;
    appendToken(params, TokenRule::Always);
    params.insert(QStringLiteral("game_ids"), gameIds);
    responseWithParams(params, apiUrl(QStringLiteral("/cart/remove.json")), {}, startFn, endFn,
                       successFn, failureFn);
}

void NetWorkHelper::addGoodsToCartWithGameIds(const QString &gameId, const StartFn &startFn,
                                              const EndFn &endFn, const SuccessFn &successFn,
                                              const FailureFn &failureFn)
{
    RequestParams params;
    params.insert(QStringLiteral("game_id"), gameId);
    getWithParams(params, apiUrl(QStringLiteral("/cart/add.json")), startFn, endFn, successFn,
                  failureFn);
}

void NetWorkHelper::createOrderFromCartWithGameids(const QStringList &gameIds,
                                                   const StartFn &startFn, const EndFn &endFn,
                                                   const SuccessFn &successFn,
                                                   const FailureFn &failureFn)
{
    RequestParams params;
    appendToken(params, TokenRule::Always);
    params.insert(QStringLiteral("game_ids"), gameIds);
    responseWithParams(params, apiUrl(QStringLiteral("/cart/submit.json")), {}, startFn, endFn,
                       successFn, failureFn);
}

void NetWorkHelper::createOrderOneKeyWithGameId(const QString &gameId, const StartFn &startFn,
                                                const EndFn &endFn, const SuccessFn &successFn,
                                                const FailureFn &failureFn)
{
    RequestParams params;
    appendToken(params, TokenRule::Always);
    params.insert(QStringLiteral("game_id"), gameId);
    responseWithParams(params, apiUrl(QStringLiteral("/orders.json")), {}, startFn, endFn,
                       successFn, failureFn);
}

void NetWorkHelper::getOrderDetailWithOrderUrl(const QString &orderUrl, const StartFn &startFn,
                                               const EndFn &endFn, const SuccessFn &successFn,
                                               const FailureFn &failureFn)
{
    RequestParams params;
    params.insert(QStringLiteral("from"), QStringLiteral("ios"));
    getWithParams(params, apiUrl(QStringLiteral("%1.json").arg(orderUrl)), startFn, endFn,
                  successFn, failureFn);
}

void NetWorkHelper::getThirdPaymentDataWithPaymentMethod(const QString &paymentMethod,
                                                         const QString &orderId,
                                                         const QString &openID,
                                                         const StartFn &startFn, const EndFn &endFn,
                                                         const SuccessFn &successFn,
                                                         const FailureFn &failureFn)
{
    RequestParams params;
    appendToken(params, TokenRule::Always);
    params.insert(QStringLiteral("from"), QStringLiteral("ios"));
    params.insert(QStringLiteral("payment_method"), paymentMethod);
    params.insert(QStringLiteral("order_id"), orderId);
    params.insert(QStringLiteral("openID"), openID);
    responseWithParams(params, apiUrl(QStringLiteral("/orders/pay.json")), {}, startFn, endFn,
                       successFn, failureFn);
}

void NetWorkHelper::useCouponWithItem_type(const QString &itemType, const QString &code,
                                           const QString &orderId, const StartFn &startFn,
                                           const EndFn &endFn, const SuccessFn &successFn,
                                           const FailureFn &failureFn)
{
    RequestParams params;
    appendToken(params, TokenRule::Always);
    params.insert(QStringLiteral("item_type"), itemType);
    params.insert(QStringLiteral("code"), code);
    responseWithParams(params, apiUrl(QStringLiteral("/orders/%1/line_items.json").arg(orderId)),
                       {}, startFn, endFn, successFn, failureFn);
}

// Detaching is a POST that names its verb in "_method"; no HTTP DELETE goes out.
void NetWorkHelper::deleteCouponWithOrder_id(const QString &orderId, const QString &orderLineItemId,
                                             const QString &method, const StartFn &startFn,
                                             const EndFn &endFn, const SuccessFn &successFn,
                                             const FailureFn &failureFn)
{
    RequestParams params;
    appendToken(params, TokenRule::Always);
    params.insert(QStringLiteral("_method"), method);
    const QString path
            = QStringLiteral("/orders/%1/line_items/%2.json").arg(orderId, orderLineItemId);
    responseWithParams(params, apiUrl(path), {}, startFn, endFn, successFn, failureFn);
}

void NetWorkHelper::queryOrderWithOrder_id(const QString &orderId, const StartFn &startFn,
                                           const EndFn &endFn, const SuccessFn &successFn,
                                           const FailureFn &failureFn)
{
    getWithParams({}, apiUrl(QStringLiteral("/orders/%1/complete.json").arg(orderId)), startFn,
                  endFn, successFn, failureFn);
}

void NetWorkHelper::getMyOrderListWithType(const QString &type, const QString &page,
                                           const StartFn &startFn, const EndFn &endFn,
                                           const SuccessFn &successFn, const FailureFn &failureFn)
{
    RequestParams params;
    params.insert(QStringLiteral("type"), type);
    params.insert(QStringLiteral("page"), page);
    getWithParams(params, apiUrl(QStringLiteral("/orders.json")), startFn, endFn, successFn,
                  failureFn);
}

void NetWorkHelper::cancleMyOrderListWithOrderID(const QString &orderId, const StartFn &startFn,
                                                 const EndFn &endFn, const SuccessFn &successFn,
                                                 const FailureFn &failureFn)
{
    RequestParams params;
    appendToken(params, TokenRule::Always);
    responseWithParams(params, apiUrl(QStringLiteral("/orders/%1/cancel.json").arg(orderId)), {},
                       startFn, endFn, successFn, failureFn);
}

void NetWorkHelper::getMyGamesWithStartFn(const StartFn &startFn, const EndFn &endFn,
                                          const SuccessFn &successFn, const FailureFn &failureFn)
{
    getWithParams({}, apiUrl(QStringLiteral("/home/games.json")), startFn, endFn, successFn,
                  failureFn);
}
