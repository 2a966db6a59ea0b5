#pragma once

#include "platform/TextHolder.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace platform {

// What a multi-line text view holds; the QML view writes the user's typing back through `text`.
class TextView : public QObject, public TextHolder
{
    Q_OBJECT
    Q_INTERFACES(platform::TextHolder)
    QML_NAMED_ELEMENT(TextViewState)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QString placeholder READ placeholder WRITE setPlaceholder NOTIFY changed)
    Q_PROPERTY(bool editable READ isEditable WRITE setEditable NOTIFY changed)
    Q_PROPERTY(bool hidden READ isHidden WRITE setHidden NOTIFY changed)
public:
    explicit TextView(QObject *parent = nullptr);

    QString text() const override { return m_text; }
    void setText(const QString &text) override;
    QString placeholder() const { return m_placeholder; }
    void setPlaceholder(const QString &placeholder);
    bool isEditable() const { return m_editable; }
    void setEditable(bool editable);
    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden);

signals:
    void textChanged();
    void changed();

private:
    QString m_text;
    QString m_placeholder;
    bool m_editable = true;
    bool m_hidden = false;
};

} // namespace platform
