#include "app/AppLaunch.h"

#include "app/AppDelegate.h"
#include "platform/kits/Application.h"
#include "platform/ui/ImageNetworkFactory.h"
#include "platform/ui/MemoryImageProvider.h"
#include "platform/ui/WebView.h"
#include "screens/purchase/PendingPaymentCheck.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

namespace AppLaunch {

void prepare()
{
    platform::WebView::prepareEngine();
}

QQuickWindow *launch(QGuiApplication &application, QQmlApplicationEngine &engine, Phases *phases)
{
    QElapsedTimer step;
    step.start();
    AppDelegate *delegate = AppDelegate::shared();
    delegate->followApplicationState(&application);
    // The kits start in the launch's order, but their disk and network work waits for the window.
    auto &kitsApplication = platform::Application::shared();
    kitsApplication.expectFirstFrame();
    delegate->application_didFinishLaunchingWithOptions();
    const qint64 delegateMs = step.restart();
    QQuickWindow *window = loadMainWindow(engine);
    if (phases)
        *phases = {delegateMs, step.elapsed()};
    if (!window) {
        kitsApplication.firstFrameShown();
        return nullptr;
    }
    QObject::connect(
            window, &QQuickWindow::frameSwapped, &kitsApplication,
            [] { platform::Application::shared().firstFrameShown(); }, Qt::SingleShotConnection);
    // Once the first screen is up: a payment the app was closed in the middle of.
    kitsApplication.afterFirstFrame(delegate, [] { PendingPaymentCheck::runOnVisibleScreen(); });
    return window;
}

QQuickWindow *loadMainWindow(QQmlApplicationEngine &engine)
{
    engine.addImportPath(QStringLiteral("qrc:/"));
    platform::ImageNetworkFactory::install(&engine);
    platform::MemoryImageProvider::install(&engine);
    engine.load(QUrl(QStringLiteral("qrc:/Tarvel/qml/Main.qml")));
    if (engine.rootObjects().isEmpty())
        return nullptr;
    return qobject_cast<QQuickWindow *>(engine.rootObjects().constFirst());
}

} // namespace AppLaunch
