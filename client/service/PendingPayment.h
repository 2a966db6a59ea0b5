#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

// The order whose payment was started and whose state the store has not told yet, kept in the
// user defaults so that it outlives the app being closed while the payment app is in front. The
// next launch asks the store about it; whatever the store answers settles it.
class PendingPayment
{
public:
    struct Record
    {
        QString orderId;
        QDateTime startedAt; // UTC
    };

    static const QString OrderIdKey; // "payingOrderId"
    static const QString StartedAtKey; // "payingOrderStartedAt"

    // Paying `orderId` starts now (or at `startedAt`); replaces an earlier record.
    static void remember(const QString &orderId,
                         const QDateTime &startedAt = QDateTime::currentDateTimeUtc());
    // The remembered order; nothing when none is, or what is stored is unreadable.
    static std::optional<Record> current();
    // The store has answered about `orderId`: forgets it, unless another order has been
    // remembered since.
    static void settle(const QString &orderId);
    static void forget();
};
