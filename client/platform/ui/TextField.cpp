#include "platform/ui/TextField.h"

namespace platform {

TextField::TextField(QObject *parent)
    : QObject(parent)
{ }

void TextField::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    emit textChanged();
}

void TextField::setPlaceholder(const QString &placeholder)
{
    assign(m_placeholder, placeholder);
}

void TextField::setSecureTextEntry(bool secure)
{
    assign(m_secure, secure);
}

void TextField::setEnabled(bool enabled)
{
    assign(m_enabled, enabled);
    if (!enabled)
        resignFirstResponder();
}

void TextField::setHidden(bool hidden)
{
    assign(m_hidden, hidden);
    if (hidden)
        resignFirstResponder();
}

void TextField::setKeyboardType(KeyboardType type)
{
    assign(m_keyboardType, type);
}

void TextField::setClearButtonShown(bool shown)
{
    assign(m_clearButtonShown, shown);
}

void TextField::setLeftImageName(const QString &name)
{
    assign(m_leftImageName, name);
}

void TextField::setFirstResponder(bool focused)
{
    if (focused && (!m_enabled || m_hidden))
        return;
    if (m_firstResponder == focused)
        return;
    m_firstResponder = focused;
    emit firstResponderChanged();
}

bool TextField::becomeFirstResponder()
{
    setFirstResponder(true);
    return m_firstResponder;
}

void TextField::pressReturn()
{
    emit returnPressed();
}

} // namespace platform
