#include "app/AppLaunch.h"

#include "app/AppDelegate.h"
#include "platform/ui/ImageNetworkFactory.h"
#include "platform/ui/MemoryImageProvider.h"
#include "platform/ui/WebView.h"
#include "screens/purchase/PendingPaymentCheck.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>
#include <QTimer>

namespace AppLaunch {

void prepare()
{
    platform::WebView::prepareEngine();
}

QQuickWindow *launch(QGuiApplication &application, QQmlApplicationEngine &engine)
{
    AppDelegate *delegate = AppDelegate::shared();
    delegate->followApplicationState(&application);
    delegate->application_didFinishLaunchingWithOptions();
    QQuickWindow *window = loadMainWindow(engine);
    // Once the first screen is up: a payment the app was closed in the middle of.
    if (window)
        QTimer::singleShot(0, delegate, [] { PendingPaymentCheck::runOnVisibleScreen(); });
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
