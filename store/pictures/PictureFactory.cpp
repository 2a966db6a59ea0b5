#include "pictures/PictureFactory.h"

#include "catalog/Product.h"
#include "core/Crypto.h"

#include <QFont>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>

#include <mutex>

namespace PictureFactory {

namespace {

// Text rendering shares the font database; one picture is drawn at a time.
std::mutex drawing;

const QString kFontFamily = QStringLiteral("Noto Sans CJK SC");

QColor tone(qint64 seed, int shift, int saturation, int value)
{
    return QColor::fromHsv(int((seed * 47 + shift) % 360), saturation, value);
}

QFont font(int pixelSize, bool bold)
{
    QFont result(kFontFamily);
    result.setPixelSize(pixelSize);
    result.setBold(bold);
    return result;
}

void paintBackdrop(QPainter &painter, const QRect &area, qint64 seed)
{
    QLinearGradient gradient(area.topLeft(), area.bottomRight());
    gradient.setColorAt(0, tone(seed, 0, 170, 120));
    gradient.setColorAt(1, tone(seed, 140, 200, 45));
    painter.fillRect(area, gradient);
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < 6; ++i) {
        const qint64 s = seed * 31 + i * 17;
        QColor shape = tone(seed, 40 + i * 25, 120, 230);
        shape.setAlpha(40 + int(s % 50));
        painter.setBrush(shape);
        const int size = area.height() / 3 + int(s % (area.height() / 2));
        painter.drawEllipse(QPoint(int((s * 53) % area.width()), int((s * 29) % area.height())),
                            size / 2, size / 2);
    }
}

void paintBadge(QPainter &painter, const QString &text, const QColor &color)
{
    painter.setFont(font(22, true));
    const QRect badge(24, 20, painter.fontMetrics().horizontalAdvance(text) + 24, 36);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(badge, 8, 8);
    painter.setPen(Qt::white);
    painter.drawText(badge, Qt::AlignCenter, text);
}

void paintTitle(QPainter &painter, const QRect &area, const QString &title, const QString &alias)
{
    painter.setPen(QColor(255, 255, 255, 240));
    painter.setFont(font(area.width() / 14, true));
    painter.drawText(area.adjusted(28, 0, -28, -area.height() / 3),
                     Qt::AlignLeft | Qt::AlignBottom | Qt::TextWordWrap, title);
    painter.setPen(QColor(255, 255, 255, 190));
    painter.setFont(font(area.width() / 28, false));
    painter.drawText(area.adjusted(28, area.height() * 2 / 3 + 8, -28, -16),
                     Qt::AlignLeft | Qt::AlignTop, alias);
}

} // namespace

QImage cover(const Product &product)
{
    std::lock_guard lock(drawing);
    QImage image(640, 360, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paintBackdrop(painter, image.rect(), product.id);
    paintTitle(painter, image.rect(), product.title, product.aliasName);
    if (product.kind != QLatin1String("game"))
        paintBadge(painter, product.typeName(), QColor(230, 90, 40));
    return image;
}

QImage icon(const Product &product)
{
    std::lock_guard lock(drawing);
    QImage image(160, 160, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    QPainterPath rounded;
    rounded.addRoundedRect(image.rect(), 32, 32);
    painter.setClipPath(rounded);
    paintBackdrop(painter, image.rect(), product.id);
    painter.setPen(Qt::white);
    painter.setFont(font(76, true));
    painter.drawText(image.rect(), Qt::AlignCenter, product.title.left(1));
    return image;
}

QImage banner(int position, const QString &title)
{
    std::lock_guard lock(drawing);
    QImage image(750, 300, QImage::Format_RGB32);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paintBackdrop(painter, image.rect(), 1000 + position * 7);
    painter.setPen(Qt::white);
    painter.setFont(font(64, true));
    painter.drawText(image.rect().adjusted(48, 0, -48, -40), Qt::AlignLeft | Qt::AlignVCenter,
                     title);
    painter.setFont(font(26, false));
    painter.drawText(image.rect().adjusted(52, 150, -48, -24), Qt::AlignLeft | Qt::AlignVCenter,
                     QStringLiteral("Tarvel 游戏商城"));
    return image;
}

QImage defaultAvatar()
{
    std::lock_guard lock(drawing);
    QImage image(200, 200, QImage::Format_RGB32);
    image.fill(QColor(214, 222, 235));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(150, 165, 190));
    painter.drawEllipse(QPoint(100, 78), 38, 38);
    painter.drawEllipse(QPoint(100, 200), 72, 62);
    return image;
}

QImage captcha(const QString &text)
{
    std::lock_guard lock(drawing);
    QImage image(120, 44, QImage::Format_RGB32);
    image.fill(QColor(245, 245, 240));
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    auto random = [](int bound) { return Crypto::randomDigits(4).toInt() % bound; };
    for (int i = 0; i < 6; ++i) {
        painter.setPen(QPen(QColor::fromHsv(random(360), 120, 170), 1.5));
        painter.drawLine(random(120), random(44), random(120), random(44));
    }
    painter.setFont(font(28, true));
    for (int i = 0; i < text.size(); ++i) {
        painter.save();
        painter.translate(14 + i * 26, 34);
        painter.rotate(random(40) - 20);
        painter.setPen(QColor::fromHsv(random(360), 200, 110));
        painter.drawText(0, 0, text.at(i));
        painter.restore();
    }
    return image;
}

} // namespace PictureFactory
