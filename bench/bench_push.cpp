// Push delay: from the store accepting a message (its write committed, as the operator's command
// does it) to the push kit handing it to its delegate, over ~20 messages against the in-process
// store, each sent while the kit's poll is held. Reports the median and the maximum.
#include "InProcessStore.h"
#include "StoreContext.h"
#include "db/Database.h"
#include "platform/kits/GeTuiSdk.h"
#include "sandbox/PushChannel.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QTemporaryDir>
#include <QTimer>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

constexpr int Messages = 20;
constexpr int GiveUpMs = 30000;

class Receiver : public GeTuiSdkDelegate
{
public:
    void GeTuiSdkDidReceivePayload(const QString &, const QString &, const QString &,
                                   const QString &) override
    {
        ++received;
        deliveredAt = clock.nsecsElapsed();
    }
    QElapsedTimer clock;
    int received = 0;
    qint64 deliveredAt = 0;
};

// Spins the event loop until `done` holds or the time is up; false when it never held.
bool spinUntil(const std::function<bool()> &done, int timeoutMs = GiveUpMs)
{
    QElapsedTimer waited;
    waited.start();
    while (!done()) {
        if (waited.elapsed() > timeoutMs)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 1);
    }
    return true;
}

void pause(int ms)
{
    QEventLoop loop;
    QTimer::singleShot(ms, &loop, &QEventLoop::quit);
    loop.exec();
}

double millis(qint64 nanos)
{
    return double(nanos) / 1e6;
}

} // namespace

int main(int argc, char **argv)
{
    QTemporaryDir home;
    qputenv("TARVEL_HOME", home.path().toUtf8());
    QCoreApplication app(argc, argv);
    tarvel::test::InProcessStore store;
    if (!store.isRunning()) {
        std::fprintf(stderr, "bench_push: the store did not start\n");
        return 1;
    }
    qputenv("TARVEL_API_BASE_URL", store.baseUrl().toUtf8());

    Receiver receiver;
    receiver.clock.start();
    QString error;
    if (!GeTuiSdk::startSdkWithAppId(QStringLiteral("benchAppId0000000000000"),
                                     QStringLiteral("benchAppKey000000000000"),
                                     QStringLiteral("benchSecret000000000000"), &receiver,
                                     &error)) {
        std::fprintf(stderr, "bench_push: %s\n", qPrintable(error));
        return 1;
    }
    if (!spinUntil([] { return GeTuiSdk::status() == SdkStatusStarted; })) {
        std::fprintf(stderr, "bench_push: the kit never registered\n");
        return 1;
    }

    Database database(store.databasePath());
    std::vector<double> delays;
    for (int i = 0; i < Messages; ++i) {
        if (!spinUntil([&] { return store.context().pushBell().waiting() == 1; })) {
            std::fprintf(stderr, "bench_push: no poll held before message %d\n", i + 1);
            return 1;
        }
        pause(7 * i % 60); // meet the store's lookups at different moments
        const int before = receiver.received;
        const PushChannel::Message message{QStringLiteral("消息 %1").arg(i + 1),
                                           QStringLiteral("推送延迟测量"),
                                           QStringLiteral("2024-07-01 10:00"), QString()};
        database.write([&](SQLite::Database &db) {
            return PushChannel::send(db, message, GeTuiSdk::clientId(),
                                     QDateTime::currentSecsSinceEpoch());
        });
        const qint64 acceptedAt = receiver.clock.nsecsElapsed();
        if (!spinUntil([&] { return receiver.received > before; })) {
            std::fprintf(stderr, "bench_push: message %d never arrived\n", i + 1);
            return 1;
        }
        delays.push_back(millis(receiver.deliveredAt - acceptedAt));
    }
    GeTuiSdk::destroy();

    std::sort(delays.begin(), delays.end());
    std::printf("push delay, store accepted -> kit delivered, %d messages sent to a held poll:\n",
                Messages);
    std::printf("  median %.1f ms, max %.1f ms, min %.1f ms\n", delays[delays.size() / 2],
                delays.back(), delays.front());
    return 0;
}
