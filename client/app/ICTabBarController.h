#pragma once

#include "app/ICTabBarView.h"
#include "platform/ui/TabBarController.h"

#include <QList>
#include <QTimer>
#include <QtQml/qqmlregistration.h>

class ICTabBarItem;

// The main tab bar: four navigation stacks under a drawn 49-point strip of picture-only buttons
// (tabBarView) in place of the platform's bar. The cart (1) and my-page (2) tabs need a signed-in
// user: choosing them while signed out presents the sign-in screen and switches after success.
class ICTabBarController : public platform::TabBarController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(bool isHide READ isHide NOTIFY isHideChanged)
    Q_PROPERTY(bool hideAnimationRunning READ isHideAnimationRunning NOTIFY isHideChanged)
    Q_PROPERTY(ICTabBarView *tabBarView READ tabBarView CONSTANT)
    Q_PROPERTY(QList<QObject *> buttons READ buttonObjects NOTIFY arrayButtonChanged)
public:
    static constexpr int TabCount = 4;
    enum Tab { HomeTab = 0, CartTab = 1, MyPageTab = 2, MessagesTab = 3 };
    Q_ENUM(Tab)

    explicit ICTabBarController(QObject *parent = nullptr);

    ICTabBarView *tabBarView() const { return m_tabBarView; }
    // The strip's buttons in tab order.
    QList<ICTabBarItem *> arrayButton() const { return m_arrayButton; }
    QList<QObject *> buttonObjects() const;

    bool isHide() const { return m_isHide; }
    bool isHideAnimationRunning() const { return m_hideAnimation.isActive(); }
    // Hides or shows the strip with a 0.2-second slide; asking for the current state does
    // nothing.
    void hideTabBar(bool hide);
    // Switches tab from code and marks the matching strip button selected; indexes outside the
    // tabs change nothing.
    void selectViewControllerAtIndex(int index);
    // A strip button was tapped.
    void selectIndex(ICTabBarItem *button);

signals:
    void isHideChanged();
    void arrayButtonChanged();
    // The strip starts sliding out (hiding) or in.
    void hideAnimationStarted(bool hiding);

protected:
    void viewDidLoad() override;

private:
    void initialize();
    void loadBaseUI();
    void setTabBarButtons(int count);
    void layoutButtons();
    void markSelectedButton(int index);
    void presentSignInForTab(int tab);
    // The signed-in user's 11-character phone number becomes this device's push tag.
    static void tagPushWithSignedInPhone();

    ICTabBarView *m_tabBarView = nullptr;
    QList<ICTabBarItem *> m_arrayButton;
    bool m_isHide = false;
    QTimer m_hideAnimation;
};
