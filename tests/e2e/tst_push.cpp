#include "HudRecorder.h"
#include "tst_kits_support.h"

#include "InProcessStore.h"
#include "PushCommand.h"
#include "StoreContext.h"
#include "platform/UserDefaults.h"
#include "platform/kits/Application.h"
#include "platform/kits/GeTuiSdk.h"
#include "platform/kits/GeTuiService.h"
#include "platform/kits/KitStorage.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TabBarController.h"
#include "service/ICDataHelper.h"

#include <QJsonDocument>

using namespace kitstest;
using platform::Application;

namespace {

const QString MessagesFile = QStringLiteral("GTMessage.plist");
const QString FormatError = QStringLiteral("推送消息格式错误,获取失败,请联系客服");

// A message list: counts how often it is told to reload.
class MessageListStandIn : public platform::ViewController
{
    Q_OBJECT
public:
    Q_INVOKABLE void refreshData() { ++refreshes; }
    int refreshes = 0;
};

class PlainScreen : public platform::ViewController
{
};

QVariantList storedMessages()
{
    return ICDataHelper::GetFileWithName(MessagesFile).value_or(QVariantList());
}

void forgetMessages()
{
    ICDataHelper::DeleteFile(ICDataHelper::docPath() + QLatin1Char('/') + MessagesFile);
}

QVariantMap notificationWith(const QByteArray &payload)
{
    return {{QStringLiteral("payload"), QString::fromUtf8(payload)}};
}

} // namespace

// Push messages from every road into GTMessage.plist: the record rules, the format error, the
// reload of an open message list, registration, the push mode setting and tarvel-store's push
// channel end to end.
class TestPush : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<tarvel::test::InProcessStore> m_store;

    AppDelegate *app() { return AppDelegate::shared(); }

    // Sends a message through the store's push channel to this device, as the operator does.
    bool sendThroughChannel(const QString &title, const QString &content)
    {
        return PushCommand::run({QStringLiteral("tarvel-store"), QStringLiteral("--title"), title,
                                 QStringLiteral("--content"), content, QStringLiteral("--date"),
                                 QStringLiteral("2024-07-01 10:00"), QStringLiteral("--url"),
                                 QStringLiteral("/products/12"), QStringLiteral("--client-id"),
                                 GeTuiSdk::clientId(), QStringLiteral("--db"),
                                 m_store->databasePath()})
               == 0;
    }

    // The id of the last channel message the push kit has dealt with (delivered or dropped).
    static qint64 channelProgress()
    {
        return platform::KitStorage::value(
                       QStringLiteral("getui/%1/after").arg(GeTuiSdk::clientId()))
                .toLongLong();
    }

    // Starts the kit and waits until its poll is held by the store.
    void startAndWaitForHeldPoll()
    {
        app()->initWithGeTui({});
        QTRY_COMPARE(GeTuiSdk::status(), SdkStatusStarted);
        QTRY_COMPARE(m_store->context().pushBell().waiting(), 1);
    }

    static QVariantMap channelRecord(const QString &title, const QString &content)
    {
        return {{QStringLiteral("title"), title},
                {QStringLiteral("content"), content},
                {QStringLiteral("date"), QStringLiteral("2024-07-01 10:00")},
                {QStringLiteral("url"), QStringLiteral("/products/12")}};
    }

private slots:
    void initTestCase()
    {
        LogRecorder::install();
        m_store = std::make_unique<tarvel::test::InProcessStore>();
        QVERIFY(m_store->isRunning());
        qputenv("TARVEL_API_BASE_URL", m_store->baseUrl().toUtf8());
        platform::Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
    }

    void init()
    {
        forgetMessages();
        LogRecorder::clear();
        platform::Hud::shared().dismiss();
        HudRecorder::shared().clear();
    }

    void payloadBecomesARecord_data()
    {
        QTest::addColumn<QByteArray>("payload");
        QTest::addColumn<QVariantMap>("record");
        const QVariantMap empty;
        QTest::newRow("only title")
                << QByteArray(R"({"title":"夏日特惠"})") << QVariantMap{{"title", "夏日特惠"}};
        QTest::newRow("content without title") << QByteArray(R"({"content":"全场五折"})") << empty;
        QTest::newRow("no date") << QByteArray(R"({"title":"a","content":"b","url":"/products/1"})")
                                 << QVariantMap{{"title", "a"}, {"content", "b"}};
        QTest::newRow("no url") << QByteArray(R"({"title":"a","content":"b","date":"d"})")
                                << QVariantMap{{"title", "a"}, {"content", "b"}, {"date", "d"}};
        QTest::newRow("everything")
                << QByteArray(R"({"url":"u","date":"d","content":"c","title":"t","x":"y"})")
                << QVariantMap{{"title", "t"}, {"content", "c"}, {"date", "d"}, {"url", "u"}};
        QTest::newRow("null ends it") << QByteArray(R"({"title":"t","content":null,"date":"d"})")
                                      << QVariantMap{{"title", "t"}};
        QTest::newRow("numbers as text") << QByteArray(R"({"title":5,"content":2.5})")
                                         << QVariantMap{{"title", "5"}, {"content", "2.5"}};
        QTest::newRow("not JSON") << QByteArray("title=夏日特惠") << empty;
        QTest::newRow("empty payload") << QByteArray("") << empty;
        QTest::newRow("JSON text only") << QByteArray(R"("夏日特惠")") << empty;
    }

    void payloadBecomesARecord()
    {
        QFETCH(QByteArray, payload);
        QFETCH(QVariantMap, record);
        app()->didReceiveRemoteNotification(notificationWith(payload));
        QCOMPARE(storedMessages(), QVariantList{record});
        QVERIFY(HudRecorder::shared().history().isEmpty());
    }

    void listPayloadIsAFormatError_data()
    {
        QTest::addColumn<QVariant>("payload");
        QTest::newRow("JSON list") << QVariant(QStringLiteral(R"([{"title":"a"}])"));
        QTest::newRow("empty list") << QVariant(QStringLiteral("[]"));
        QTest::newRow("dictionary instead of text")
                << QVariant(QVariantMap{{QStringLiteral("title"), QStringLiteral("a")}});
    }

    void listPayloadIsAFormatError()
    {
        QFETCH(QVariant, payload);
        app()->didReceiveRemoteNotification({{QStringLiteral("payload"), payload}});
        QVERIFY(storedMessages().isEmpty());
        QCOMPARE(HudRecorder::shared().history(), QStringList{FormatError});
        QCOMPARE(platform::Hud::shared().kind(), platform::Hud::Error);
    }

    void repeatedMessageIsStoredOnce()
    {
        const QByteArray first(R"({"title":"新游上架","content":"快来看看"})");
        const QByteArray second(R"({"title":"新游上架","content":"再来看看"})");
        app()->didReceiveRemoteNotification(notificationWith(first));
        app()->didReceiveRemoteNotification(notificationWith(first));
        QCOMPARE(storedMessages().size(), 1);
        app()->didReceiveRemoteNotification(notificationWith(second));
        app()->didReceiveRemoteNotification(notificationWith(first));
        QCOMPARE(storedMessages().size(), 2);
    }

    void entryPoints_data()
    {
        QTest::addColumn<bool>("background");
        QTest::addColumn<QVariantMap>("notification");
        QTest::addColumn<bool>("stored");
        const QString payload = QStringLiteral(R"({"title":"开服公告"})");
        const QVariantMap silent{{QStringLiteral("content-available"), 1}};
        QTest::newRow("notification") << false << QVariantMap{{"payload", payload}} << true;
        QTest::newRow("notification without payload")
                << false << QVariantMap{{"aps", QVariantMap{{"alert", "hi"}}}} << false;
        QTest::newRow("background with content-available")
                << true << QVariantMap{{"aps", silent}, {"payload", payload}} << true;
        QTest::newRow("background without content-available")
                << true << QVariantMap{{"aps", QVariantMap{{"alert", "hi"}}}, {"payload", payload}}
                << false;
        QTest::newRow("background without payload")
                << true << QVariantMap{{"aps", silent}} << false;
    }

    void entryPoints()
    {
        QFETCH(bool, background);
        QFETCH(QVariantMap, notification);
        QFETCH(bool, stored);
        QList<platform::BackgroundFetchResult> results;
        if (background)
            app()->didReceiveRemoteNotification(
                    notification,
                    [&](platform::BackgroundFetchResult result) { results.append(result); });
        else
            app()->didReceiveRemoteNotification(notification);
        QCOMPARE(storedMessages().size(), stored ? 1 : 0);
        QVERIFY(HudRecorder::shared().history().isEmpty());
        // The background variant always tells the system it found new data.
        QCOMPARE(results, background ? QList{platform::BackgroundFetchResult::NewData}
                                     : QList<platform::BackgroundFetchResult>{});
    }

    void openMessageListReloads()
    {
        platform::Window *window = app()->window();
        auto *list = new MessageListStandIn;
        auto *tabs = new platform::TabBarController;
        tabs->setViewControllers({new platform::NavigationController(new PlainScreen),
                                  new platform::NavigationController(new PlainScreen),
                                  new platform::NavigationController(new PlainScreen),
                                  new platform::NavigationController(list)});
        window->setRootViewController(tabs);
        const QByteArray payload(R"({"title":"a"})");

        app()->didReceiveRemoteNotification(notificationWith(payload));
        QCOMPARE(list->refreshes, 1);
        app()->didReceiveRemoteNotification(notificationWith(payload)); // stored once, reloads
        QCOMPARE(list->refreshes, 2);
        app()->didReceiveRemoteNotification(notificationWith("[]"));
        QCOMPARE(list->refreshes, 2);

        // A screen pushed over the list has no reload to call.
        auto *stack = qobject_cast<platform::NavigationController *>(tabs->viewControllerAt(3));
        stack->pushViewController(new PlainScreen, false);
        app()->didReceiveRemoteNotification(notificationWith(R"({"title":"b"})"));
        QCOMPARE(list->refreshes, 2);
        QCOMPARE(storedMessages().size(), 2);

        // Without a tab bar at the root nothing is reloaded.
        auto *alone = new MessageListStandIn;
        window->setRootViewController(new platform::NavigationController(alone));
        app()->didReceiveRemoteNotification(notificationWith(R"({"title":"c"})"));
        QCOMPARE(alone->refreshes, 0);
        QCOMPARE(storedMessages().size(), 3);
    }

    void pushModeFollowsTheSetting_data()
    {
        QTest::addColumn<QVariant>("isPush");
        QTest::addColumn<bool>("off");
        QTest::newRow("\"0\"") << QVariant(QStringLiteral("0")) << true;
        QTest::newRow("\"1\"") << QVariant(QStringLiteral("1")) << false;
        QTest::newRow("absent") << QVariant() << false;
        QTest::newRow("empty") << QVariant(QString()) << false;
    }

    void pushModeFollowsTheSetting()
    {
        QFETCH(QVariant, isPush);
        QFETCH(bool, off);
        auto &defaults = platform::UserDefaults::standard();
        defaults.setObject(isPush, QStringLiteral("isPush"));
        GeTuiSdk::setPushModeForOff(!off);
        app()->initWithGeTui({});
        QCOMPARE(GeTuiSdk::isPushModeOff(), off);
        defaults.removeObjectForKey(QStringLiteral("isPush"));
        GeTuiSdk::setPushModeForOff(false);
    }

    void registration()
    {
        auto &application = Application::shared();
        app()->initWithGeTui({});
        QCOMPARE(app()->appID(), QStringLiteral("uwcY51Fz4LkOgVOTeMeRQ0"));
        QVERIFY(GeTuiSdk::isRunBackgroundEnabled());
        QVERIFY(GeTuiSdk::isLbsLocationEnabled());
        const platform::UserNotificationSettings settings
                = application.currentUserNotificationSettings();
        QCOMPARE(settings.types,
                 platform::UserNotificationTypes(platform::UserNotificationType::Badge
                                                 | platform::UserNotificationType::Sound
                                                 | platform::UserNotificationType::Alert));
        QCOMPARE(settings.categories.size(), 1);
        const platform::UserNotificationCategory category = settings.categories.first();
        QCOMPARE(category.identifier, QStringLiteral("ACTIONABLE"));
        const QList<platform::UserNotificationAction> actions{
                {QStringLiteral("ACTION_ONE"), QStringLiteral("取消"), true, false, false},
                {QStringLiteral("ACTION_TWO"), QStringLiteral("回复"), true, false, false}};
        QCOMPARE(category.actions, actions);
        QVERIFY(application.isRegisteredForRemoteNotifications());

        // The token arrives one pass of the main queue later, as plain hexadecimal.
        const QString expected = QString::fromLatin1(Application::deviceToken().toHex());
        QTRY_COMPARE(app()->deviceToken(), expected);
        QCOMPARE(expected.size(), 64);
        QVERIFY(LogRecorder::infos().contains(QStringLiteral("deviceToken:") + expected));
        QCOMPARE(GeTuiSdk::deviceToken(), expected);

        // Systems without notification settings register the types alone.
        application.setSupportsUserNotificationSettings(false);
        app()->registerRemoteNotification();
        application.setSupportsUserNotificationSettings(true);
        QCOMPARE(application.enabledRemoteNotificationTypes(), settings.types);
    }

    void launchNotificationIsLoggedAndStored()
    {
        const QString payload = QStringLiteral(R"({"title":"开服公告","content":"今晚八点"})");
        app()->initWithGeTui({{AppDelegate::LaunchOptionsRemoteNotificationKey,
                               QVariantMap{{QStringLiteral("payload"), payload}}}});
        const QVariantMap record{{"title", "开服公告"}, {"content", "今晚八点"}};
        QCOMPARE(storedMessages(), QVariantList{record});
        const QRegularExpression apn(QRegularExpression::anchoredPattern(
                QStringLiteral(R"(\[APN\]\d{4}-\d\d-\d\d \d\d:\d\d:\d\d \+0000,)")
                + QRegularExpression::escape(payload)));
        QVERIFY2(std::any_of(LogRecorder::infos().cbegin(), LogRecorder::infos().cend(),
                             [&](const QString &line) { return apn.match(line).hasMatch(); }),
                 qPrintable(LogRecorder::infos().join(QLatin1Char('|'))));

        LogRecorder::clear();
        forgetMessages();
        app()->initWithGeTui({}); // a plain launch logs and stores nothing
        QVERIFY(storedMessages().isEmpty());
        QVERIFY(!LogRecorder::infos().join(QLatin1Char('|')).contains(QStringLiteral("[APN]")));
    }

    void pushChannelEndToEnd()
    {
        app()->initWithGeTui({});
        QTRY_VERIFY(!GeTuiSdk::clientId().isEmpty());
        QCOMPARE(app()->clientId(), GeTuiSdk::clientId());
        QCOMPARE(app()->sdkStatus(), int(SdkStatusStarted));
        const int received = app()->lastPayloadIndex();

        QVERIFY(sendThroughChannel(QStringLiteral("夏日特惠"), QStringLiteral("全场五折")));
        QTRY_COMPARE(storedMessages(), QVariantList{channelRecord(QStringLiteral("夏日特惠"),
                                                                  QStringLiteral("全场五折"))});
        QCOMPARE(app()->lastPayloadIndex(), received + 1);
        QVERIFY(!app()->payloadId().isEmpty());
        const QJsonDocument payload
                = QJsonDocument::fromJson(GeTuiSdk::retrivePayloadById(app()->payloadId()));
        QCOMPARE(payload["title"].toString(), QStringLiteral("夏日特惠"));

        // In the background nothing arrives; a background fetch brings it.
        // Entering the background stops the polling at once, so nothing can come in.
        app()->applicationDidEnterBackground();
        QVERIFY(GeTuiSdk::isInBackground());
        QVERIFY(sendThroughChannel(QStringLiteral("后台消息"), QStringLiteral("稍后送达")));
        QCOMPARE(storedMessages().size(), 1);
        QList<platform::BackgroundFetchResult> results;
        app()->performFetchWithCompletionHandler(
                [&](platform::BackgroundFetchResult result) { results.append(result); });
        QCOMPARE(results, QList{platform::BackgroundFetchResult::NewData});
        QTRY_COMPARE(storedMessages().size(), 2);

        // With push off, messages sent meanwhile are dropped.
        GeTuiSdk::setPushModeForOff(true);
        const qint64 handled = channelProgress();
        QVERIFY(sendThroughChannel(QStringLiteral("不该收到"), QStringLiteral("推送已关闭")));
        QTRY_VERIFY(channelProgress() > handled); // taken off the channel and dropped
        QCOMPARE(storedMessages().size(), 2);
        GeTuiSdk::setPushModeForOff(false);
        QVERIFY(sendThroughChannel(QStringLiteral("恢复推送"), QStringLiteral("又能收到了")));
        QTRY_COMPARE(storedMessages().size(), 3);
        QCOMPARE(storedMessages().last(),
                 QVariant(channelRecord(QStringLiteral("恢复推送"), QStringLiteral("又能收到了"))));
    }

    void becomingActiveRestartsThePushService()
    {
        app()->initWithGeTui({});
        app()->stopSdk();
        QCOMPARE(GeTuiSdk::status(), SdkStatusStoped);
        QCOMPARE(app()->sdkStatus(), int(SdkStatusStoped));
        Application::shared().setApplicationIconBadgeNumber(4);
        app()->applicationDidBecomeActive();
        QCOMPARE(Application::shared().applicationIconBadgeNumber(), 0);
        QVERIFY(GeTuiSdk::status() != SdkStatusStoped);
        QTRY_COMPARE(app()->sdkStatus(), int(SdkStatusStarted));
    }

    void sentMessagesAreLogged()
    {
        app()->initWithGeTui({});
        QTRY_COMPARE(GeTuiSdk::status(), SdkStatusStarted);
        QString error;
        const QString id = app()->sendMessage(QByteArrayLiteral("hello"), &error);
        QVERIFY(!id.isEmpty());
        QTRY_VERIFY(LogRecorder::infos().contains(
                QStringLiteral("Received sendmessage:%1 result:0").arg(id)));

        app()->stopSdk();
        QVERIFY(app()->sendMessage(QByteArrayLiteral("hello"), &error).isNull());
        QVERIFY(!error.isEmpty());
        QVERIFY(!app()->setTags({QStringLiteral("13800138000")}, &error));
    }

    void heldPollDeliversAtOnce()
    {
        m_store->restart(); // no poll of an earlier test is held any more
        startAndWaitForHeldPoll();
        const int received = app()->lastPayloadIndex();
        // The store holds the poll far longer than this wait: only the held poll can bring it.
        QVERIFY(sendThroughChannel(QStringLiteral("限时秒杀"), QStringLiteral("马上开始")));
        QTRY_COMPARE(app()->lastPayloadIndex(), received + 1);
        QCOMPARE(storedMessages(), QVariantList{channelRecord(QStringLiteral("限时秒杀"),
                                                              QStringLiteral("马上开始"))});
        // and the next poll is held again at once
        QTRY_COMPARE(m_store->context().pushBell().waiting(), 1);
    }

    void deliveredOnceAcrossReconnects_data()
    {
        QTest::addColumn<bool>("storeAway");
        QTest::addColumn<bool>("kitRestarted");
        QTest::newRow("store restarted, message sent while it was away") << true << false;
        QTest::newRow("kit restarted with a new client id") << false << true;
        QTest::newRow("both") << true << true;
    }

    void deliveredOnceAcrossReconnects()
    {
        QFETCH(bool, storeAway);
        QFETCH(bool, kitRestarted);
        m_store->restart();
        startAndWaitForHeldPoll();
        const int received = app()->lastPayloadIndex();
        QVERIFY(sendThroughChannel(QStringLiteral("第一条"), QStringLiteral("已经送达")));
        QTRY_COMPARE(app()->lastPayloadIndex(), received + 1);

        if (storeAway) {
            m_store->stop();
            QTRY_VERIFY(GeTuiService::shared().reconnectDelayMs() > 0); // the kit noticed
        }
        if (kitRestarted) {
            const QString before = GeTuiSdk::clientId();
            app()->stopSdk();
            app()->initWithGeTui({});
            if (!storeAway)
                QTRY_VERIFY(GeTuiSdk::clientId() != before);
        }
        if (storeAway) {
            QVERIFY(sendThroughChannel(QStringLiteral("第二条"), QStringLiteral("离线时发出")));
            m_store->startAgain();
            QVERIFY(m_store->isRunning());
        } else {
            QVERIFY(sendThroughChannel(QStringLiteral("第二条"), QStringLiteral("离线时发出")));
        }

        // The backoff has grown a little while the store was away: allow it one more round.
        QTRY_COMPARE_WITH_TIMEOUT(storedMessages().size(), 2, 20000);
        // Delivery goes in message order, so the first one delivered again would come before.
        QCOMPARE(app()->lastPayloadIndex(), received + 2);
        QCOMPARE(storedMessages().last(),
                 QVariant(channelRecord(QStringLiteral("第二条"), QStringLiteral("离线时发出"))));
        QCOMPARE(GeTuiService::shared().reconnectDelayMs(), 0);
    }

    void crashLoggerLogs()
    {
        AppDelegate::UncaughtExceptionHandler(
                QStringLiteral("NSRangeException"),
                {QStringLiteral("0 tarvel"), QStringLiteral("1 libc.so.6")});
        QCOMPARE(LogRecorder::infos(),
                 (QStringList{
                         QStringLiteral("CRASH: NSRangeException"),
                         QStringLiteral(
                                 "Stack Trace: (\n    \"0 tarvel\",\n    \"1 libc.so.6\"\n)")}));
    }
};

TARVEL_TEST_MAIN(TestPush)
#include "tst_push.moc"
