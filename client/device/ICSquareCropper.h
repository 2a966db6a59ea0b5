#pragma once

#include <QObject>
#include <QPointF>
#include <QRect>
#include <QSize>
#include <QtQml/qqmlregistration.h>

class QImage;

// The square-crop editor's geometry: a picture under a square frame of `frameSide` view units,
// moved and zoomed by the user but always covering the whole frame. The crop sheet draws the
// picture at (imageX, imageY) with (imageWidth x imageHeight) relative to the frame's corner;
// cropRect() is the part of the picture inside the frame, in the picture's pixels.
class ICSquareCropper : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Owned by the picture picker")
    Q_PROPERTY(qreal imageX READ imageX NOTIFY geometryChanged)
    Q_PROPERTY(qreal imageY READ imageY NOTIFY geometryChanged)
    Q_PROPERTY(qreal imageWidth READ imageWidth NOTIFY geometryChanged)
    Q_PROPERTY(qreal imageHeight READ imageHeight NOTIFY geometryChanged)
    Q_PROPERTY(qreal frameSide READ frameSide WRITE setFrameSide NOTIFY geometryChanged)
    // 1 when the picture just covers the frame, up to maximumZoom.
    Q_PROPERTY(qreal zoom READ zoom WRITE setZoom NOTIFY geometryChanged)
    Q_PROPERTY(qreal maximumZoom READ maximumZoom CONSTANT)
public:
    static constexpr qreal MaximumZoom = 4;
    // The side of every picture the editor hands on.
    static constexpr int OutputSide = 320;

    explicit ICSquareCropper(QObject *parent = nullptr);

    // A new picture: zoom 1, centred.
    void setImageSize(const QSize &size);
    QSize imageSize() const { return m_imageSize; }
    qreal frameSide() const { return m_frameSide; }
    void setFrameSide(qreal side);

    qreal imageX() const { return m_offset.x(); }
    qreal imageY() const { return m_offset.y(); }
    qreal imageWidth() const { return m_imageSize.width() * m_scale; }
    qreal imageHeight() const { return m_imageSize.height() * m_scale; }
    qreal zoom() const;
    // Zooms about the frame's centre.
    void setZoom(qreal zoom);
    qreal maximumZoom() const { return MaximumZoom; }

    // A drag by (dx, dy) view units.
    Q_INVOKABLE void moveBy(qreal dx, qreal dy);
    // A pinch or wheel step by `factor`, keeping the picture's point under (x, y) of the frame
    // where it is.
    Q_INVOKABLE void zoomBy(qreal factor, qreal x, qreal y);
    Q_INVOKABLE void reset();

    // The square inside the frame, in picture pixels, within the picture.
    QRect cropRect() const;
    // `rect` of `image` drawn into a new OutputSide x OutputSide picture (white under any
    // transparency).
    static QImage squareImage(const QImage &image, const QRect &rect);

signals:
    void geometryChanged();

private:
    qreal minimumScale() const;
    void setScaleAbout(qreal scale, const QPointF &anchor);
    void clampOffset();

    QSize m_imageSize;
    qreal m_frameSide = 300;
    qreal m_scale = 1; // view units per picture pixel
    QPointF m_offset; // the picture's corner relative to the frame's
};
