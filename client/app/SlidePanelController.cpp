#include "app/SlidePanelController.h"

SlidePanelController::SlidePanelController(QObject *parent)
    : platform::ViewController(parent)
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/app/SlidePanelView.qml")));
}

void SlidePanelController::setCenterPanel(platform::ViewController *panel)
{
    replacePanel(m_center, panel);
}

void SlidePanelController::setLeftPanel(platform::ViewController *panel)
{
    replacePanel(m_left, panel);
}

void SlidePanelController::setRightPanel(platform::ViewController *panel)
{
    replacePanel(m_right, panel);
}

// The panels are on screen together (the side ones under the centre), so they come and go with
// this controller.
void SlidePanelController::replacePanel(QPointer<platform::ViewController> &slot,
                                        platform::ViewController *panel)
{
    if (slot == panel)
        return;
    if (panel && (panel->parentViewController() || panel->presentingViewController())) {
        qWarning("SlidePanelController: the panel is already shown elsewhere");
        return;
    }
    if (platform::ViewController *old = slot) {
        if (old->isOnScreen()) {
            old->beginAppearanceTransition(false, false);
            old->endAppearanceTransition();
        }
        releaseChild(old);
        old->deleteLater();
    }
    slot = panel;
    if (panel) {
        adoptChild(panel);
        if (isOnScreen()) {
            panel->beginAppearanceTransition(true, false);
            panel->endAppearanceTransition();
        }
    }
    emit panelsChanged();
}

void SlidePanelController::showLeftPanel()
{
    if (m_left)
        setRevealed(LeftRevealed);
}

void SlidePanelController::showRightPanel()
{
    if (m_right)
        setRevealed(RightRevealed);
}

void SlidePanelController::showCenterPanel()
{
    setRevealed(CenterShown);
}

void SlidePanelController::toggleLeftPanel()
{
    if (m_revealed == LeftRevealed)
        showCenterPanel();
    else
        showLeftPanel();
}

void SlidePanelController::toggleRightPanel()
{
    if (m_revealed == RightRevealed)
        showCenterPanel();
    else
        showRightPanel();
}

void SlidePanelController::finishPan(qreal offset, qreal width)
{
    if (offset > leftRevealAmount() / 2 && m_left)
        setRevealed(LeftRevealed);
    else if (-offset > (width - rightPeekAmount()) / 2 && m_right)
        setRevealed(RightRevealed);
    else
        setRevealed(CenterShown);
}

qreal SlidePanelController::centerOffset(qreal width) const
{
    switch (m_revealed) {
    case LeftRevealed:
        return leftRevealAmount();
    case RightRevealed:
        return -(width - rightPeekAmount());
    case CenterShown:
        break;
    }
    return 0;
}

void SlidePanelController::setRevealed(Revealed revealed)
{
    if (m_revealed == revealed)
        return;
    m_revealed = revealed;
    emit revealedChanged();
}

QList<platform::ViewController *> SlidePanelController::childViewControllers() const
{
    QList<platform::ViewController *> children;
    for (platform::ViewController *panel : {m_center.data(), m_left.data(), m_right.data()}) {
        if (panel)
            children.append(panel);
    }
    return children;
}

QList<platform::ViewController *> SlidePanelController::visibleChildViewControllers() const
{
    return childViewControllers();
}
