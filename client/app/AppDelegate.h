#pragma once

#include "models/Object_WeChatInfo.h"
#include "platform/kits/Kits.h"
#include "platform/ui/Button.h"
#include "platform/ui/Label.h"
#include "platform/ui/ViewController.h"
#include "platform/ui/Window.h"
#include "service/ApplicationState.h"

#include <QObject>
#include <QPointer>
#include <QStringList>
#include <QTimer>
#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

#include <functional>

class QGuiApplication;
class QJSEngine;
class QQmlEngine;

// The application's delegate: owns the window and the application-wide state every screen reaches
// through it: the signed-in user, the cart badge and the SMS countdown. It is the service layer's
// ApplicationState from the moment it exists.
class AppDelegate : public QObject, public ApplicationState
{
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(platform::Window *window READ window CONSTANT)
    Q_PROPERTY(bool signedIn READ isSignedIn NOTIFY userLoginChanged)
    Q_PROPERTY(platform::Label *labelRedDot READ labelRedDot NOTIFY labelRedDotChanged)
    Q_PROPERTY(int countdown READ countdown NOTIFY countdownChanged)
    Q_PROPERTY(StatusBarStyle statusBarStyle READ statusBarStyle NOTIFY statusBarStyleChanged)
public:
    static constexpr int CountdownSeconds = 60;

    // The delegate of this application; created on first use.
    static AppDelegate *shared();
    static AppDelegate *create(QQmlEngine *, QJSEngine *);
    ~AppDelegate() override;

    // Start-up, in this order: the window shows, the root controller goes in (it replaces itself
    // by the tab bar and restores a remembered sign-in), the cart badge starts following
    // "cartnum", the countdown goes idle, then sharing and push start. Answers true.
    bool application_didFinishLaunchingWithOptions(const QVariantMap &launchOptions = {});
    void initWithMainController();
    // The cart badge follows "cartnum": its text is the stored value, hidden when that is empty
    // or "0". Other keys are ignored.
    void observeValueForKeyPath(const QString &keyPath, const QVariant &oldValue,
                                const QVariant &newValue);
    // Reports the application's foreground and background changes to the entry points below.
    void followApplicationState(QGuiApplication *application);

    enum StatusBarStyle { StatusBarStyleDefault, StatusBarStyleLightContent };
    Q_ENUM(StatusBarStyle)
    StatusBarStyle statusBarStyle() const { return m_statusBarStyle; }

    // The screen the user is looking at: the top of the window's presented controllers or root,
    // followed down through navigation stacks (their top) and tab bars (their selected tab).
    Q_INVOKABLE platform::ViewController *visibleViewController() const;

    // Push tags for this device (setTags:error: of the push service). The push kit installs the
    // sender; the tags are kept so they can be sent when it comes later.
    using TagsSender = std::function<bool(const QStringList &tags, QString *error)>;
    bool setTags(const QStringList &tags, QString *error = nullptr);
    void setTagsSender(TagsSender sender);
    QStringList pushTags() const { return m_pushTags; }

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
    void statusBarStyleChanged();

protected:
    AppDelegate();

    platform::Window *m_window = nullptr;

private:
    void setCountdown(int seconds);
    void showCartNumOnBadge(const QVariant &value);

    std::optional<Object_User> m_userLogin;
    QPointer<platform::Label> m_labelRedDot;
    QPointer<platform::Button> m_buttonAuthCode;
    QPointer<QTimer> m_timer;
    int m_countdown = CountdownSeconds;
    int m_tickInterval = 1000;
    StatusBarStyle m_statusBarStyle = StatusBarStyleDefault;
    QStringList m_pushTags;
    TagsSender m_tagsSender;

    // ---- Payment result, push messages and URL callbacks (AppDelegateKits.cpp,
    // AppDelegatePayment.cpp, AppDelegatePush.cpp) ----
public:
    // Told whether a WeChat payment may have gone through (then the order is asked of the
    // service) or surely failed.
    using WeChatBlock = std::function<void(bool mayHaveSucceeded)>;
    using FetchCompletionHandler = platform::ApplicationDelegate::FetchCompletionHandler;
    // The launch option holding the remote notification that launched the app.
    static inline const QString LaunchOptionsRemoteNotificationKey
            = QStringLiteral("UIApplicationLaunchOptionsRemoteNotificationKey");

    // The WeChat payment round trip: the order screen sets the user's WeChat id and the result
    // callback, then sends the payment; isWeChatPay holds from the request until an answer or
    // the app's return to the front.
    QString openID() const { return m_openID; }
    void setOpenID(const QString &openID) { m_openID = openID; }
    WeChatBlock weChatBlock() const { return m_weChatBlock; }
    void setWeChatBlock(WeChatBlock block) { m_weChatBlock = std::move(block); }
    bool isWeChatPay() const { return m_isWeChatPay; }
    // Nothing (std::nullopt) only logs "服务器返回错误".
    void sendPay(const std::optional<Object_WeChatInfo> &parameters);
    // WeChat's answer, for payments and shares.
    void onResp(const BaseResp &resp);

    // Addresses the app is opened with: a share platform's answer, or WeChat's while a payment
    // is pending.
    bool handleOpenURL(const QUrl &url);
    bool openURL(const QUrl &url, const QString &sourceApplication, const QVariant &annotation);

    // Push credentials and state.
    QString appID() const { return m_appID; }
    QString appKey() const { return m_appKey; }
    QString appSecret() const { return m_appSecret; }
    QString deviceToken() const { return m_deviceToken; }
    QString clientId() const { return m_clientId; }
    QString payloadId() const { return m_payloadId; }
    int sdkStatus() const { return m_sdkStatus; }
    int lastPayloadIndex() const { return m_lastPayloadIndex; }

    // The system's push hooks.
    void registerRemoteNotification();
    void didRegisterForRemoteNotificationsWithDeviceToken(const QByteArray &deviceToken);
    void didReceiveRemoteNotification(const QVariantMap &userInfo);
    void didReceiveRemoteNotification(const QVariantMap &userInfo,
                                      const FetchCompletionHandler &completionHandler);
    void performFetchWithCompletionHandler(const FetchCompletionHandler &completionHandler);

    // Thin wrappers over the push service.
    void startSdkWith(const QString &appID, const QString &appKey, const QString &appSecret);
    void stopSdk();
    void setDeviceToken(const QString &token);
    QString sendMessage(const QByteArray &body, QString *error);

    // The push service's callbacks.
    void GeTuiSdkDidRegisterClient(const QString &clientId);
    void GeTuiSdkDidReceivePayload(const QString &payloadId, const QString &taskId,
                                   const QString &msgId, const QString &appId);
    void GeTuiSdkDidSendMessage(const QString &messageId, int result);
    void GeTuiSDkDidNotifySdkState(SdkStatus status);

    // Logs an uncaught exception and its call stack. Nothing installs it, by design.
    static void UncaughtExceptionHandler(const QString &exception,
                                         const QStringList &callStackSymbols);

private:
    class KitsBridge;
    // Wires the kits to this delegate on first use.
    KitsBridge *kitsBridge();
    // What the WeChat and push kits report to (through the bridge).
    WXApiDelegate *weChatDelegate();
    GeTuiSdkDelegate *pushDelegate();
    void callWeChatBlock(bool mayHaveSucceeded);
    // The steps every push entry point shares, from the payload on.
    void receivePushPayload(const std::optional<QByteArray> &payload);
    void refreshTopScreen();

    KitsBridge *m_kitsBridge = nullptr;
    QString m_openID;
    WeChatBlock m_weChatBlock;
    bool m_isWeChatPay = false;
    QString m_appID;
    QString m_appKey;
    QString m_appSecret;
    QString m_deviceToken;
    QString m_clientId;
    QString m_payloadId;
    int m_sdkStatus = SdkStatusStoped;
    int m_lastPayloadIndex = 0;
    // ---- end of payment, push and URL callbacks ----
};
