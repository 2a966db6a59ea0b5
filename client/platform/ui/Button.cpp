#include "platform/ui/Button.h"

namespace platform {

Button::Button(QObject *parent)
    : QObject(parent)
{ }

// A null text (no value for a state) and an empty one (a state that shows nothing) differ.
void Button::assign(QString &field, const QString &value)
{
    if (field == value && field.isNull() == value.isNull())
        return;
    field = value;
    emit changed();
}

QString Button::pick(bool inState, const QString &stateValue, const QString &normal)
{
    return inState && !stateValue.isNull() ? stateValue : normal;
}

QString Button::currentTitle() const
{
    if (!m_enabled && !m_disabledTitle.isNull())
        return m_disabledTitle;
    return pick(m_selected, m_selectedTitle, m_title);
}

QString Button::currentImageName() const
{
    return pick(m_selected, m_selectedImageName, m_imageName);
}

QString Button::currentBackgroundImageName() const
{
    return pick(m_selected, m_selectedBackgroundImageName, m_backgroundImageName);
}

void Button::setTitleColor(const QColor &color)
{
    assign(m_titleColor, color);
}

void Button::setSelectedTitleColor(const QColor &color)
{
    assign(m_selectedTitleColor, color);
}

QColor Button::currentTitleColor() const
{
    return m_selected && m_selectedTitleColor.isValid() ? m_selectedTitleColor : m_titleColor;
}

bool Button::tap()
{
    if (!m_enabled || m_hidden)
        return false;
    emit clicked();
    return true;
}

} // namespace platform
