#pragma once

#include "platform/ui/AppearanceTransition.h"
#include "platform/ui/ViewController.h"

#include <QList>
#include <QtQml/qqmlregistration.h>

namespace platform {

// Tabs, usually one navigation stack each; one of them is shown. Switching tabs is immediate.
class TabBarController : public ViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(int count READ count NOTIFY viewControllersChanged)
    Q_PROPERTY(
            int selectedIndex READ selectedIndex WRITE setSelectedIndex NOTIFY selectedIndexChanged)
    Q_PROPERTY(platform::ViewController *selectedViewController READ selectedViewController NOTIFY
                       selectedIndexChanged)
    Q_PROPERTY(
            bool tabBarHidden READ isTabBarHidden WRITE setTabBarHidden NOTIFY tabBarHiddenChanged)

public:
    explicit TabBarController(QObject *parent = nullptr);

    QList<ViewController *> viewControllers() const { return m_tabs; }
    // Takes ownership of the tabs; tabs that are not kept are deleted later. The selection stays
    // where it was when that index still exists, else goes to the first tab.
    void setViewControllers(const QList<ViewController *> &controllers);
    int count() const { return int(m_tabs.size()); }
    Q_INVOKABLE platform::ViewController *viewControllerAt(int index) const;

    int selectedIndex() const { return m_selectedIndex; }
    // Indexes outside the tabs are ignored.
    void setSelectedIndex(int index);
    ViewController *selectedViewController() const;

    bool isTabBarHidden() const { return m_tabBarHidden; }
    void setTabBarHidden(bool hidden);

    QList<ViewController *> childViewControllers() const override { return m_tabs; }
    QList<ViewController *> visibleChildViewControllers() const override;

signals:
    void viewControllersChanged();
    void selectedIndexChanged();
    void tabBarHiddenChanged();

private:
    void forget(ViewController *controller);

    QList<ViewController *> m_tabs;
    int m_selectedIndex = -1;
    bool m_tabBarHidden = false;
    AppearanceTransition m_transition;
};

} // namespace platform
