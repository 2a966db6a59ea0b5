#pragma once

#include "platform/kits/QrCode.h"

#include <QColor>
#include <QQuickPaintedItem>
#include <QtQml/qqmlregistration.h>

namespace platform {

// Draws the QR code of `text`, as large as whole pixels per module allow, centred, crisp.
class QrCodeItem : public QQuickPaintedItem
{
    Q_OBJECT
    QML_NAMED_ELEMENT(QrCodeImage)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY colorChanged)
    Q_PROPERTY(int modules READ modules NOTIFY textChanged)
public:
    explicit QrCodeItem(QQuickItem *parent = nullptr);

    QString text() const { return m_text; }
    void setText(const QString &text);
    QColor color() const { return m_color; }
    void setColor(const QColor &color);
    // Modules per side; 0 when there is nothing to draw.
    int modules() const { return m_code.width(); }

    void paint(QPainter *painter) override;

signals:
    void textChanged();
    void colorChanged();

private:
    QString m_text;
    QColor m_color = Qt::black;
    QrCode m_code;
};

} // namespace platform
