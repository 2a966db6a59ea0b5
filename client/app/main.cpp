#include "app/AppDelegate.h"
#include "app/WindowSnapshot.h"
#include "platform/ui/ImageNetworkFactory.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQmlExtensionPlugin>
#include <QQuickWindow>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

int main(int argc, char *argv[])
{
    QGuiApplication app(argc, argv);
    QGuiApplication::setApplicationName(QStringLiteral("tarvel"));
    QGuiApplication::setApplicationDisplayName(QStringLiteral("Tarvel"));

    AppDelegate *delegate = AppDelegate::shared();
    delegate->followApplicationState(&app);
    delegate->application_didFinishLaunchingWithOptions();

    QQmlApplicationEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/"));
    platform::ImageNetworkFactory::install(&engine);
    QObject::connect(
            &engine, &QQmlApplicationEngine::objectCreationFailed, &app,
            [] { QCoreApplication::exit(1); }, Qt::QueuedConnection);
    engine.load(QUrl(QStringLiteral("qrc:/Tarvel/qml/Main.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;

    // TARVEL_SNAPSHOT=<file.png> writes the window once it has settled and quits (used for
    // reviews).
    const QString snapshot = qEnvironmentVariable("TARVEL_SNAPSHOT");
    if (!snapshot.isEmpty()) {
        auto *window = qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
        const int delay = qEnvironmentVariableIntValue("TARVEL_SNAPSHOT_DELAY_MS");
        WindowSnapshot::captureAndQuit(window, snapshot, delay > 0 ? delay : 1500);
    }
    return app.exec();
}
