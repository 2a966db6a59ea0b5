#include "pictures/PictureLimits.h"

#include <QBuffer>
#include <QImageReader>

namespace PictureLimits {

bool acceptable(const QSize &size)
{
    return size.isValid() && size.width() <= kMaxSide && size.height() <= kMaxSide
           && qint64(size.width()) * size.height() <= kMaxPixels;
}

QSize declaredSize(const QByteArray &bytes)
{
    QByteArray copy = bytes; // shares the data; QBuffer wants a non-const array
    QBuffer buffer(&copy);
    buffer.open(QIODevice::ReadOnly);
    QImageReader reader(&buffer);
    return reader.size();
}

QString refusal()
{
    return QStringLiteral("图片尺寸过大：宽和高不能超过%1像素，总像素不能超过%2万")
            .arg(kMaxSide)
            .arg(kMaxPixels / 10'000);
}

} // namespace PictureLimits
