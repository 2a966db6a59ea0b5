#include "app/WindowSnapshot.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImage>
#include <QQuickWindow>
#include <QTimer>

bool WindowSnapshot::save(QQuickWindow *window, const QString &path)
{
    if (!window)
        return false;
    const QImage image = window->grabWindow();
    if (image.isNull())
        return false;
    QDir().mkpath(QFileInfo(path).absolutePath());
    return image.save(path, "PNG");
}

void WindowSnapshot::captureAndQuit(QQuickWindow *window, const QString &path, int delayMs)
{
    QTimer::singleShot(delayMs, window, [window, path] {
        const bool saved = save(window, path);
        qInfo("snapshot %s: %s", saved ? "written" : "failed", qPrintable(path));
        QCoreApplication::exit(saved ? 0 : 1);
    });
}
