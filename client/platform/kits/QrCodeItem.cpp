#include "platform/kits/QrCodeItem.h"

#include <QPainter>

namespace platform {

QrCodeItem::QrCodeItem(QQuickItem *parent)
    : QQuickPaintedItem(parent)
{
    setAntialiasing(false);
}

void QrCodeItem::setText(const QString &text)
{
    if (text == m_text)
        return;
    m_text = text;
    m_code = QrCode::encode(text);
    emit textChanged();
    update();
}

void QrCodeItem::setColor(const QColor &color)
{
    if (color == m_color)
        return;
    m_color = color;
    emit colorChanged();
    update();
}

void QrCodeItem::paint(QPainter *painter)
{
    const int side = int(qMin(width(), height()));
    if (m_code.isNull() || side <= 0)
        return;
    const int moduleSize = qMax(1, side / m_code.width());
    const int drawn = moduleSize * m_code.width();
    const int left = (int(width()) - drawn) / 2;
    const int top = (int(height()) - drawn) / 2;
    for (int y = 0; y < m_code.width(); ++y) {
        for (int x = 0; x < m_code.width(); ++x) {
            if (m_code.isDark(x, y))
                painter->fillRect(left + x * moduleSize, top + y * moduleSize, moduleSize,
                                  moduleSize, m_color);
        }
    }
}

} // namespace platform
