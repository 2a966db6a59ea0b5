#pragma once

#include <QString>

class QQuickWindow;

// Writes what a window shows to a PNG file; used by `TARVEL_SNAPSHOT` and by the view tests.
class WindowSnapshot
{
public:
    static bool save(QQuickWindow *window, const QString &path);
    static void captureAndQuit(QQuickWindow *window, const QString &path, int delayMs);
};
