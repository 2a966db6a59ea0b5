#pragma once

#include <QFont>
#include <QRectF>
#include <QString>

// Layout arithmetic for the screens: text extents and rectangle copies.
class ICFrameHelper
{
public:
    // The height `text` needs in `font` wrapped at `width` (a label's height at its width).
    static qreal heightOfText(const QString &text, const QFont &font, qreal width);
    // The width `text` needs in `font` at `height`, unwrapped (its widest line).
    static qreal widthOfText(const QString &text, const QFont &font, qreal height);

    static qreal bottomOf(const QRectF &rect) { return rect.y() + rect.height(); }
    static QRectF rectWithHeight(const QRectF &rect, qreal height);
    static QRectF rectWithWidth(const QRectF &rect, qreal width);
    static QRectF rectWithX(const QRectF &rect, qreal x);
    static QRectF rectWithY(const QRectF &rect, qreal y);
};
