#pragma once

#include "platform/ui/ViewController.h"

#include <QPointer>
#include <QtQml/qqmlregistration.h>

// A sliding-panel root: the centre panel lies over a left and a right panel and slides aside to
// reveal one of them, by a button or by dragging it. A thin border marks the centre's edge.
class SlidePanelController : public platform::ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(platform::ViewController *centerPanel READ centerPanel NOTIFY panelsChanged)
    Q_PROPERTY(platform::ViewController *leftPanel READ leftPanel NOTIFY panelsChanged)
    Q_PROPERTY(platform::ViewController *rightPanel READ rightPanel NOTIFY panelsChanged)
    Q_PROPERTY(Revealed revealed READ revealed NOTIFY revealedChanged)
    Q_PROPERTY(qreal leftRevealAmount READ leftRevealAmount CONSTANT)
    Q_PROPERTY(qreal rightPeekAmount READ rightPeekAmount CONSTANT)
    Q_PROPERTY(qreal borderWidth READ borderWidth CONSTANT)
public:
    enum Revealed { CenterShown, LeftRevealed, RightRevealed };
    Q_ENUM(Revealed)

    explicit SlidePanelController(QObject *parent = nullptr);

    // Each panel is taken over; one it replaces is deleted later.
    void setCenterPanel(platform::ViewController *panel);
    void setLeftPanel(platform::ViewController *panel);
    void setRightPanel(platform::ViewController *panel);
    platform::ViewController *centerPanel() const { return m_center; }
    platform::ViewController *leftPanel() const { return m_left; }
    platform::ViewController *rightPanel() const { return m_right; }

    Revealed revealed() const { return m_revealed; }
    // How far the centre moves right to show the left panel.
    qreal leftRevealAmount() const { return 260; }
    // How much of the centre stays in sight at the left while the right panel shows.
    qreal rightPeekAmount() const { return 60; }
    qreal borderWidth() const { return 0.5; }

    Q_INVOKABLE void showLeftPanel();
    Q_INVOKABLE void showRightPanel();
    Q_INVOKABLE void showCenterPanel();
    Q_INVOKABLE void toggleLeftPanel();
    Q_INVOKABLE void toggleRightPanel();
    // Where a drag leaves the centre in a view `width` wide: its horizontal position, 0 where it
    // rests when centred, right positive. Past half of a panel's way that panel shows, else the
    // centre returns.
    Q_INVOKABLE void finishPan(qreal offset, qreal width);
    // Where the centre rests in a view `width` wide for the current state.
    Q_INVOKABLE qreal centerOffset(qreal width) const;

    QList<platform::ViewController *> childViewControllers() const override;
    QList<platform::ViewController *> visibleChildViewControllers() const override;

signals:
    void panelsChanged();
    void revealedChanged();

private:
    void replacePanel(QPointer<platform::ViewController> &slot, platform::ViewController *panel);
    void setRevealed(Revealed revealed);

    QPointer<platform::ViewController> m_center;
    QPointer<platform::ViewController> m_left;
    QPointer<platform::ViewController> m_right;
    Revealed m_revealed = CenterShown;
};
