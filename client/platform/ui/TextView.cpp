#include "platform/ui/TextView.h"

namespace platform {

TextView::TextView(QObject *parent)
    : QObject(parent)
{ }

void TextView::setText(const QString &text)
{
    if (m_text == text)
        return;
    m_text = text;
    emit textChanged();
}

void TextView::setPlaceholder(const QString &placeholder)
{
    if (m_placeholder == placeholder)
        return;
    m_placeholder = placeholder;
    emit changed();
}

void TextView::setEditable(bool editable)
{
    if (m_editable == editable)
        return;
    m_editable = editable;
    emit changed();
}

void TextView::setHidden(bool hidden)
{
    if (m_hidden == hidden)
        return;
    m_hidden = hidden;
    emit changed();
}

} // namespace platform
