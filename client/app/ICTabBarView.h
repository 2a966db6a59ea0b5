#pragma once

#include <QColor>
#include <QObject>
#include <QRectF>
#include <QtQml/qqmlregistration.h>

// The drawn tab strip: a band 49 points high along the bottom with a thin grey line on top, and
// the cart badge at the upper right of the cart tab. Positions are in points within the strip,
// which is as wide as the screen (the view reports its width). Its colours are the Theme's.
class ICTabBarView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("The tab strip belongs to its tab bar controller")
    Q_PROPERTY(qreal width READ width WRITE setWidth NOTIFY widthChanged)
    Q_PROPERTY(qreal height READ height CONSTANT)
    Q_PROPERTY(QColor topLineColor READ topLineColor NOTIFY topLineChanged)
    Q_PROPERTY(qreal topLineWidth READ topLineWidth NOTIFY topLineChanged)
    Q_PROPERTY(int hideAnimationDuration READ hideAnimationDuration CONSTANT)
    Q_PROPERTY(qreal badgeSize READ badgeSize CONSTANT)
    Q_PROPERTY(QRectF badgeRect READ badgeRect NOTIFY widthChanged)
public:
    static constexpr qreal Height = 49;
    static constexpr qreal PhoneWidth = 375;
    static constexpr int HideAnimationMs = 200;

    explicit ICTabBarView(QObject *parent = nullptr);

    qreal width() const { return m_width; }
    void setWidth(qreal width);
    qreal height() const { return Height; }
    QColor topLineColor() const { return m_topLineColor; }
    qreal topLineWidth() const { return m_topLineWidth; }
    // The line across the top of the strip.
    void drawTopLine(const QColor &color, qreal width);
    int hideAnimationDuration() const { return HideAnimationMs; }

    // Button `index` of `count` sharing the strip.
    QRectF buttonFrame(int index, int count) const;

    qreal badgeSize() const { return 15; }
    // Three points below the top, at three eighths of the width plus 4.
    QRectF badgeRect() const;

signals:
    void widthChanged();
    void topLineChanged();

private:
    qreal m_width = PhoneWidth;
    QColor m_topLineColor = Qt::transparent;
    qreal m_topLineWidth = 0;
};
