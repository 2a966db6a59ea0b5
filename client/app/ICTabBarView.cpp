#include "app/ICTabBarView.h"

ICTabBarView::ICTabBarView(QObject *parent)
    : QObject(parent)
{ }

void ICTabBarView::setWidth(qreal width)
{
    if (qFuzzyCompare(m_width, width) || width <= 0)
        return;
    m_width = width;
    emit widthChanged();
}

void ICTabBarView::drawTopLine(const QColor &color, qreal width)
{
    m_topLineColor = color;
    m_topLineWidth = width;
    emit topLineChanged();
}

QRectF ICTabBarView::buttonFrame(int index, int count) const
{
    if (count <= 0)
        return {};
    const qreal width = m_width / count;
    return QRectF(index * width, 0, width, Height);
}

QRectF ICTabBarView::badgeRect() const
{
    return QRectF(m_width * 3 / 8 + 4, 3, badgeSize(), badgeSize());
}
