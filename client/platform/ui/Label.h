#pragma once

#include <QColor>
#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace platform {

// What a label shows; its QML view binds these.
class Label : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(LabelState)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY changed)
    Q_PROPERTY(bool hidden READ isHidden WRITE setHidden NOTIFY changed)
    Q_PROPERTY(QColor textColor READ textColor WRITE setTextColor NOTIFY changed)
    Q_PROPERTY(QColor backgroundColor READ backgroundColor WRITE setBackgroundColor NOTIFY changed)
public:
    explicit Label(QObject *parent = nullptr);

    QString text() const { return m_text; }
    void setText(const QString &text);
    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden);
    // Dark text on a clear background unless a screen says otherwise.
    QColor textColor() const { return m_textColor; }
    void setTextColor(const QColor &color);
    QColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const QColor &color);

signals:
    void changed();

private:
    QString m_text;
    bool m_hidden = false;
    QColor m_textColor = QColor(0x22, 0x22, 0x22);
    QColor m_backgroundColor = QColor(Qt::transparent);
};

} // namespace platform
