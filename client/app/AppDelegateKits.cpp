#include "app/AppDelegate.h"

#include "platform/kits/Application.h"
#include "platform/kits/GeTuiSdk.h"
#include "platform/kits/KitCredentials.h"
#include "platform/kits/ShareSDK.h"
#include "platform/kits/WXApi.h"
#include "util/ObjectDescription.h"

#include <QDebug>

// Start-up of the sharing and push kits, the app's coming and going, and the addresses other
// apps open it with. Payment is in AppDelegatePayment.cpp, push messages in AppDelegatePush.cpp.

// Receives for the delegate what the kits and the system report.
class AppDelegate::KitsBridge : public QObject,
                                public WXApiDelegate,
                                public GeTuiSdkDelegate,
                                public platform::ApplicationDelegate
{
public:
    explicit KitsBridge(AppDelegate *delegate)
        : QObject(delegate)
        , m_delegate(delegate)
    { }

    ~KitsBridge() override
    {
        if (platform::Application::shared().delegate() == this)
            platform::Application::shared().setDelegate(nullptr);
        if (GeTuiSdk::delegate() == this)
            GeTuiSdk::destroy();
    }

    // WeChat
    void onResp(const BaseResp &resp) override { m_delegate->onResp(resp); }

    // The push service
    void GeTuiSdkDidRegisterClient(const QString &clientId) override
    {
        m_delegate->GeTuiSdkDidRegisterClient(clientId);
    }
    void GeTuiSdkDidReceivePayload(const QString &payloadId, const QString &taskId,
                                   const QString &msgId, const QString &appId) override
    {
        m_delegate->GeTuiSdkDidReceivePayload(payloadId, taskId, msgId, appId);
    }
    void GeTuiSdkDidSendMessage(const QString &messageId, int result) override
    {
        m_delegate->GeTuiSdkDidSendMessage(messageId, result);
    }
    void GeTuiSDkDidNotifySdkState(SdkStatus status) override
    {
        m_delegate->GeTuiSDkDidNotifySdkState(status);
    }

    // The system
    bool openURL(const QUrl &url, const QString &sourceApplication,
                 const QVariant &annotation) override
    {
        return m_delegate->openURL(url, sourceApplication, annotation);
    }
    void applicationDidBecomeActive() override { m_delegate->applicationDidBecomeActive(); }
    void didRegisterForRemoteNotificationsWithDeviceToken(const QByteArray &deviceToken) override
    {
        m_delegate->didRegisterForRemoteNotificationsWithDeviceToken(deviceToken);
    }

private:
    AppDelegate *m_delegate;
};

AppDelegate::KitsBridge *AppDelegate::kitsBridge()
{
    if (!m_kitsBridge) {
        m_kitsBridge = new KitsBridge(this);
        platform::Application::shared().setDelegate(m_kitsBridge);
    }
    return m_kitsBridge;
}

WXApiDelegate *AppDelegate::weChatDelegate()
{
    return kitsBridge();
}

GeTuiSdkDelegate *AppDelegate::pushDelegate()
{
    return kitsBridge();
}

void AppDelegate::initWithShareSDK()
{
    using namespace tarvel::kits;
    kitsBridge();
    ShareSDK::registerApp(QString::fromLatin1(ShareSDKAppKey));
    ShareSDK::connectSinaWeiboWithAppKey(QString::fromLatin1(SinaWeiboAppKey),
                                         QString::fromLatin1(SinaWeiboAppSecret),
                                         QString::fromLatin1(SinaWeiboRedirectUri));
    ShareSDK::connectWeChatWithAppId(QString::fromLatin1(WeChatAppId),
                                     QString::fromLatin1(WeChatAppSecret));
}

void AppDelegate::applicationDidBecomeActive()
{
    // While WeChat (a kit's sheet) is in front, the app is not active, whatever the window says.
    if (platform::Application::shared().isCovered())
        return;
    // Back without WeChat's answer: true on purpose, the order screen then asks the service, whose
    // answer decides.
    if (m_isWeChatPay)
        callWeChatBlock(true);
    m_isWeChatPay = false;
    platform::Application::shared().setApplicationIconBadgeNumber(0);
    if (!m_appID.isEmpty()) // once started at launch, the push service is started again
        startSdkWith(m_appID, m_appKey, m_appSecret);
}

void AppDelegate::applicationDidEnterBackground()
{
    GeTuiSdk::enterBackground();
}

void AppDelegate::performFetchWithCompletionHandler(const FetchCompletionHandler &completionHandler)
{
    GeTuiSdk::resume();
    if (completionHandler)
        completionHandler(platform::BackgroundFetchResult::NewData);
}

bool AppDelegate::handleOpenURL(const QUrl &url)
{
    return ShareSDK::handleOpenURL(url, weChatDelegate());
}

bool AppDelegate::openURL(const QUrl &url, const QString &sourceApplication,
                          const QVariant &annotation)
{
    if (m_isWeChatPay)
        return WXApi::handleOpenURL(url, weChatDelegate());
    return ShareSDK::handleOpenURL(url, sourceApplication, annotation, weChatDelegate());
}

void AppDelegate::UncaughtExceptionHandler(const QString &exception,
                                           const QStringList &callStackSymbols)
{
    qInfo().noquote() << QStringLiteral("CRASH: %1").arg(exception);
    qInfo().noquote()
            << QStringLiteral("Stack Trace: %1").arg(objectDescription(QVariant(callStackSymbols)));
}
