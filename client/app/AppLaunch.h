#pragma once

#include <QtGlobal>

class QGuiApplication;
class QQmlApplicationEngine;
class QQuickWindow;

// How the app comes up, shared by main() and by everything that starts it the same way (the
// end-to-end tests, the start-up benchmark), so that none of them runs a different app.
namespace AppLaunch {

// What must be set before the application object exists (the web view's engine settings). Call
// it first thing in main(), before constructing the QGuiApplication.
void prepare();

// How long the launch's two steps took, in milliseconds, for the start-up benchmark.
struct Phases
{
    qint64 delegateMs = -1;
    qint64 windowMs = -1;
};

// The delegate launches (restoring the session and putting in the tab bar), then the window loads;
// once it is up, a payment left unsettled by the last run is asked of the store.
// Returns the window, or null when its QML did not load. `phases`, when given, gets the steps'
// times.
QQuickWindow *launch(QGuiApplication &application, QQmlApplicationEngine &engine,
                     Phases *phases = nullptr);

// Loads the window's QML into `engine`, with pictures fetched through the app's own network stack
// (shared cookies and disk cache, never pipelined). Returns the window, or null.
QQuickWindow *loadMainWindow(QQmlApplicationEngine &engine);

} // namespace AppLaunch
