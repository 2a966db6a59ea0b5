#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QUrl>
#include <QtQml/qqmlregistration.h>

#include <functional>

namespace platform {

class BarButtonItem;
class NavigationController;
class TabBarController;
class Window;

// One screen's controller. C++ creates and owns controllers; the QML shell shows `viewSource` for
// it (a generic placeholder page when empty) and reports when its animations end.
//
// Inside a navigation stack the bar shows `leftBarItem` and `rightBarItem`; a pushed screen whose
// left item is empty gets the platform's back button instead (hide the item to show nothing).
//
// Appearance runs through begin/endAppearanceTransition, which containers and the window call:
// the first appearance loads the view (viewDidLoad, exactly once), then viewWillAppear; the end of
// the transition brings viewDidAppear. Leaving mirrors it with viewWillDisappear/viewDidDisappear.
// Containers pass the calls on to the children they show.
class ViewController : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(QString title READ title WRITE setTitle NOTIFY titleChanged)
    Q_PROPERTY(QUrl viewSource READ viewSource WRITE setViewSource NOTIFY viewSourceChanged)
    Q_PROPERTY(QUrl titleViewSource READ titleViewSource WRITE setTitleViewSource NOTIFY
                       titleViewSourceChanged)
    Q_PROPERTY(platform::BarButtonItem *leftBarItem READ leftBarItem CONSTANT)
    Q_PROPERTY(platform::BarButtonItem *rightBarItem READ rightBarItem CONSTANT)
    Q_PROPERTY(bool navigationBarHidden READ isNavigationBarHidden WRITE setNavigationBarHidden
                       NOTIFY navigationBarChanged)
    Q_PROPERTY(bool navigationBarTransparent READ isNavigationBarTransparent WRITE
                       setNavigationBarTransparent NOTIFY navigationBarChanged)
    Q_PROPERTY(bool hidesBottomBarWhenPushed READ hidesBottomBarWhenPushed WRITE
                       setHidesBottomBarWhenPushed NOTIFY hidesBottomBarWhenPushedChanged)
    Q_PROPERTY(Kind kind READ kind CONSTANT)
    Q_PROPERTY(platform::NavigationController *navigationController READ navigationController NOTIFY
                       parentViewControllerChanged)
    Q_PROPERTY(platform::TabBarController *tabBarController READ tabBarController NOTIFY
                       parentViewControllerChanged)
    Q_PROPERTY(bool viewLoaded READ isViewLoaded NOTIFY viewLoadedChanged)
    Q_PROPERTY(Appearance appearance READ appearance NOTIFY appearanceChanged)

public:
    enum Kind { Plain, Navigation, TabBar };
    Q_ENUM(Kind)
    enum Appearance { Disappeared, Appearing, Appeared, Disappearing };
    Q_ENUM(Appearance)
    using Completion = std::function<void()>;

    explicit ViewController(QObject *parent = nullptr);
    ~ViewController() override;

    QString title() const { return m_title; }
    void setTitle(const QString &title);
    QUrl viewSource() const { return m_viewSource; }
    void setViewSource(const QUrl &source);
    QUrl titleViewSource() const { return m_titleViewSource; }
    void setTitleViewSource(const QUrl &source);
    BarButtonItem *leftBarItem() const { return m_leftBarItem; }
    BarButtonItem *rightBarItem() const { return m_rightBarItem; }
    bool isNavigationBarHidden() const { return m_navigationBarHidden; }
    void setNavigationBarHidden(bool hidden);
    bool isNavigationBarTransparent() const { return m_navigationBarTransparent; }
    void setNavigationBarTransparent(bool transparent);
    bool hidesBottomBarWhenPushed() const { return m_hidesBottomBarWhenPushed; }
    void setHidesBottomBarWhenPushed(bool hides);
    Kind kind() const { return m_kind; }

    ViewController *parentViewController() const { return m_parentViewController; }
    NavigationController *navigationController() const;
    TabBarController *tabBarController() const;
    // The window showing this controller's tree, or nullptr.
    Window *window() const;

    // Shows `controller` over everything, sliding up; this controller's tree owns it from now on.
    // Presenting while something is presented already stacks the new one on top.
    void presentViewController(ViewController *controller, bool animated,
                               Completion completion = {});
    // Dismisses what this controller (or its containing screen) presents; a presented controller
    // (or one inside it) dismisses itself. Dismissed controllers are deleted later.
    void dismissViewController(bool animated, Completion completion = {});
    ViewController *presentedViewController() const { return m_presentedViewController; }
    ViewController *presentingViewController() const { return m_presentingViewController; }

    bool isViewLoaded() const { return m_viewLoaded; }
    Q_INVOKABLE void loadViewIfNeeded();
    Appearance appearance() const { return m_appearance; }
    bool isOnScreen() const { return m_appearance == Appearing || m_appearance == Appeared; }
    void beginAppearanceTransition(bool appearing, bool animated);
    void endAppearanceTransition();

    // Containers override: every child they hold, and the ones they show right now.
    virtual QList<ViewController *> childViewControllers() const { return {}; }
    virtual QList<ViewController *> visibleChildViewControllers() const { return {}; }

signals:
    void titleChanged();
    void viewSourceChanged();
    void titleViewSourceChanged();
    void navigationBarChanged();
    void hidesBottomBarWhenPushedChanged();
    void parentViewControllerChanged();
    void viewLoadedChanged();
    void appearanceChanged();
    void presentedViewControllerChanged();

protected:
    ViewController(Kind kind, QObject *parent);

    virtual void viewDidLoad() { }
    virtual void viewWillAppear(bool animated) { Q_UNUSED(animated) }
    virtual void viewDidAppear(bool animated) { Q_UNUSED(animated) }
    virtual void viewWillDisappear(bool animated) { Q_UNUSED(animated) }
    virtual void viewDidDisappear(bool animated) { Q_UNUSED(animated) }

    // Containers: take `child` into this controller (ownership and parent link) or let it go.
    void adoptChild(ViewController *child);
    void releaseChild(ViewController *child);

private:
    friend class Window;

    ViewController *containmentRoot() const;
    ViewController *topOfPresentationChain();
    ViewController *dismissalTarget();
    void setAppearance(Appearance appearance);
    void notifyAncestryChanged();

    Kind m_kind = Plain;
    QString m_title;
    QUrl m_viewSource;
    QUrl m_titleViewSource;
    BarButtonItem *m_leftBarItem = nullptr;
    BarButtonItem *m_rightBarItem = nullptr;
    bool m_navigationBarHidden = false;
    bool m_navigationBarTransparent = false;
    bool m_hidesBottomBarWhenPushed = false;
    bool m_viewLoaded = false;
    Appearance m_appearance = Disappeared;
    bool m_lastTransitionAnimated = false;
    QPointer<ViewController> m_parentViewController;
    QPointer<ViewController> m_presentedViewController;
    QPointer<ViewController> m_presentingViewController;
    QPointer<Window> m_window; // set on a window's root only
};

} // namespace platform
