#include "device/ICSquareCropper.h"

#include <QImage>
#include <QPainter>

#include <algorithm>
#include <cmath>

ICSquareCropper::ICSquareCropper(QObject *parent)
    : QObject(parent)
{ }

void ICSquareCropper::setImageSize(const QSize &size)
{
    m_imageSize = size;
    reset();
}

void ICSquareCropper::setFrameSide(qreal side)
{
    if (side <= 0 || qFuzzyCompare(side, m_frameSide))
        return;
    const qreal keptZoom = zoom();
    m_frameSide = side;
    m_scale = minimumScale() * keptZoom;
    clampOffset();
    emit geometryChanged();
}

qreal ICSquareCropper::minimumScale() const
{
    const int shortSide = std::min(m_imageSize.width(), m_imageSize.height());
    return shortSide > 0 ? m_frameSide / shortSide : 1;
}

qreal ICSquareCropper::zoom() const
{
    return m_scale / minimumScale();
}

void ICSquareCropper::setZoom(qreal zoom)
{
    const qreal centre = m_frameSide / 2;
    setScaleAbout(minimumScale() * zoom, QPointF(centre, centre));
}

void ICSquareCropper::reset()
{
    m_scale = minimumScale();
    m_offset = QPointF((m_frameSide - imageWidth()) / 2, (m_frameSide - imageHeight()) / 2);
    emit geometryChanged();
}

void ICSquareCropper::moveBy(qreal dx, qreal dy)
{
    m_offset += QPointF(dx, dy);
    clampOffset();
    emit geometryChanged();
}

void ICSquareCropper::zoomBy(qreal factor, qreal x, qreal y)
{
    if (factor > 0)
        setScaleAbout(m_scale * factor, QPointF(x, y));
}

void ICSquareCropper::setScaleAbout(qreal scale, const QPointF &anchor)
{
    const qreal bounded = std::clamp(scale, minimumScale(), minimumScale() * MaximumZoom);
    const QPointF pictureAnchor = (anchor - m_offset) / m_scale;
    m_scale = bounded;
    m_offset = anchor - pictureAnchor * m_scale;
    clampOffset();
    emit geometryChanged();
}

// The frame never shows anything but the picture.
void ICSquareCropper::clampOffset()
{
    m_offset.setX(std::clamp(m_offset.x(), std::min(0.0, m_frameSide - imageWidth()), 0.0));
    m_offset.setY(std::clamp(m_offset.y(), std::min(0.0, m_frameSide - imageHeight()), 0.0));
}

QRect ICSquareCropper::cropRect() const
{
    if (m_imageSize.isEmpty())
        return {};
    const int shortSide = std::min(m_imageSize.width(), m_imageSize.height());
    const int side = std::clamp(int(std::lround(m_frameSide / m_scale)), 1, shortSide);
    const int x
            = std::clamp(int(std::lround(-m_offset.x() / m_scale)), 0, m_imageSize.width() - side);
    const int y
            = std::clamp(int(std::lround(-m_offset.y() / m_scale)), 0, m_imageSize.height() - side);
    return QRect(x, y, side, side);
}

QImage ICSquareCropper::squareImage(const QImage &image, const QRect &rect)
{
    QImage square(OutputSide, OutputSide, QImage::Format_RGB32);
    square.setDevicePixelRatio(1);
    square.fill(Qt::white);
    QPainter painter(&square);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(QRectF(0, 0, OutputSide, OutputSide), image, QRectF(rect));
    painter.end();
    return square;
}
