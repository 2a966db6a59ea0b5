#include "platform/ui/NavigationController.h"

#include <QDebug>

namespace platform {

NavigationController::NavigationController(ViewController *rootViewController, QObject *parent)
    : ViewController(Navigation, parent)
{
    if (rootViewController)
        setViewControllers({rootViewController}, false);
}

ViewController *NavigationController::viewControllerAt(int index) const
{
    return m_stack.value(index);
}

ViewController *NavigationController::topViewController() const
{
    return m_stack.isEmpty() ? nullptr : m_stack.constLast();
}

bool NavigationController::isBottomBarHidden() const
{
    for (qsizetype i = 1; i < m_stack.size(); ++i) {
        if (m_stack.at(i)->hidesBottomBarWhenPushed())
            return true;
    }
    return false;
}

QList<ViewController *> NavigationController::visibleChildViewControllers() const
{
    if (ViewController *top = topViewController())
        return {top};
    return {};
}

bool NavigationController::canTakeIn(ViewController *controller) const
{
    if (!controller || controller == this || m_stack.contains(controller)
        || controller->parentViewController() || controller->presentingViewController()
        || controller->window()) {
        qWarning() << "NavigationController: cannot take in" << controller
                   << "(missing, or already shown elsewhere)";
        return false;
    }
    return true;
}

void NavigationController::pushViewController(ViewController *controller, bool animated)
{
    if (!canTakeIn(controller))
        return;
    ViewController *from = topViewController();
    m_transition.finish();
    m_stack.append(controller);
    adoptChild(controller);
    connect(controller, &QObject::destroyed, this, [this, controller] { forget(controller); });
    emit viewControllersChanged();
    runChange(from, {}, animated);
    emit pushed(controller, animated);
}

ViewController *NavigationController::popViewController(bool animated)
{
    if (m_stack.size() < 2)
        return nullptr;
    const QList<ViewController *> popped
            = popToViewController(m_stack.at(m_stack.size() - 2), animated);
    return popped.isEmpty() ? nullptr : popped.constLast();
}

QList<ViewController *> NavigationController::popToViewController(ViewController *controller,
                                                                  bool animated)
{
    const qsizetype index = m_stack.indexOf(controller);
    if (index < 0 || index == m_stack.size() - 1)
        return {};
    ViewController *from = topViewController();
    m_transition.finish();
    const QList<ViewController *> removed = m_stack.mid(index + 1);
    m_stack.resize(index + 1);
    for (ViewController *gone : removed) {
        disconnect(gone, &QObject::destroyed, this, nullptr);
        releaseChild(gone);
    }
    emit viewControllersChanged();
    runChange(from, removed, animated);
    emit popped(depth(), animated);
    return removed;
}

QList<ViewController *> NavigationController::popToRootViewController(bool animated)
{
    if (m_stack.isEmpty())
        return {};
    return popToViewController(m_stack.constFirst(), animated);
}

void NavigationController::setViewControllers(const QList<ViewController *> &controllers,
                                              bool animated)
{
    QList<ViewController *> incoming;
    for (ViewController *controller : controllers) {
        if (m_stack.contains(controller) || canTakeIn(controller)) {
            if (!incoming.contains(controller))
                incoming.append(controller);
        }
    }
    ViewController *from = topViewController();
    m_transition.finish();
    QList<ViewController *> removed;
    for (ViewController *old : std::as_const(m_stack)) {
        if (!incoming.contains(old)) {
            disconnect(old, &QObject::destroyed, this, nullptr);
            releaseChild(old);
            removed.append(old);
        }
    }
    for (ViewController *controller : std::as_const(incoming)) {
        if (!m_stack.contains(controller)) {
            adoptChild(controller);
            connect(controller, &QObject::destroyed, this,
                    [this, controller] { forget(controller); });
        }
    }
    m_stack = incoming;
    emit viewControllersChanged();
    runChange(from, removed, animated);
    emit reset(animated);
}

void NavigationController::runChange(ViewController *from, QList<ViewController *> removed,
                                     bool animated)
{
    AppearanceTransition::Change change;
    change.from = from;
    change.to = topViewController();
    change.animated = animated;
    change.removed = std::move(removed);
    m_transition.start(appearance(), std::move(change), m_drivenByView);
}

void NavigationController::setTransitionsDrivenByView(bool driven)
{
    if (m_drivenByView == driven)
        return;
    m_drivenByView = driven;
    if (!driven)
        m_transition.finish();
    emit transitionsDrivenByViewChanged();
}

void NavigationController::finishTransition()
{
    m_transition.finish();
}

// A controller deleted from outside leaves the stack without a transition.
void NavigationController::forget(ViewController *controller)
{
    if (m_stack.removeOne(controller)) {
        emit viewControllersChanged();
        emit reset(false);
    }
}

} // namespace platform
