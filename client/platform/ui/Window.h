#pragma once

#include "platform/ui/AppearanceTransition.h"
#include "platform/ui/ViewController.h"

#include <QObject>
#include <QPointer>
#include <QtQml/qqmlregistration.h>

namespace platform {

// The app's window: shows its root controller and, over it, the chain of presented controllers.
// The QML shell mirrors both and, when it animates presentations, reports their end through
// finishTransition(). Signals come after the will-callbacks of the change they announce.
class Window : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(PlatformWindow)
    QML_UNCREATABLE("The window is created by C++")
    Q_PROPERTY(platform::ViewController *rootViewController READ rootViewController WRITE
                       setRootViewController NOTIFY rootViewControllerChanged)
    Q_PROPERTY(int presentedCount READ presentedCount NOTIFY presentedViewControllersChanged)
    Q_PROPERTY(bool visible READ isVisible NOTIFY visibleChanged)
    Q_PROPERTY(bool transitionsDrivenByView READ transitionsDrivenByView WRITE
                       setTransitionsDrivenByView NOTIFY transitionsDrivenByViewChanged)

public:
    explicit Window(QObject *parent = nullptr);
    ~Window() override;

    // The window that last became key, if it still exists.
    static Window *keyWindow();

    ViewController *rootViewController() const { return m_root; }
    // Takes ownership of `root`; the previous root and everything it presents are deleted later.
    void setRootViewController(ViewController *root);
    bool isVisible() const { return m_visible; }
    // Shows the window: its content appears.
    void makeKeyAndVisible();

    // The presented controllers from bottom to top.
    QList<ViewController *> presentedViewControllers() const;
    int presentedCount() const { return int(presentedViewControllers().size()); }
    Q_INVOKABLE platform::ViewController *presentedViewControllerAt(int index) const;
    // What is on top: the last presented controller, or the root.
    ViewController *topViewController() const;

    bool transitionsDrivenByView() const { return m_drivenByView; }
    void setTransitionsDrivenByView(bool driven);
    Q_INVOKABLE void finishTransition();

signals:
    void rootViewControllerChanged();
    void visibleChanged();
    void transitionsDrivenByViewChanged();
    void presentedViewControllersChanged();
    // `controller` slides up over everything.
    void presented(platform::ViewController *controller, bool animated);
    // The presented controllers from `index` up leave, sliding down.
    void dismissed(int index, bool animated);

private:
    friend class ViewController;

    void runPresentation(ViewController *presenter, ViewController *presented, bool animated,
                         ViewController::Completion completion);
    void runDismissal(ViewController *presenter, ViewController *leaving, ViewController *target,
                      bool animated, ViewController::Completion completion);
    ViewController::Appearance contentState() const;
    void linkRoot(ViewController *root);

    QPointer<ViewController> m_root;
    // While a root is being placed, the roots set and replaced again meanwhile.
    QList<ViewController *> m_replacedWhilePlacing;
    bool m_placingRoot = false;
    bool m_visible = false;
    bool m_drivenByView = false;
    AppearanceTransition m_transition;
};

} // namespace platform
