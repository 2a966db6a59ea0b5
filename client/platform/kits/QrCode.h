#pragma once

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QString>

namespace platform {

// A QR code symbol made by libqrencode: a square of dark and light modules.
class QrCode
{
public:
    // Error correction level M; a null code when the text is empty or too long for a symbol.
    static QrCode encode(const QString &text);

    bool isNull() const { return m_width == 0; }
    int width() const { return m_width; } // modules per side
    bool isDark(int x, int y) const;

    // The symbol drawn with `moduleSize` pixels a module inside a light border of `quietZone`
    // modules.
    QImage toImage(int moduleSize, int quietZone = 4, const QColor &dark = Qt::black,
                   const QColor &light = Qt::white) const;

private:
    int m_width = 0;
    QByteArray m_modules; // row by row, 1 for dark
};

} // namespace platform
