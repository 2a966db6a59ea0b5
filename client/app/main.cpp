#include "app/AppLaunch.h"
#include "app/WindowSnapshot.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlExtensionPlugin>
#include <QQuickWindow>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

int main(int argc, char *argv[])
{
    AppLaunch::prepare();
    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("tarvel"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tarvel"));

    QQmlApplicationEngine engine;
    QQuickWindow *window = AppLaunch::launch(app, engine);
    if (!window)
        return 1;

    // TARVEL_SNAPSHOT=<file.png> writes the window once it has settled and quits (used for
    // reviews).
    const QString snapshot = qEnvironmentVariable("TARVEL_SNAPSHOT");
    if (!snapshot.isEmpty()) {
        const int delay = qEnvironmentVariableIntValue("TARVEL_SNAPSHOT_DELAY_MS");
        WindowSnapshot::captureAndQuit(window, snapshot, delay > 0 ? delay : 1500);
    }
    return app.exec();
}
