#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace platform {

// An on/off switch. Setting `on` from code is silent; a user's flip (toggleByUser) also emits
// `toggled`, and only while the switch is enabled.
class Switch : public QObject
{
    Q_OBJECT
    QML_NAMED_ELEMENT(SwitchState)
    Q_PROPERTY(bool on READ isOn WRITE setOn NOTIFY onChanged)
    Q_PROPERTY(bool enabled READ isEnabled WRITE setEnabled NOTIFY enabledChanged)
public:
    explicit Switch(QObject *parent = nullptr);

    bool isOn() const { return m_on; }
    void setOn(bool on);
    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled);

    // The user moved the switch to `on`.
    Q_INVOKABLE bool toggleByUser(bool on);

signals:
    void onChanged();
    void enabledChanged();
    void toggled(bool on);

private:
    bool m_on = false;
    bool m_enabled = true;
};

} // namespace platform
