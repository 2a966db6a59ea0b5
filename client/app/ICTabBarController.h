#pragma once

#include "platform/ui/TabBarController.h"

// The main tab bar: four navigation stacks under a drawn 49-point strip of picture-only buttons.
// The cart (1) and my-page (2) tabs need a signed-in user.
class ICTabBarController : public platform::TabBarController
{
    Q_OBJECT
    Q_PROPERTY(bool isHide READ isHide NOTIFY isHideChanged)
public:
    explicit ICTabBarController(QObject *parent = nullptr);

    bool isHide() const { return m_isHide; }
    // Hides or shows the strip (a 0.2-second slide); asking for the current state does nothing.
    void hideTabBar(bool hide);
    // Switches tab from code and marks the matching strip button selected.
    void selectViewControllerAtIndex(int index);

signals:
    void isHideChanged();

private:
    bool m_isHide = false;
};
