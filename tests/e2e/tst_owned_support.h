#pragma once

// Shared by the owned-marks and interrupted-payment tests: store calls run to their end, what the
// store says the demo account owns, and buying a game past the app (as from another device).

#include "tst_kits_support.h"

#include "platform/kits/SandboxClient.h"
#include "platform/ui/RowModel.h"
#include "service/OwnedGames.h"

#include <QJsonObject>
#include <QSet>

namespace ownedtest {

using kitstest::StoreAnswer;
using kitstest::waitFor;

// The ids the store lists as owned by the signed-in account, sorted.
inline QStringList ownedAtTheStore()
{
    const StoreAnswer answer = waitFor([](const SuccessFn &ok, const FailureFn &failed) {
        NetWorkHelper::shareInstance()->getMyGamesWithStartFn({}, {}, ok, failed);
    });
    QStringList ids;
    for (const QVariant &game : answer.data.toMap().value(QStringLiteral("games")).toList())
        ids.append(game.toMap().value(QStringLiteral("gameId")).toString());
    ids.sort();
    return ids;
}

// The first page of one of the store's lists.
inline QStringList catalogueIds(const QString &type = QStringLiteral("latest"),
                                const QString &page = QStringLiteral("1"))
{
    const StoreAnswer answer = waitFor([&](const SuccessFn &ok, const FailureFn &failed) {
        NetWorkHelper::shareInstance()->getGameListWithType(type, page, {}, {}, ok, failed);
    });
    QStringList ids;
    for (const QVariant &game : answer.data.toList())
        ids.append(game.toMap().value(QStringLiteral("id")).toString());
    return ids;
}

inline QVariantMap detailOf(const QString &gameId)
{
    return waitFor([&](const SuccessFn &ok, const FailureFn &failed) {
               NetWorkHelper::shareInstance()->getGameDetailWithGameId(gameId, QStringLiteral("1"),
                                                                       {}, {}, ok, failed);
           })
            .data.toMap();
}

// Orders `gameId` for the signed-in account and asks the store for its WeChat prepay. Answers
// the order id and the prepay id, or empty texts.
inline std::pair<QString, QString> orderAndPrepay(const QString &gameId)
{
    const StoreAnswer made = waitFor([&](const SuccessFn &ok, const FailureFn &failed) {
        NetWorkHelper::shareInstance()->createOrderOneKeyWithGameId(gameId, {}, {}, ok, failed);
    });
    const QString orderId = made.data.toMap().value(QStringLiteral("order_id")).toString();
    if (orderId.isEmpty())
        return {};
    const StoreAnswer pay = waitFor([&](const SuccessFn &ok, const FailureFn &failed) {
        NetWorkHelper::shareInstance()->getThirdPaymentDataWithPaymentMethod(
                QStringLiteral("wechat"), orderId, QStringLiteral("elsewhere"), {}, {}, ok, failed);
    });
    const QString prepayId = pay.data.toMap()
                                     .value(QStringLiteral("params_info"))
                                     .toMap()
                                     .value(QStringLiteral("prepayid"))
                                     .toString();
    return {orderId, prepayId};
}

// Settles a prepay in the WeChat sandbox as the payer would: paid or refused. Answers whether
// the sandbox agreed.
inline bool settleInTheSandbox(const QString &prepayId, bool pay)
{
    using platform::SandboxClient;
    QObject context;
    QString amount;
    bool answered = false;
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("prepayid"), prepayId);
    SandboxClient::shared().get(
            QStringLiteral("/sandbox/wechat/prepay"), query, &context,
            [&](const SandboxClient::Answer &answer) {
                amount = answer.data.toObject().value(QStringLiteral("amount")).toString();
                answered = true;
            });
    if (!QTest::qWaitFor([&] { return answered; }, 15000) || amount.isEmpty())
        return false;
    QUrlQuery form;
    form.addQueryItem(QStringLiteral("prepayid"), prepayId);
    form.addQueryItem(QStringLiteral("result"),
                      pay ? QStringLiteral("success") : QStringLiteral("cancel"));
    if (pay)
        form.addQueryItem(QStringLiteral("amount"), amount);
    bool settled = false;
    answered = false;
    SandboxClient::shared().post(QStringLiteral("/sandbox/wechat/confirm"), form, &context,
                                 [&](const SandboxClient::Answer &answer) {
                                     settled = answer.success;
                                     answered = true;
                                 });
    return QTest::qWaitFor([&] { return answered; }, 15000) && settled;
}

// Buys `gameId` for the signed-in account without the app knowing, as from another device.
inline bool buyElsewhere(const QString &gameId)
{
    const auto [orderId, prepayId] = orderAndPrepay(gameId);
    return !prepayId.isEmpty() && settleInTheSandbox(prepayId, true);
}

// The first of `ids` not in `owned`.
inline QString firstNotOwned(const QStringList &ids, const QStringList &owned)
{
    for (const QString &id : ids) {
        if (!owned.contains(id))
            return id;
    }
    return {};
}

// The rows of `rows` as "id:owned" texts, and what they should be by `owned`.
inline QStringList marksOf(const platform::RowModel *rows)
{
    QStringList marks;
    for (const QVariantMap &row : rows->rows())
        marks.append(row.value(QStringLiteral("gameId")).toString()
                     + (row.value(QStringLiteral("owned")).toBool() ? QStringLiteral(":owned")
                                                                    : QStringLiteral(":-")));
    return marks;
}

inline QStringList expectedMarks(const platform::RowModel *rows, const QStringList &owned)
{
    QStringList marks;
    for (const QVariantMap &row : rows->rows()) {
        const QString id = row.value(QStringLiteral("gameId")).toString();
        marks.append(id + (owned.contains(id) ? QStringLiteral(":owned") : QStringLiteral(":-")));
    }
    return marks;
}

} // namespace ownedtest
