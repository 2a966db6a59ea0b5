#pragma once

#include "platform/ui/AppearanceTransition.h"
#include "platform/ui/ViewController.h"

#include <QList>
#include <QtQml/qqmlregistration.h>

namespace platform {

// A stack of screens. The QML shell mirrors `pushed`, `popped` and `reset` with a StackView and,
// while it animates (transitionsDrivenByView), reports the end of each animation through
// finishTransition(). Each signal comes after the change's will-callbacks, so a view that draws
// it without animation may finish it right away. Controllers that leave the stack are deleted
// once their transition ends.
class NavigationController : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(int depth READ depth NOTIFY viewControllersChanged)
    Q_PROPERTY(platform::ViewController *topViewController READ topViewController NOTIFY
                       viewControllersChanged)
    Q_PROPERTY(bool bottomBarHidden READ isBottomBarHidden NOTIFY viewControllersChanged)
    Q_PROPERTY(bool transitionsDrivenByView READ transitionsDrivenByView WRITE
                       setTransitionsDrivenByView NOTIFY transitionsDrivenByViewChanged)

public:
    explicit NavigationController(ViewController *rootViewController = nullptr,
                                  QObject *parent = nullptr);

    QList<ViewController *> viewControllers() const { return m_stack; }
    int depth() const { return int(m_stack.size()); }
    Q_INVOKABLE platform::ViewController *viewControllerAt(int index) const;
    ViewController *topViewController() const;
    // A bottom bar (tab strip) gives way while a pushed screen that asks for it is in the stack.
    bool isBottomBarHidden() const;

    void pushViewController(ViewController *controller, bool animated);
    // Pops the top screen unless it is the root; returns it (deleted later) or nullptr.
    ViewController *popViewController(bool animated);
    // What the bar's automatic back button does: pops the top screen, animated.
    Q_INVOKABLE void goBack() { popViewController(true); }
    // Pops every screen above `controller`; returns them, bottom first. Empty when `controller`
    // is not in the stack or already on top.
    QList<ViewController *> popToViewController(ViewController *controller, bool animated);
    QList<ViewController *> popToRootViewController(bool animated);
    // Replaces the whole stack; controllers not kept are deleted later.
    void setViewControllers(const QList<ViewController *> &controllers, bool animated);

    bool transitionsDrivenByView() const { return m_drivenByView; }
    void setTransitionsDrivenByView(bool driven);
    Q_INVOKABLE void finishTransition();

    QList<ViewController *> childViewControllers() const override { return m_stack; }
    QList<ViewController *> visibleChildViewControllers() const override;

signals:
    void viewControllersChanged();
    void transitionsDrivenByViewChanged();
    void pushed(platform::ViewController *controller, bool animated);
    // The stack now ends at `depth`; the view pops its pages above it.
    void popped(int depth, bool animated);
    // The whole stack changed; the view rebuilds its pages.
    void reset(bool animated);

private:
    bool canTakeIn(ViewController *controller) const;
    void forget(ViewController *controller);
    void runChange(ViewController *from, QList<ViewController *> removed, bool animated);

    QList<ViewController *> m_stack;
    bool m_drivenByView = false;
    AppearanceTransition m_transition;
};

} // namespace platform
