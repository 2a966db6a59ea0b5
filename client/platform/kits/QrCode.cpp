#include "platform/kits/QrCode.h"

#include <QPainter>

#include <memory>
#include <qrencode.h>

namespace platform {

QrCode QrCode::encode(const QString &text)
{
    QrCode code;
    if (text.isEmpty())
        return code;
    const QByteArray utf8 = text.toUtf8();
    const std::unique_ptr<QRcode, decltype(&QRcode_free)> symbol(
            QRcode_encodeString(utf8.constData(), 0, QR_ECLEVEL_M, QR_MODE_8, 1), &QRcode_free);
    if (!symbol)
        return code;
    code.m_width = symbol->width;
    code.m_modules.resize(qsizetype(symbol->width) * symbol->width);
    for (qsizetype i = 0; i < code.m_modules.size(); ++i)
        code.m_modules[i] = char(symbol->data[i] & 1);
    return code;
}

bool QrCode::isDark(int x, int y) const
{
    if (x < 0 || y < 0 || x >= m_width || y >= m_width)
        return false;
    return m_modules.at(qsizetype(y) * m_width + x) != 0;
}

QImage QrCode::toImage(int moduleSize, int quietZone, const QColor &dark, const QColor &light) const
{
    if (isNull() || moduleSize <= 0)
        return {};
    const int side = (m_width + 2 * quietZone) * moduleSize;
    QImage image(side, side, QImage::Format_RGB32);
    image.fill(light);
    QPainter painter(&image);
    for (int y = 0; y < m_width; ++y) {
        for (int x = 0; x < m_width; ++x) {
            if (isDark(x, y))
                painter.fillRect((x + quietZone) * moduleSize, (y + quietZone) * moduleSize,
                                 moduleSize, moduleSize, dark);
        }
    }
    return image;
}

} // namespace platform
