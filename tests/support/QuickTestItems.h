#pragma once

#include <QElapsedTimer>
#include <QList>
#include <QMessageLogContext>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QString>
#include <QStringList>
#include <QTest>

// Looking into a Qt Quick scene the way a user sees it. The searches walk the visual tree, since
// views, repeaters and loaders do not make their items QObject children.
namespace tarvel::test {

// The first item named `name`, shown or not.
inline QQuickItem *findItem(QQuickItem *root, const QString &name)
{
    if (!root)
        return nullptr;
    if (root->objectName() == name)
        return root;
    for (QQuickItem *child : root->childItems()) {
        if (QQuickItem *found = findItem(child, name))
            return found;
    }
    return nullptr;
}

// The first shown item named `name`.
inline QQuickItem *findNamed(QQuickItem *root, const QString &name)
{
    if (!root || !root->isVisible())
        return nullptr;
    if (root->objectName() == name)
        return root;
    for (QQuickItem *child : root->childItems()) {
        if (QQuickItem *found = findNamed(child, name))
            return found;
    }
    return nullptr;
}

// Every shown item named `name`.
inline QList<QQuickItem *> findAllNamed(QQuickItem *root, const QString &name)
{
    QList<QQuickItem *> found;
    if (!root || !root->isVisible())
        return found;
    if (root->objectName() == name)
        found.append(root);
    for (QQuickItem *child : root->childItems())
        found += findAllNamed(child, name);
    return found;
}

// Whether a navigation stack under `root` is still sliding.
inline bool stacksBusy(QQuickItem *root)
{
    for (QQuickItem *stack : findAllNamed(root, QStringLiteral("controllerStack"))) {
        if (stack->property("busy").toBool())
            return true;
    }
    return false;
}

// Taps the middle of `item` as a user would: once the stacks are still and the item has stopped
// moving (sheets slide in). False when the item goes away, never settles or lies outside the
// window.
inline bool tapWhenStill(QQuickWindow *window, QQuickItem *item)
{
    if (!window || !item)
        return false;
    QPointer<QQuickItem> target(item);
    QPointF centre;
    const bool settled = QTest::qWaitFor([&] {
        if (!target || stacksBusy(window->contentItem()))
            return false;
        const QPointF now = target->mapToScene(QPointF(target->width() / 2, target->height() / 2));
        const bool still = now == centre;
        centre = now;
        return still;
    });
    if (!settled || !QRectF(0, 0, window->width(), window->height()).contains(centre))
        return false;
    QTest::mouseClick(window, Qt::LeftButton, {}, centre.toPoint());
    return true;
}

// Where every item of the scene is and how it shows: scene position, size, opacity, visibility.
inline void collectPlacement(QQuickItem *item, QList<qreal> &into)
{
    const QPointF at = item->mapToScene(QPointF(0, 0));
    into << at.x() << at.y() << item->width() << item->height() << item->opacity()
         << (item->isVisible() ? 1 : 0);
    for (QQuickItem *child : item->childItems())
        collectPlacement(child, into);
}

// Waits until the scene stops moving: no navigation stack is sliding (its animators move pages
// without updating their properties) and nothing slides, fades or changes size between two looks
// a few frames apart. Slides and fades end this way without a test guessing how long they take;
// endless spinners (a rotation) do not count as movement.
inline bool waitForStillScene(QQuickWindow *window, int timeoutMs = 5000)
{
    if (!window)
        return false;
    constexpr int FramesApartMs = 50;
    QList<qreal> previous;
    collectPlacement(window->contentItem(), previous);
    QElapsedTimer sinceLook;
    sinceLook.start();
    return QTest::qWaitFor(
            [&] {
                if (sinceLook.elapsed() < FramesApartMs)
                    return false;
                if (stacksBusy(window->contentItem())) {
                    previous.clear();
                    return false;
                }
                QList<qreal> current;
                collectPlacement(window->contentItem(), current);
                sinceLook.restart();
                const bool still = current == previous;
                previous = std::move(current);
                return still;
            },
            timeoutMs);
}

// The first shown text item showing exactly `text`.
inline QQuickItem *findText(QQuickItem *root, const QString &text)
{
    if (!root || !root->isVisible())
        return nullptr;
    if (root->metaObject()->indexOfProperty("font") >= 0
        && root->property("text").toString() == text)
        return root;
    for (QQuickItem *child : root->childItems()) {
        if (QQuickItem *found = findText(child, text))
            return found;
    }
    return nullptr;
}

// Collects what QML and its JavaScript complain about (other libraries' chatter does not count),
// while passing every message on as before.
class QmlWarnings
{
public:
    static void install()
    {
        if (!s_previous)
            s_previous = qInstallMessageHandler(record);
    }
    static void clear() { s_warnings.clear(); }
    static const QStringList &messages() { return s_warnings; }
    static QString text() { return s_warnings.join(QLatin1Char('\n')); }

private:
    static bool isQmlMessage(const QMessageLogContext &context, const QString &message)
    {
        const QString file = QString::fromUtf8(context.file ? context.file : "");
        const QString category = QString::fromUtf8(context.category ? context.category : "");
        return file.endsWith(QLatin1String(".qml")) || message.contains(QLatin1String(".qml:"))
               || category.startsWith(QLatin1String("qt.qml")) || category == QLatin1String("qml")
               || category == QLatin1String("js");
    }
    static void record(QtMsgType type, const QMessageLogContext &context, const QString &message)
    {
        if (type != QtDebugMsg && type != QtInfoMsg && isQmlMessage(context, message))
            s_warnings.append(message);
        s_previous(type, context, message);
    }

    static inline QStringList s_warnings;
    static inline QtMessageHandler s_previous = nullptr;
};

} // namespace tarvel::test
