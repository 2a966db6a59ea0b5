#include "platform/ui/BarButtonItem.h"

namespace platform {

BarButtonItem::BarButtonItem(QObject *parent)
    : QObject(parent)
{ }

void BarButtonItem::setImageName(const QString &name)
{
    if (m_imageName == name)
        return;
    m_imageName = name;
    emit changed();
}

void BarButtonItem::setTitle(const QString &title)
{
    if (m_title == title)
        return;
    m_title = title;
    emit changed();
}

void BarButtonItem::setTitleColor(const QColor &color)
{
    if (m_titleColor == color)
        return;
    m_titleColor = color;
    emit changed();
}

void BarButtonItem::setHidden(bool hidden)
{
    if (m_hidden == hidden)
        return;
    m_hidden = hidden;
    emit changed();
}

void BarButtonItem::configure(const QString &imageName, const QString &title)
{
    m_imageName = imageName;
    m_title = title;
    m_hidden = false;
    emit changed();
}

bool BarButtonItem::tap()
{
    if (m_hidden || isEmpty())
        return false;
    emit triggered();
    return true;
}

} // namespace platform
