#pragma once

#include "InProcessStore.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QProcess>
#include <QRegularExpression>
#include <QStringList>

namespace tarvel::test {

// Starts the tarvel-store program with `arguments` on `port` (0: one the system picks) and returns
// the port it reports listening on; 0 when it does not come up within `timeoutMs`.
inline int startStoreOnPort(QProcess &process, const QStringList &arguments, int port,
                            int timeoutMs = 20000)
{
    process.setProgram(InProcessStore::executablePath());
    // A test's store lives for one test: it scales pictures when asked, not all of them ahead.
    process.setArguments(arguments
                         + QStringList{QStringLiteral("--no-scale-ahead"), QStringLiteral("--port"),
                                       QString::number(port)});
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start();
    if (!process.waitForStarted(10000))
        return 0;
    static const QRegularExpression listening(
            QStringLiteral("listening on http://127\\.0\\.0\\.1:(\\d+)"));
    QByteArray output;
    const QDeadlineTimer deadline(timeoutMs);
    while (!deadline.hasExpired() && process.state() == QProcess::Running) {
        process.waitForReadyRead(int(qMin<qint64>(200, deadline.remainingTime())));
        output += process.readAllStandardOutput();
        const QRegularExpressionMatch match = listening.match(QString::fromUtf8(output));
        if (match.hasMatch())
            return match.captured(1).toInt();
    }
    return 0;
}

// The same on a port the system picks. No port is chosen beforehand, so no other test can take it
// in between.
inline int startStoreOnAnyPort(QProcess &process, const QStringList &arguments,
                               int timeoutMs = 20000)
{
    return startStoreOnPort(process, arguments, 0, timeoutMs);
}

} // namespace tarvel::test
