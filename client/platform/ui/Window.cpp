#include "platform/ui/Window.h"

namespace platform {

namespace {
QPointer<Window> s_keyWindow;
}

Window::Window(QObject *parent)
    : QObject(parent)
{ }

Window::~Window()
{
    m_transition.finish();
}

Window *Window::keyWindow()
{
    return s_keyWindow;
}

void Window::setRootViewController(ViewController *root)
{
    if (root == m_root)
        return;
    if (root && (root->parentViewController() || root->presentingViewController())) {
        qWarning("Window: a controller inside another one cannot become the root");
        return;
    }
    if (m_placingRoot) {
        // Set while the previous root is being placed (from its viewDidLoad, as the launch does):
        // it comes on screen once that placement is over, and a root replaced again before then
        // never appears and loads no view.
        if (m_root)
            m_replacedWhilePlacing.append(m_root);
        linkRoot(root);
        return;
    }
    m_transition.finish();
    const int oldPresented = presentedCount();
    ViewController *leaving = topViewController();
    QList<ViewController *> removed;
    if (m_root)
        removed.append(m_root);
    linkRoot(root);
    m_placingRoot = true;
    for (;;) {
        ViewController *placing = m_root;
        AppearanceTransition::Change change;
        change.from = leaving;
        change.to = placing;
        change.removed = removed;
        m_transition.start(contentState(), std::move(change), false);
        if (m_root == placing)
            break;
        leaving = placing->topOfPresentationChain();
        removed = std::exchange(m_replacedWhilePlacing, {});
    }
    m_placingRoot = false;
    emit rootViewControllerChanged();
    if (oldPresented > 0)
        emit presentedViewControllersChanged();
}

void Window::linkRoot(ViewController *root)
{
    if (m_root) {
        m_root->m_window = nullptr;
        disconnect(m_root, &QObject::destroyed, this, nullptr);
    }
    m_root = root;
    if (!root)
        return;
    root->setParent(this);
    root->m_window = this;
    // A root deleted from outside leaves an empty window behind, and says so.
    connect(root, &QObject::destroyed, this, [this] {
        emit rootViewControllerChanged();
        emit presentedViewControllersChanged();
    });
}

void Window::makeKeyAndVisible()
{
    s_keyWindow = this;
    if (m_visible)
        return;
    m_visible = true;
    emit visibleChanged();
    if (ViewController *top = topViewController()) {
        top->beginAppearanceTransition(true, false);
        top->endAppearanceTransition();
    }
}

QList<ViewController *> Window::presentedViewControllers() const
{
    QList<ViewController *> chain;
    if (!m_root)
        return chain;
    for (ViewController *p = m_root->presentedViewController(); p; p = p->presentedViewController())
        chain.append(p);
    return chain;
}

ViewController *Window::presentedViewControllerAt(int index) const
{
    return presentedViewControllers().value(index);
}

ViewController *Window::topViewController() const
{
    const QList<ViewController *> chain = presentedViewControllers();
    return chain.isEmpty() ? m_root.data() : chain.constLast();
}

void Window::setTransitionsDrivenByView(bool driven)
{
    if (m_drivenByView == driven)
        return;
    m_drivenByView = driven;
    if (!driven)
        m_transition.finish();
    emit transitionsDrivenByViewChanged();
}

void Window::finishTransition()
{
    m_transition.finish();
}

ViewController::Appearance Window::contentState() const
{
    return m_visible ? ViewController::Appeared : ViewController::Disappeared;
}

void Window::runPresentation(ViewController *presenter, ViewController *presented, bool animated,
                             ViewController::Completion completion)
{
    AppearanceTransition::Change change;
    change.from = presenter;
    change.to = presented;
    change.animated = animated;
    change.completion = std::move(completion);
    m_transition.start(contentState(), std::move(change), m_drivenByView);
    emit presentedViewControllersChanged();
    emit this->presented(presented, animated);
}

void Window::runDismissal(ViewController *presenter, ViewController *leaving,
                          ViewController *target, bool animated,
                          ViewController::Completion completion)
{
    AppearanceTransition::Change change;
    change.from = leaving;
    change.to = presenter;
    change.animated = animated;
    change.removed.append(target);
    change.completion = std::move(completion);
    m_transition.start(contentState(), std::move(change), m_drivenByView);
    emit presentedViewControllersChanged();
    emit dismissed(presentedCount(), animated);
}

} // namespace platform
