#include "screens/account/FoldingRowView.h"

FoldingRowView::FoldingRowView(qreal fullHeight, QObject *parent)
    : QObject(parent)
    , m_fullHeight(fullHeight)
    , m_height(fullHeight)
{
    m_animation.setDuration(AnimationMs);
    connect(&m_animation, &QVariantAnimation::valueChanged, this,
            [this](const QVariant &value) { setHeight(value.toReal()); });
}

void FoldingRowView::fold()
{
    animateTo(0);
    connect(
            &m_animation, &QVariantAnimation::finished, this, [this] { setHidden(true); },
            Qt::SingleShotConnection);
}

void FoldingRowView::unfold()
{
    setHidden(false);
    animateTo(m_fullHeight);
}

void FoldingRowView::animateTo(qreal height)
{
    m_animation.stop();
    disconnect(&m_animation, &QVariantAnimation::finished, this, nullptr);
    m_animation.setStartValue(m_height);
    m_animation.setEndValue(height);
    m_animation.start();
}

void FoldingRowView::setHeight(qreal height)
{
    if (m_height == height)
        return;
    m_height = height;
    emit changed();
}

void FoldingRowView::setHidden(bool hidden)
{
    if (m_hidden == hidden)
        return;
    m_hidden = hidden;
    emit changed();
}
