#pragma once

#include <QString>

class Outbox;

namespace SQLite {
class Database;
}

// Six-digit SMS codes: valid for ten minutes, used once, at most one per number a minute and
// five tries each.
namespace SmsCodes {

inline constexpr qint64 kLifetimeSeconds = 10 * 60;
inline constexpr qint64 kResendSeconds = 60;
inline constexpr int kAttempts = 5;

// What a code proves possession of the number for.
inline const QString kPhone = QStringLiteral("phone"); // registration, binding, checking
inline const QString kPassword = QStringLiteral("password");
inline const QString kUnlock = QStringLiteral("unlock");

// Seconds until the number may get another code; 0 when it may now.
qint64 waitBeforeNext(SQLite::Database &db, const QString &phoneNumber, qint64 now);
// Sends a new code (replacing any earlier one for the purpose) and returns it.
QString send(SQLite::Database &db, Outbox &outbox, const QString &phoneNumber,
             const QString &purpose, qint64 now);

enum class Check { Passed, Wrong, Invalid };
// Passed marks the code used; Wrong counts a try. Run it in the transaction that acts on the
// code, and raise the refusal only after that transaction committed the counted try.
Check consume(SQLite::Database &db, const QString &phoneNumber, const QString &purpose,
              const QString &code, qint64 now);

} // namespace SmsCodes
