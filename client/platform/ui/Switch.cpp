#include "platform/ui/Switch.h"

namespace platform {

Switch::Switch(QObject *parent)
    : QObject(parent)
{ }

void Switch::setOn(bool on)
{
    if (m_on == on)
        return;
    m_on = on;
    emit onChanged();
}

void Switch::setEnabled(bool enabled)
{
    if (m_enabled == enabled)
        return;
    m_enabled = enabled;
    emit enabledChanged();
}

bool Switch::toggleByUser(bool on)
{
    if (!m_enabled || m_on == on)
        return false;
    setOn(on);
    emit toggled(on);
    return true;
}

} // namespace platform
