#include "app/ICTabBarItem.h"

ICTabBarItem::ICTabBarItem(QObject *parent)
    : platform::Button(parent)
{
    // The title line only takes room while there is a title.
    connect(this, &platform::Button::changed, this, &ICTabBarItem::frameChanged);
}

void ICTabBarItem::setFrame(const QRectF &frame)
{
    if (m_frame == frame)
        return;
    m_frame = frame;
    emit frameChanged();
}

QRectF ICTabBarItem::imageRect() const
{
    const qreal titleRoom = currentTitle().isEmpty() ? 0 : TitleHeight;
    return QRectF(0, 0, m_frame.width(), qMax<qreal>(0, m_frame.height() - titleRoom));
}

QRectF ICTabBarItem::titleRect() const
{
    if (currentTitle().isEmpty())
        return QRectF(0, m_frame.height(), m_frame.width(), 0);
    return QRectF(0, m_frame.height() - TitleHeight, m_frame.width(), TitleHeight);
}
