#include "platform/ui/ViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TabBarController.h"
#include "platform/ui/Window.h"

#include <QDebug>

namespace platform {

ViewController::ViewController(QObject *parent)
    : ViewController(Plain, parent)
{ }

ViewController::ViewController(Kind kind, QObject *parent)
    : QObject(parent)
    , m_kind(kind)
    , m_leftBarItem(new BarButtonItem(this))
    , m_rightBarItem(new BarButtonItem(this))
{ }

ViewController::~ViewController()
{
    if (m_presentingViewController && m_presentingViewController->m_presentedViewController == this)
        m_presentingViewController->m_presentedViewController = nullptr;
}

void ViewController::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    emit titleChanged();
}

void ViewController::setViewSource(const QUrl &source)
{
    if (m_viewSource == source)
        return;
    m_viewSource = source;
    emit viewSourceChanged();
}

void ViewController::setTitleViewSource(const QUrl &source)
{
    if (m_titleViewSource == source)
        return;
    m_titleViewSource = source;
    emit titleViewSourceChanged();
}

void ViewController::setNavigationBarHidden(bool hidden)
{
    if (m_navigationBarHidden == hidden)
        return;
    m_navigationBarHidden = hidden;
    emit navigationBarChanged();
}

void ViewController::setNavigationBarTransparent(bool transparent)
{
    if (m_navigationBarTransparent == transparent)
        return;
    m_navigationBarTransparent = transparent;
    emit navigationBarChanged();
}

void ViewController::setHidesBottomBarWhenPushed(bool hides)
{
    if (m_hidesBottomBarWhenPushed == hides)
        return;
    m_hidesBottomBarWhenPushed = hides;
    emit hidesBottomBarWhenPushedChanged();
}

NavigationController *ViewController::navigationController() const
{
    for (ViewController *p = m_parentViewController; p; p = p->m_parentViewController) {
        if (p->kind() == Navigation)
            return static_cast<NavigationController *>(p);
    }
    return nullptr;
}

TabBarController *ViewController::tabBarController() const
{
    for (ViewController *p = m_parentViewController; p; p = p->m_parentViewController) {
        if (p->kind() == TabBar)
            return static_cast<TabBarController *>(p);
    }
    return nullptr;
}

Window *ViewController::window() const
{
    const ViewController *p = containmentRoot();
    while (p->m_presentingViewController)
        p = p->m_presentingViewController->containmentRoot();
    return p->m_window;
}

ViewController *ViewController::containmentRoot() const
{
    const ViewController *p = this;
    while (p->m_parentViewController)
        p = p->m_parentViewController;
    return const_cast<ViewController *>(p);
}

ViewController *ViewController::topOfPresentationChain()
{
    ViewController *p = containmentRoot();
    while (p->m_presentedViewController)
        p = p->m_presentedViewController;
    return p;
}

void ViewController::presentViewController(ViewController *controller, bool animated,
                                           Completion completion)
{
    if (!controller || controller == this || controller->m_parentViewController
        || controller->m_presentingViewController || controller->m_window) {
        qWarning() << "presentViewController: refusing to present" << controller
                   << "(missing, already shown elsewhere, or the presenter itself)";
        return;
    }
    ViewController *presenter = topOfPresentationChain();
    presenter->m_presentedViewController = controller;
    controller->m_presentingViewController = presenter;
    controller->setParent(presenter);
    emit presenter->presentedViewControllerChanged();

    if (Window *w = window())
        w->runPresentation(presenter, controller, animated, std::move(completion));
    else if (completion)
        completion();
}

// The presented controller that a dismissal called on this controller removes: what this
// controller or its containing screen presents, else the containing screen itself if presented.
ViewController *ViewController::dismissalTarget()
{
    if (m_presentedViewController)
        return m_presentedViewController;
    ViewController *root = containmentRoot();
    if (root->m_presentedViewController)
        return root->m_presentedViewController;
    if (root->m_presentingViewController)
        return root;
    return nullptr;
}

void ViewController::dismissViewController(bool animated, Completion completion)
{
    ViewController *target = dismissalTarget();
    if (!target) {
        if (completion)
            completion();
        return;
    }
    ViewController *presenter = target->m_presentingViewController;
    ViewController *leaving = target->topOfPresentationChain();
    Window *w = window();
    presenter->m_presentedViewController = nullptr;
    emit presenter->presentedViewControllerChanged();

    if (w) {
        w->runDismissal(presenter, leaving, target, animated, std::move(completion));
        return;
    }
    target->deleteLater();
    if (completion)
        completion();
}

void ViewController::loadViewIfNeeded()
{
    if (m_viewLoaded)
        return;
    m_viewLoaded = true;
    viewDidLoad();
    emit viewLoadedChanged();
}

void ViewController::beginAppearanceTransition(bool appearing, bool animated)
{
    if (appearing == isOnScreen())
        return;
    m_lastTransitionAnimated = animated;
    if (appearing) {
        loadViewIfNeeded();
        setAppearance(Appearing);
        viewWillAppear(animated);
    } else {
        setAppearance(Disappearing);
        viewWillDisappear(animated);
    }
    for (ViewController *child : visibleChildViewControllers())
        child->beginAppearanceTransition(appearing, animated);
}

void ViewController::endAppearanceTransition()
{
    if (m_appearance == Appearing) {
        setAppearance(Appeared);
        viewDidAppear(m_lastTransitionAnimated);
    } else if (m_appearance == Disappearing) {
        setAppearance(Disappeared);
        viewDidDisappear(m_lastTransitionAnimated);
    } else {
        return;
    }
    for (ViewController *child : visibleChildViewControllers())
        child->endAppearanceTransition();
}

void ViewController::setAppearance(Appearance appearance)
{
    m_appearance = appearance;
    emit appearanceChanged();
}

void ViewController::adoptChild(ViewController *child)
{
    child->setParent(this);
    child->m_parentViewController = this;
    child->notifyAncestryChanged();
}

void ViewController::releaseChild(ViewController *child)
{
    if (child->m_parentViewController != this)
        return;
    child->m_parentViewController = nullptr;
    child->notifyAncestryChanged();
}

// The navigation and tab bar controllers of a whole subtree change with its parent.
void ViewController::notifyAncestryChanged()
{
    emit parentViewControllerChanged();
    for (ViewController *child : childViewControllers())
        child->notifyAncestryChanged();
}

} // namespace platform
