// The floor bench_startup measures the app against: the least any Qt Quick app does before its
// first frame. One window of the app's size with one line of Chinese text, on the same platform
// plugin, in an executable that links Qt Quick alone. Prints the time from the launch (passed in
// TARVEL_BENCH_LAUNCHED_AT, ms since the epoch) to the first frame and the memory then.
#include <QDateTime>
#include <QFile>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

#include <cstdio>

namespace {

long residentKilobytes()
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith("VmRSS:"))
            return line.mid(6).trimmed().split(' ').value(0).toLong();
    }
    return -1;
}

} // namespace

int main(int argc, char *argv[])
{
    const qint64 launchedAt = qEnvironmentVariable("TARVEL_BENCH_LAUNCHED_AT").toLongLong();
    QGuiApplication app(argc, argv);
    QQmlApplicationEngine engine;
    engine.loadData("import QtQuick\n"
                    "Window { width: 375; height: 667; visible: true\n"
                    "  Text { anchors.centerIn: parent; text: "
                    "\"\u6b22\u8fce\u6765\u5230\u6e38\u620f\u5546\u5e97\" } }\n");
    auto *window = engine.rootObjects().isEmpty()
                           ? nullptr
                           : qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
    if (!window)
        return 1;
    QObject::connect(window, &QQuickWindow::frameSwapped, &app, [launchedAt] {
        std::printf("floor first_frame=%lld rss_kb=%ld\n",
                    QDateTime::currentMSecsSinceEpoch() - launchedAt, residentKilobytes());
        std::fflush(stdout);
        QCoreApplication::exit(0);
    });
    return app.exec();
}
