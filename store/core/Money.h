#pragma once

#include <QString>

// Amounts are kept as whole fen (1/100 yuan) and shown as yuan text without trailing zeros:
// 9900 -> "99", 5850 -> "58.5", 4999 -> "49.99".
namespace Money {
QString text(qint64 fen);
// Yuan text as sent by a payer ("102.4", "99", "0.01") in fen; -1 when it is not such a text.
qint64 parse(const QString &yuan);
} // namespace Money
