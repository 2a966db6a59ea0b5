#include "app/AppLaunch.h"

#include "app/AppDelegate.h"
#include "platform/ui/ImageNetworkFactory.h"
#include "platform/ui/MemoryImageProvider.h"
#include "platform/ui/WebView.h"

#include <QGuiApplication>
#include <QQmlApplicationEngine>
#include <QQuickWindow>

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
    return loadMainWindow(engine);
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
