#include "platform/ui/Label.h"

namespace platform {

Label::Label(QObject *parent)
    : QObject(parent)
{ }

void Label::setText(const QString &text)
{
    if (m_text == text && m_text.isNull() == text.isNull())
        return;
    m_text = text;
    emit changed();
}

void Label::setHidden(bool hidden)
{
    if (m_hidden == hidden)
        return;
    m_hidden = hidden;
    emit changed();
}

void Label::setTextColor(const QColor &color)
{
    if (m_textColor == color)
        return;
    m_textColor = color;
    emit changed();
}

void Label::setBackgroundColor(const QColor &color)
{
    if (m_backgroundColor == color)
        return;
    m_backgroundColor = color;
    emit changed();
}

} // namespace platform
