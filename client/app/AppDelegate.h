#pragma once

#include "service/ApplicationState.h"

#include <QObject>
#include <QPointer>
#include <QTimer>
#include <QVariantMap>

namespace platform {
class Button;
class Label;
class Window;
} // namespace platform

// The application's delegate: owns the window and the application-wide state every screen reaches
// through it: the signed-in user, the cart badge and the SMS countdown. It is the service layer's
// ApplicationState from the moment it exists.
class AppDelegate : public QObject, public ApplicationState
{
    Q_OBJECT
    Q_PROPERTY(bool signedIn READ isSignedIn NOTIFY userLoginChanged)
    Q_PROPERTY(int countdown READ countdown NOTIFY countdownChanged)
public:
    static constexpr int CountdownSeconds = 60;

    // The delegate of this application; created on first use.
    static AppDelegate *shared();
    ~AppDelegate() override;

    platform::Window *window() const { return m_window; }

    std::optional<Object_User> userLogin() const override { return m_userLogin; }
    void setUserLogin(const std::optional<Object_User> &user) override;
    bool isSignedIn() const { return m_userLogin.has_value(); }

    // The cart badge, created by the home screen and drawn on the tab strip.
    platform::Label *labelRedDot() const { return m_labelRedDot; }
    void setLabelRedDot(platform::Label *label);

    // SMS countdown: `countdown` seconds left, 60 while idle; the last registered button shows it.
    int countdown() const override { return m_countdown; }
    platform::Button *buttonAuthCode() const { return m_buttonAuthCode; }
    QTimer *timer() const { return m_timer; }
    void setButtonIsEnable(platform::Button *button);
    void setTimerStart();
    void TimerCountdown();
    // One tick of the countdown; a second unless a test shortens it.
    void setCountdownTickInterval(int ms) { m_tickInterval = ms; }

    // The outside parties: sharing, push and WeChat payment (AppDelegateKits.cpp).
    void initWithShareSDK();
    void initWithGeTui(const QVariantMap &launchOptions);
    void applicationDidBecomeActive();
    void applicationDidEnterBackground();

signals:
    void userLoginChanged();
    void labelRedDotChanged();
    void countdownChanged();

protected:
    AppDelegate();

    platform::Window *m_window = nullptr;

private:
    void setCountdown(int seconds);

    std::optional<Object_User> m_userLogin;
    QPointer<platform::Label> m_labelRedDot;
    QPointer<platform::Button> m_buttonAuthCode;
    QPointer<QTimer> m_timer;
    int m_countdown = CountdownSeconds;
    int m_tickInterval = 1000;
};
