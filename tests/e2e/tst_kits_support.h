#pragma once

// Shared by the kit, payment and push tests: a log recorder, waiting for store answers, the
// signed-in demo user, and a phone-sized window showing the app's window for screenshots.

#include "QuickTestItems.h"
#include "TestEnvironment.h"

#include "app/AppDelegate.h"
#include "app/WindowSnapshot.h"
#include "models/Object_User.h"
#include "platform/ui/Window.h"
#include "service/NetWorkHelper.h"

#include <QDir>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace kitstest {

// qInfo lines and QML complaints since the last clear().
class LogRecorder
{
public:
    static void install()
    {
        if (!s_previous)
            s_previous = qInstallMessageHandler(record);
    }
    static QStringList &infos() { return s_infos; }
    static QStringList &qmlWarnings() { return s_qmlWarnings; }
    static void clear()
    {
        s_infos.clear();
        s_qmlWarnings.clear();
    }

private:
    static void record(QtMsgType type, const QMessageLogContext &context, const QString &message)
    {
        if (type == QtInfoMsg)
            s_infos.append(message);
        const QString file = QString::fromUtf8(context.file ? context.file : "");
        const QString category = QString::fromUtf8(context.category ? context.category : "");
        const bool fromQml = file.endsWith(QLatin1String(".qml"))
                             || message.contains(QLatin1String(".qml:"))
                             || category.startsWith(QLatin1String("qt.qml"))
                             || category == QLatin1String("qml") || category == QLatin1String("js");
        if (type != QtDebugMsg && type != QtInfoMsg && fromQml)
            s_qmlWarnings.append(message);
        s_previous(type, context, message);
    }

    static inline QtMessageHandler s_previous = nullptr;
    static inline QStringList s_infos;
    static inline QStringList s_qmlWarnings;
};

struct StoreAnswer
{
    bool answered = false;
    bool ok = false;
    QVariant data;
    QString message;
};

// Runs one NetWorkHelper operation, given its success and failure callbacks, to its end.
template<class Operation>
StoreAnswer waitFor(Operation operation)
{
    auto answer = std::make_shared<StoreAnswer>();
    operation(
            [answer](const QVariant &data, const QVariant &) {
                *answer = {true, true, data, QString()};
            },
            [answer](const QVariant &, const QString &message, const QVariant &) {
                *answer = {true, false, QVariant(), message};
            });
    if (!QTest::qWaitFor([answer] { return answer->answered; }, 15000))
        answer->message = QStringLiteral("no answer from the store");
    return *answer;
}

// Signs the phone demo account in and makes it the app's user.
inline bool signInDemoUser()
{
    const StoreAnswer answer = waitFor([](const SuccessFn &success, const FailureFn &failure) {
        NetWorkHelper::shareInstance()->signInWithAccountEmail(QStringLiteral("13800138000"),
                                                               QStringLiteral("tarvel2024"), {}, {},
                                                               success, failure);
    });
    const std::optional<Object_User> user = JSONModel::initWithDictionary<Object_User>(answer.data);
    if (!answer.ok || !user)
        return false;
    AppDelegate::shared()->setUserLogin(user);
    return true;
}

// The app's window drawn by the QML shell (WindowView) in a 375 x 667 window.
class ShellWindow
{
public:
    bool show(platform::Window *window)
    {
        m_engine = std::make_unique<QQmlEngine>();
        m_engine->addImportPath(QStringLiteral("qrc:/"));
        m_window = std::make_unique<QQuickWindow>();
        m_window->resize(375, 667);
        QQmlComponent component(m_engine.get());
        component.setData("import QtQuick\nimport Tarvel\nWindowView {}",
                          QUrl(QStringLiteral("qrc:/tests/KitsHarness.qml")));
        QObject *object = component.createWithInitialProperties(
                {{QStringLiteral("window"), QVariant::fromValue(window)}});
        auto *item = qobject_cast<QQuickItem *>(object);
        if (!item) {
            qWarning() << component.errors();
            delete object;
            return false;
        }
        QQmlEngine::setObjectOwnership(item, QQmlEngine::JavaScriptOwnership);
        item->setParentItem(m_window->contentItem());
        item->setSize(QSizeF(375, 667));
        m_root = item;
        m_window->show();
        return QTest::qWaitForWindowExposed(m_window.get());
    }

    QQuickWindow *window() const { return m_window.get(); }
    QQuickItem *root() const { return m_root; }

    template<class T = QQuickItem>
    T *find(const QString &objectName) const
    {
        return m_root ? m_root->findChild<T *>(objectName) : nullptr;
    }

    // Lets animations end and one frame draw, then writes the window to the artifacts folder.
    bool snapshot(const QString &fileName)
    {
        if (!tarvel::test::waitForStillScene(m_window.get()))
            return false;
        QSignalSpy swapped(m_window.get(), &QQuickWindow::frameSwapped);
        m_window->update();
        swapped.wait(5000);
        const QString path = QDir(tarvel::test::TestEnvironment::artifactsDir()).filePath(fileName);
        return WindowSnapshot::save(m_window.get(), path);
    }

    void click(QQuickItem *item)
    {
        const QPointF centre = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
        QTest::mouseClick(m_window.get(), Qt::LeftButton, {}, centre.toPoint());
    }

    void close()
    {
        m_window.reset();
        for (int i = 0; i < 5; ++i) {
            QCoreApplication::processEvents();
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        }
        m_engine.reset();
        m_root = nullptr;
    }

private:
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;
    QQuickItem *m_root = nullptr;
};

} // namespace kitstest
