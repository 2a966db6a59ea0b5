#pragma once

#include "app/Q9FatherViewController.h"
#include "platform/ui/Switch.h"

#include <QtQml/qqmlregistration.h>

// "偏好设置": whether push messages are wanted. The switch shows on only while the system lets the
// app notify and the user has not turned push off ("isPush" = "0").
class PreferencesViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are created by C++")
    Q_PROPERTY(platform::Switch *switchPush READ switchPush CONSTANT)
public:
    explicit PreferencesViewController(QObject *parent = nullptr);

    platform::Switch *switchPush() const { return m_switchPush; }

    // Whether the system allows the app's notifications at all.
    static bool systemAllowsNotifications();
    // The user flipped the switch: stores "1" or "0" under "isPush" and turns the push service's
    // delivery on or off to match.
    void openPush(bool on);

protected:
    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

private:
    platform::Switch *m_switchPush;
};
