#include "platform/ui/TabBarController.h"

#include <QDebug>

namespace platform {

TabBarController::TabBarController(QObject *parent)
    : ViewController(TabBar, parent)
{ }

void TabBarController::setViewControllers(const QList<ViewController *> &controllers)
{
    QList<ViewController *> incoming;
    for (ViewController *controller : controllers) {
        const bool free = controller && controller != this && !controller->parentViewController()
                          && !controller->presentingViewController() && !controller->window();
        if ((m_tabs.contains(controller) || free) && !incoming.contains(controller))
            incoming.append(controller);
        else
            qWarning() << "TabBarController: cannot take in" << controller;
    }
    ViewController *from = selectedViewController();
    QList<ViewController *> removed;
    for (ViewController *old : std::as_const(m_tabs)) {
        if (!incoming.contains(old)) {
            disconnect(old, &QObject::destroyed, this, nullptr);
            releaseChild(old);
            removed.append(old);
        }
    }
    for (ViewController *controller : std::as_const(incoming)) {
        if (!m_tabs.contains(controller)) {
            adoptChild(controller);
            connect(controller, &QObject::destroyed, this,
                    [this, controller] { forget(controller); });
        }
    }
    m_tabs = incoming;
    const int previous = m_selectedIndex;
    if (m_selectedIndex < 0 || m_selectedIndex >= count())
        m_selectedIndex = m_tabs.isEmpty() ? -1 : 0;
    emit viewControllersChanged();
    if (previous != m_selectedIndex || from != selectedViewController())
        emit selectedIndexChanged();

    AppearanceTransition::Change change;
    change.from = from;
    change.to = selectedViewController();
    change.removed = removed;
    m_transition.start(appearance(), std::move(change), false);
}

ViewController *TabBarController::viewControllerAt(int index) const
{
    return m_tabs.value(index);
}

void TabBarController::setSelectedIndex(int index)
{
    if (index < 0 || index >= count() || index == m_selectedIndex)
        return;
    ViewController *from = selectedViewController();
    m_selectedIndex = index;
    emit selectedIndexChanged();
    AppearanceTransition::Change change;
    change.from = from;
    change.to = selectedViewController();
    m_transition.start(appearance(), std::move(change), false);
}

ViewController *TabBarController::selectedViewController() const
{
    return m_tabs.value(m_selectedIndex);
}

void TabBarController::setTabBarHidden(bool hidden)
{
    if (m_tabBarHidden == hidden)
        return;
    m_tabBarHidden = hidden;
    emit tabBarHiddenChanged();
}

QList<ViewController *> TabBarController::visibleChildViewControllers() const
{
    if (ViewController *selected = selectedViewController())
        return {selected};
    return {};
}

// A tab deleted from outside leaves without a transition; the selection stays in range.
void TabBarController::forget(ViewController *controller)
{
    const qsizetype index = m_tabs.indexOf(controller);
    if (index < 0)
        return;
    m_tabs.removeAt(index);
    if (index < m_selectedIndex)
        --m_selectedIndex;
    else if (m_selectedIndex >= count())
        m_selectedIndex = int(count()) - 1;
    emit viewControllersChanged();
    emit selectedIndexChanged();
}

} // namespace platform
