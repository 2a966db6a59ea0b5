#pragma once

#include <QJsonArray>
#include <QString>

#include <cstdio>
#include <mutex>

namespace SQLite {
class Database;
}

// Every SMS and mail the service sends. There is no real gateway: the messages stay here, where the
// sandbox shows them, and are printed on the console so that a developer can read the codes.
class Outbox
{
public:
    explicit Outbox(std::FILE *console)
        : m_console(console)
    { }

    void sms(SQLite::Database &db, const QString &phoneNumber, const QString &text,
             const QString &code, qint64 now);
    void mail(SQLite::Database &db, const QString &address, const QString &subject,
              const QString &body, const QString &link, qint64 now);
    // The messages sent to `recipient` (everyone when empty), newest first.
    static QJsonArray list(SQLite::Database &db, const QString &recipient, int limit);

private:
    void record(SQLite::Database &db, const char *channel, const QString &recipient,
                const QString &subject, const QString &body, const QString &code,
                const QString &link, qint64 now);

    std::FILE *m_console;
    std::mutex m_consoleMutex;
};
