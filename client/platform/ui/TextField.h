#pragma once

#include "platform/TextHolder.h"

#include <QObject>
#include <QString>
#include <QtQml/qqmlregistration.h>

namespace platform {

// What a one-line text field holds. The QML field writes the user's typing back through `text`;
// the controller moves focus with become/resignFirstResponder and hears the return key.
class TextField : public QObject, public TextHolder
{
    Q_OBJECT
    Q_INTERFACES(platform::TextHolder)
    QML_NAMED_ELEMENT(TextFieldState)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    Q_PROPERTY(QString placeholder READ placeholder WRITE setPlaceholder NOTIFY changed)
    Q_PROPERTY(bool secureTextEntry READ isSecureTextEntry WRITE setSecureTextEntry NOTIFY changed)
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled NOTIFY changed)
    Q_PROPERTY(bool hidden READ isHidden WRITE setHidden NOTIFY changed)
    Q_PROPERTY(KeyboardType keyboardType READ keyboardType WRITE setKeyboardType NOTIFY changed)
    Q_PROPERTY(
            bool clearButtonShown READ isClearButtonShown WRITE setClearButtonShown NOTIFY changed)
    Q_PROPERTY(QString leftImageName READ leftImageName WRITE setLeftImageName NOTIFY changed)
    Q_PROPERTY(bool firstResponder READ isFirstResponder WRITE setFirstResponder NOTIFY
                       firstResponderChanged)
public:
    enum KeyboardType { Default, NumberPad, PhonePad, DecimalPad, EmailAddress, Url };
    Q_ENUM(KeyboardType)

    explicit TextField(QObject *parent = nullptr);

    QString text() const override { return m_text; }
    void setText(const QString &text) override;
    QString placeholder() const { return m_placeholder; }
    void setPlaceholder(const QString &placeholder);
    bool isSecureTextEntry() const { return m_secure; }
    void setSecureTextEntry(bool secure);
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled);
    bool isHidden() const { return m_hidden; }
    void setHidden(bool hidden);
    KeyboardType keyboardType() const { return m_keyboardType; }
    void setKeyboardType(KeyboardType type);
    bool isClearButtonShown() const { return m_clearButtonShown; }
    void setClearButtonShown(bool shown);
    QString leftImageName() const { return m_leftImageName; }
    void setLeftImageName(const QString &name);

    bool isFirstResponder() const { return m_firstResponder; }
    void setFirstResponder(bool focused);
    // Takes the keyboard focus; refused while the field is disabled or hidden.
    bool becomeFirstResponder();
    void resignFirstResponder() { setFirstResponder(false); }

    // The keyboard's return key, as the QML field reports it.
    Q_INVOKABLE void pressReturn();

signals:
    void textChanged();
    void changed();
    void firstResponderChanged();
    void returnPressed();

private:
    template<typename T>
    void assign(T &field, const T &value)
    {
        if (field == value)
            return;
        field = value;
        emit changed();
    }

    QString m_text;
    QString m_placeholder;
    QString m_leftImageName;
    bool m_secure = false;
    bool m_enabled = true;
    bool m_hidden = false;
    bool m_clearButtonShown = false;
    bool m_firstResponder = false;
    KeyboardType m_keyboardType = Default;
};

} // namespace platform
