#include "service/PendingPayment.h"

#include "platform/UserDefaults.h"

using platform::UserDefaults;

const QString PendingPayment::OrderIdKey = QStringLiteral("payingOrderId");
const QString PendingPayment::StartedAtKey = QStringLiteral("payingOrderStartedAt");

void PendingPayment::remember(const QString &orderId, const QDateTime &startedAt)
{
    if (orderId.isEmpty())
        return;
    UserDefaults &defaults = UserDefaults::standard();
    defaults.setObject(orderId, OrderIdKey);
    defaults.setObject(startedAt.toUTC().toString(Qt::ISODate), StartedAtKey);
    defaults.synchronize();
}

std::optional<PendingPayment::Record> PendingPayment::current()
{
    const UserDefaults &defaults = UserDefaults::standard();
    const QString orderId = defaults.objectForKey(OrderIdKey).toString();
    if (orderId.isEmpty())
        return std::nullopt;
    QDateTime startedAt
            = QDateTime::fromString(defaults.objectForKey(StartedAtKey).toString(), Qt::ISODate);
    return Record{orderId, startedAt.toUTC()};
}

void PendingPayment::settle(const QString &orderId)
{
    const std::optional<Record> record = current();
    if (record && record->orderId == orderId)
        forget();
}

void PendingPayment::forget()
{
    UserDefaults &defaults = UserDefaults::standard();
    defaults.removeObjectForKey(OrderIdKey);
    defaults.removeObjectForKey(StartedAtKey);
    defaults.synchronize();
}
