#pragma once

// What the sign-in and message screen tests share: a phone-sized QML window showing a
// platform::Window the way the app does, a watch on QML warnings, and small waits.

#include "QuickTestItems.h"
#include "TestEnvironment.h"
#include "app/WindowSnapshot.h"
#include "platform/ui/MemoryImageProvider.h"
#include "platform/ui/Window.h"

#include <QCoreApplication>
#include <QDir>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QStringList>
#include <QTest>

#include <memory>

namespace tarvel::test {

// Lets queued calls (the screens' deferred hooks) and deferred deletes run.
inline void settle()
{
    for (int i = 0; i < 5; ++i) {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

// A 375 x 667 window drawing a platform::Window with the app's WindowView.
class PhoneWindow
{
public:
    PhoneWindow()
    {
        m_engine = std::make_unique<QQmlEngine>();
        m_engine->addImportPath(QStringLiteral("qrc:/"));
        platform::MemoryImageProvider::install(m_engine.get());
    }
    ~PhoneWindow()
    {
        m_window.reset();
        settle();
        m_engine.reset();
    }

    bool show(platform::Window *platformWindow)
    {
        QQmlComponent component(m_engine.get());
        component.setData("import QtQuick\nimport Tarvel\nWindowView {}",
                          QUrl(QStringLiteral("qrc:/tests/PhoneWindow.qml")));
        QObject *object = component.createWithInitialProperties(
                {{"window", QVariant::fromValue(platformWindow)}});
        m_root = qobject_cast<QQuickItem *>(object);
        if (!m_root) {
            qWarning() << component.errors();
            delete object;
            return false;
        }
        m_window = std::make_unique<QQuickWindow>();
        m_window->resize(375, 667);
        m_root->setParentItem(m_window->contentItem());
        m_root->setSize(QSizeF(375, 667));
        // The window owns the view: a root without a parent would be the garbage collector's to
        // take as soon as a new component loads.
        m_root->setParent(m_window.get());
        m_window->show();
        return QTest::qWaitForWindowExposed(m_window.get()) && waitForFrame();
    }

    QQuickWindow *window() const { return m_window.get(); }
    QQuickItem *root() const { return m_root; }

    bool waitForFrame()
    {
        QSignalSpy swapped(m_window.get(), &QQuickWindow::frameSwapped);
        m_window->update();
        return swapped.wait(5000);
    }

    // A visible item called `name` (objectName), searched through the visual tree.
    QQuickItem *findItem(const QString &name) const { return find(m_root, name, false); }
    // A visible text item showing exactly `text`.
    QQuickItem *findText(const QString &text) const { return find(m_root, text, true); }

    void click(QQuickItem *item)
    {
        const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, centre.toPoint());
    }

    // Writes what the window shows into the test artifacts folder.
    bool screenshot(const QString &fileName)
    {
        return WindowSnapshot::save(m_window.get(),
                                    QDir(TestEnvironment::artifactsDir()).filePath(fileName));
    }

private:
    static QQuickItem *find(QQuickItem *item, const QString &wanted, bool byText)
    {
        if (!item || !item->isVisible())
            return nullptr;
        const bool matches = byText ? item->metaObject()->indexOfProperty("font") >= 0
                                              && item->property("text").toString() == wanted
                                    : item->objectName() == wanted;
        if (matches)
            return item;
        for (QQuickItem *child : item->childItems()) {
            if (QQuickItem *found = find(child, wanted, byText))
                return found;
        }
        return nullptr;
    }

    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    QQuickItem *m_root = nullptr;
};

} // namespace tarvel::test
