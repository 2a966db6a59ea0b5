#include "util/ICFrameHelper.h"

#include <QFontMetricsF>

#include <cmath>

namespace {

constexpr qreal Unbounded = 1e7;

} // namespace

qreal ICFrameHelper::heightOfText(const QString &text, const QFont &font, qreal width)
{
    const QFontMetricsF metrics(font);
    const QRectF used
            = metrics.boundingRect(QRectF(0, 0, width, Unbounded), Qt::TextWordWrap, text);
    return std::ceil(used.height());
}

qreal ICFrameHelper::widthOfText(const QString &text, const QFont &font, qreal height)
{
    // Nothing wraps at an unbounded width: the widest of the text's own lines.
    const QFontMetricsF metrics(font);
    const QRectF used = metrics.boundingRect(QRectF(0, 0, Unbounded, height), 0, text);
    return std::ceil(used.width());
}

QRectF ICFrameHelper::rectWithHeight(const QRectF &rect, qreal height)
{
    return QRectF(rect.x(), rect.y(), rect.width(), height);
}

QRectF ICFrameHelper::rectWithWidth(const QRectF &rect, qreal width)
{
    return QRectF(rect.x(), rect.y(), width, rect.height());
}

QRectF ICFrameHelper::rectWithX(const QRectF &rect, qreal x)
{
    return QRectF(x, rect.y(), rect.width(), rect.height());
}

QRectF ICFrameHelper::rectWithY(const QRectF &rect, qreal y)
{
    return QRectF(rect.x(), y, rect.width(), rect.height());
}
