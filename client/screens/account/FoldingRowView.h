#pragma once

#include <QObject>
#include <QVariantAnimation>
#include <QtQml/qqmlregistration.h>

// A row of a form that folds away and back: it shrinks to no height and is then hidden, or shows
// at once and grows back to its full height, each time in a half-second animation.
class FoldingRowView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by the screen that holds the row")
    Q_PROPERTY(qreal height READ height NOTIFY changed)
    Q_PROPERTY(bool hidden READ isHidden NOTIFY changed)
    Q_PROPERTY(qreal fullHeight READ fullHeight CONSTANT)
public:
    static constexpr int AnimationMs = 500;

    explicit FoldingRowView(qreal fullHeight, QObject *parent = nullptr);

    qreal height() const { return m_height; }
    qreal fullHeight() const { return m_fullHeight; }
    bool isHidden() const { return m_hidden; }
    bool isAnimating() const { return m_animation.state() == QAbstractAnimation::Running; }

    void fold();
    void unfold();

signals:
    void changed();

private:
    void animateTo(qreal height);
    void setHeight(qreal height);
    void setHidden(bool hidden);

    qreal m_fullHeight;
    qreal m_height;
    bool m_hidden = false;
    QVariantAnimation m_animation;
};
