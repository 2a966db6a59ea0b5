#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

namespace SQLite {
class Database;
}

// One browser-style session: anonymous until a sign-in binds it to an account. The cookie holds a
// random 128-bit id; the database keeps only its hash.
struct Session
{
    QByteArray idHash;
    qint64 accountId = 0;
    QString token; // the authenticity_token of a signed-in session
    QString captcha;
    qint64 captchaAt = 0;
    int captchaTries = 0;
    QString captchaSubject; // the number or address the right answer was first given for
    qint64 phoneCheckedAt = 0;

    bool signedIn() const { return accountId > 0; }
};

namespace Sessions {

inline constexpr char kCookieName[] = "_tarvel_session";
inline constexpr qint64 kLifetimeSeconds = 30 * 24 * 3600;
// Sessions nobody signed in to (made for a captcha) end sooner; expired ones are deleted whenever
// a session is made.
inline constexpr qint64 kAnonymousLifetimeSeconds = 3600;
inline constexpr qint64 kCaptchaLifetimeSeconds = 30 * 60;
inline constexpr int kCaptchaTries = 5;

std::optional<Session> find(SQLite::Database &db, const QByteArray &cookieValue, qint64 now);
// Makes a new session (signed in when accountId > 0) and returns the cookie value; `token`
// receives the new authenticity token of a signed-in session.
QByteArray create(SQLite::Database &db, qint64 accountId, qint64 now, QString *token = nullptr);
void remove(SQLite::Database &db, const QByteArray &idHash);
// Signs every other device out, after a password change.
void removeOthers(SQLite::Database &db, qint64 accountId, const QByteArray &keepIdHash);

void setCaptcha(SQLite::Database &db, const QByteArray &idHash, const QString &text, qint64 now);
enum class CaptchaCheck { Passed, Wrong, Missing };
// Case-insensitive; a wrong answer counts, and the fifth wrong one discards the picture's text.
// A right answer holds for one `subject` only (a phone number or e-mail address): the code
// request and the registration of the same number pass with it, any other number needs a new
// picture (Missing).
CaptchaCheck checkCaptcha(SQLite::Database &db, const Session &session, const QString &answer,
                          const QString &subject, qint64 now);
void markPhoneChecked(SQLite::Database &db, const QByteArray &idHash, qint64 now);

} // namespace Sessions
