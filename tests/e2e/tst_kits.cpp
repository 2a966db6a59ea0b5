#include "HudRecorder.h"
#include "tst_kits_support.h"

#include "app/Q9FatherViewController.h"
#include "platform/kits/Application.h"
#include "platform/kits/KitCredentials.h"
#include "platform/kits/QrCode.h"
#include "platform/kits/ShareQrPrompt.h"
#include "platform/kits/ShareSDK.h"
#include "platform/kits/WXApi.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/UrlOpener.h"

#include <QQmlExtensionPlugin>
#include <QRegularExpression>
#include <QUrlQuery>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using namespace kitstest;
using platform::Application;
using platform::ShareQrPrompt;

namespace {

struct ShareReport
{
    ShareType type;
    SSResponseState state;
    int errorCode;
    bool end;
};

// Keeps every answer WeChat's handler reads out of an address.
class AnswerRecorder : public WXApiDelegate
{
public:
    void onResp(const BaseResp &resp) override
    {
        const auto *pay = dynamic_cast<const PayResp *>(&resp);
        kinds.append(pay ? QStringLiteral("pay") : QStringLiteral("share"));
        codes.append(resp.errCode);
        texts.append(resp.errStr);
        returnKeys.append(pay ? pay->returnKey : QString());
    }
    QStringList kinds;
    QList<int> codes;
    QStringList texts;
    QStringList returnKeys;
};

class GameDetailStandIn : public Q9FatherViewController
{
protected:
    void viewDidLoad() override
    {
        Q9FatherViewController::viewDidLoad();
        setNavTitleWithString(QStringLiteral("游戏详情"));
    }
};

ShareContent gameContent()
{
    ShareContent content = ShareSDK::content(
            QStringLiteral("《星际远征》限时五折，快来看看！"),
            QStringLiteral("《星际远征》限时五折，快来看看！"),
            QStringLiteral("http://127.0.0.1:8080/pictures/covers/1.jpg"),
            QStringLiteral("星际远征"), QStringLiteral("http://127.0.0.1:8080/products/1"),
            QStringLiteral("《星际远征》限时五折，快来看看！"), SSPublishContentMediaTypeNews);
    return content;
}

} // namespace

// The sharing kit and the WeChat kit on the desktop: registration with the compiled-in
// credentials, the sandbox identity, Weibo through its web share page, WeChat through the QR
// sheet and WeChat's answer addresses; and the application state the kits' sheets drive.
class TestKits : public QObject
{
    Q_OBJECT

private:
    QList<ShareReport> m_shares;

    ShareResultFn recordShares()
    {
        return [this](ShareType type, SSResponseState state, const ShareError &error, bool end) {
            m_shares.append({type, state, error.errorCode, end});
        };
    }

    QList<SSResponseState> states() const
    {
        QList<SSResponseState> result;
        for (const ShareReport &report : m_shares)
            result.append(report.state);
        return result;
    }

private slots:
    void initTestCase()
    {
        LogRecorder::install();
        AppDelegate::shared()->initWithShareSDK();
        platform::Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
    }

    void init()
    {
        m_shares.clear();
        LogRecorder::clear();
        HudRecorder::shared().clear();
        platform::UrlOpener::shared().clearHistory();
        platform::UrlOpener::shared().setHandler([](const QUrl &) { return true; });
    }

    void cleanup()
    {
        if (ShareQrPrompt::shared().isShown())
            ShareQrPrompt::shared().cancel();
        platform::UrlOpener::shared().setHandler({});
    }

    void credentialsHaveTheirForms_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QString>("pattern");
        const auto weibo
                = ShareSDK::connection(ShareTypeSinaWeibo).value_or(ShareSDK::Connection{});
        const auto weChat
                = ShareSDK::connection(ShareTypeWeixiSession).value_or(ShareSDK::Connection{});
        const QString hex32 = QStringLiteral("[0-9a-f]{32}");
        const QString alnum22 = QStringLiteral("[0-9A-Za-z]{22}");
        QTest::newRow("sharing key") << ShareSDK::appKey() << "[0-9a-f]{12}";
        QTest::newRow("weibo key") << weibo.appKey << "[0-9]{10}";
        QTest::newRow("weibo secret") << weibo.appSecret << hex32;
        QTest::newRow("weibo redirect")
                << weibo.redirectUri << "https://api\\.weibo\\.com/oauth2/default\\.html";
        QTest::newRow("wechat app id") << weChat.appKey << "wx[0-9a-f]{16}";
        QTest::newRow("wechat secret") << weChat.appSecret << hex32;
        QTest::newRow("wechat kit registered") << WXApi::registeredAppId() << "wx[0-9a-f]{16}";
        QTest::newRow("push app id") << QString::fromLatin1(tarvel::kits::GeTuiAppId) << alnum22;
        QTest::newRow("push key") << QString::fromLatin1(tarvel::kits::GeTuiAppKey) << alnum22;
        QTest::newRow("push secret")
                << QString::fromLatin1(tarvel::kits::GeTuiAppSecret) << alnum22;
    }

    void credentialsHaveTheirForms()
    {
        QFETCH(QString, value);
        QFETCH(QString, pattern);
        const QRegularExpression form(QRegularExpression::anchoredPattern(pattern));
        QVERIFY2(form.match(value).hasMatch(), qPrintable(value));
    }

    void onlyWeiboAndWeChatAreConnected_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("connected");
        QTest::newRow("weibo") << int(ShareTypeSinaWeibo) << true;
        QTest::newRow("wechat chat") << int(ShareTypeWeixiSession) << true;
        QTest::newRow("wechat moments") << int(ShareTypeWeixiTimeline) << true;
        QTest::newRow("qq") << int(ShareTypeQQ) << false;
        QTest::newRow("qq space") << int(ShareTypeQQSpace) << false;
    }

    void onlyWeiboAndWeChatAreConnected()
    {
        QFETCH(int, type);
        QFETCH(bool, connected);
        QCOMPARE(ShareSDK::isConnected(ShareType(type)), connected);
    }

    void userInformation_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("success");
        QTest::addColumn<int>("errorCode");
        QTest::addColumn<QString>("uidPattern");
        QTest::newRow("wechat") << int(ShareTypeWeixiSession) << true << 0 << "o[A-Za-z0-9_-]{27}";
        QTest::newRow("weibo") << int(ShareTypeSinaWeibo) << true << 0 << "[0-9]{10}";
        QTest::newRow("qq, not connected")
                << int(ShareTypeQQ) << false << int(ShareErrorPlatformNotConnected) << "";
    }

    void userInformation()
    {
        QFETCH(int, type);
        QFETCH(bool, success);
        QFETCH(int, errorCode);
        QFETCH(QString, uidPattern);
        QStringList uids;
        for (int i = 0; i < 2; ++i) {
            bool answered = false;
            bool result = !success;
            ShareError error;
            ShareSDK::getUserInfoWithType(ShareType(type),
                                          [&](bool ok, const ShareUser &user, const ShareError &e) {
                                              answered = true;
                                              result = ok;
                                              error = e;
                                              uids.append(user.uid);
                                          });
            QVERIFY(!answered); // one pass of the main queue later
            QTRY_VERIFY(answered);
            QCOMPARE(result, success);
            QCOMPARE(error.errorCode, errorCode);
        }
        if (success) {
            QVERIFY2(QRegularExpression(QRegularExpression::anchoredPattern(uidPattern))
                             .match(uids.first())
                             .hasMatch(),
                     qPrintable(uids.first()));
            QCOMPARE(uids.last(), uids.first()); // the same user each time
        }
    }

    void weiboSharesThroughItsWebPage_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("picture");
        QTest::addColumn<bool>("unit");
        QTest::newRow("text and picture") << "好游戏推荐"
                                          << "http://127.0.0.1:8080/p/1.jpg" << false;
        QTest::newRow("no picture") << "好游戏推荐"
                                    << "" << false;
        QTest::newRow("reserved characters") << "A&B=C+D #1 100%"
                                             << "" << false;
        QTest::newRow("weibo's own unit") << "微博专属文案"
                                          << "http://127.0.0.1:8080/p/2.jpg" << true;
    }

    void weiboSharesThroughItsWebPage()
    {
        QFETCH(QString, text);
        QFETCH(QString, picture);
        QFETCH(bool, unit);
        ShareContent content = gameContent();
        if (unit) {
            content.sinaWeiboUnit = ShareContentUnit{text, QString(), QString(), picture,
                                                     SSPublishContentMediaTypeNews};
        } else {
            content.content = text;
            content.image = picture;
        }
        ShareSDK::oneKeyShareContent(content, {ShareTypeSinaWeibo}, recordShares());

        const QList<QUrl> opened = platform::UrlOpener::shared().openedURLs();
        QCOMPARE(opened.size(), 1);
        QCOMPARE(opened.first().host(), QStringLiteral("service.weibo.com"));
        QCOMPARE(opened.first().path(), QStringLiteral("/share/share.php"));
        const QUrlQuery query(opened.first());
        QCOMPARE(query.queryItemValue(QStringLiteral("title"), QUrl::FullyDecoded), text);
        QCOMPARE(query.queryItemValue(QStringLiteral("url"), QUrl::FullyDecoded), content.url);
        QCOMPARE(query.hasQueryItem(QStringLiteral("pic")), !picture.isEmpty());
        QCOMPARE(query.queryItemValue(QStringLiteral("pic"), QUrl::FullyDecoded), picture);
        QCOMPARE(query.queryItemValue(QStringLiteral("appkey")), QStringLiteral("0631431896"));
        QCOMPARE(states(), (QList<SSResponseState>{SSResponseStateBegin, SSResponseStateSuccess}));
        QVERIFY(m_shares.last().end);
    }

    void shareFailures_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("browserOpens");
        QTest::addColumn<int>("errorCode");
        QTest::newRow("no browser for weibo")
                << int(ShareTypeSinaWeibo) << false << int(ShareErrorBrowserUnavailable);
        QTest::newRow("qq is not connected")
                << int(ShareTypeQQ) << true << int(ShareErrorPlatformNotConnected);
        QTest::newRow("qq space is not connected")
                << int(ShareTypeQQSpace) << true << int(ShareErrorPlatformNotConnected);
    }

    void shareFailures()
    {
        QFETCH(int, type);
        QFETCH(bool, browserOpens);
        QFETCH(int, errorCode);
        platform::UrlOpener::shared().setHandler([=](const QUrl &) { return browserOpens; });
        ShareSDK::clientShareContent(gameContent(), ShareType(type), recordShares());
        QCOMPARE(states(), (QList<SSResponseState>{SSResponseStateBegin, SSResponseStateFail}));
        QCOMPARE(m_shares.last().errorCode, errorCode);
        QCOMPARE(int(m_shares.last().type), type);
        QVERIFY(!ShareQrPrompt::shared().isShown());
    }

    void oneKeyShareGoesThroughTheList()
    {
        ShareSDK::oneKeyShareContent(gameContent(), {ShareTypeSinaWeibo, ShareTypeQQ},
                                     recordShares());
        QCOMPARE(m_shares.size(), 4);
        QCOMPARE(m_shares.at(1).type, ShareTypeSinaWeibo);
        QCOMPARE(m_shares.at(1).state, SSResponseStateSuccess);
        QVERIFY(!m_shares.at(1).end);
        QCOMPARE(m_shares.at(3).type, ShareTypeQQ);
        QCOMPARE(m_shares.at(3).state, SSResponseStateFail);
        QVERIFY(m_shares.at(3).end);
    }

    void weChatShares_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<bool>("done");
        QTest::addColumn<QString>("title");
        QTest::addColumn<int>("state");
        QTest::addColumn<QString>("hud");
        QTest::newRow("friend, shared") << int(ShareTypeWeixiSession) << true << "分享到微信好友"
                                        << int(SSResponseStateSuccess) << "分享成功";
        QTest::newRow("friend, given up") << int(ShareTypeWeixiSession) << false << "分享到微信好友"
                                          << int(SSResponseStateCancel) << "分享失败";
        QTest::newRow("moments, shared")
                << int(ShareTypeWeixiTimeline) << true << "分享到微信朋友圈"
                << int(SSResponseStateSuccess) << "分享成功";
    }

    void weChatShares()
    {
        QFETCH(int, type);
        QFETCH(bool, done);
        QFETCH(QString, title);
        QFETCH(int, state);
        QFETCH(QString, hud);
        ShareContent content = gameContent();
        content.weixinTimelineUnit
                = ShareContentUnit{QStringLiteral("朋友圈文案"), QStringLiteral("朋友圈标题"),
                                   QString(), QString(), SSPublishContentMediaTypeNews};
        const bool moments = type == ShareTypeWeixiTimeline;
        QSignalSpy becameActive(&Application::shared(), &Application::didBecomeActive);

        ShareSDK::clientShareContent(content, ShareType(type), recordShares());
        auto &prompt = ShareQrPrompt::shared();
        QVERIFY(prompt.isShown());
        QCOMPARE(Application::shared().applicationState(), Application::Inactive);
        QCOMPARE(prompt.title(), title);
        QCOMPARE(prompt.hint(), QStringLiteral("请使用微信扫一扫"));
        QCOMPARE(prompt.code(), content.url);
        QCOMPARE(prompt.shareTitle(), moments ? QStringLiteral("朋友圈标题") : content.title);
        QCOMPARE(prompt.shareText(), moments ? QStringLiteral("朋友圈文案") : content.description);
        QCOMPARE(states(), QList<SSResponseState>{SSResponseStateBegin});

        done ? prompt.done() : prompt.cancel();
        QVERIFY(!prompt.isShown());
        QCOMPARE(states(), (QList<SSResponseState>{SSResponseStateBegin, SSResponseState(state)}));
        QVERIFY(m_shares.last().end);
        QCOMPARE(HudRecorder::shared().history(), QStringList{hud});
        QCOMPARE(becameActive.count(), 1);
        QCOMPARE(Application::shared().applicationState(), Application::Active);
    }

    // A WeChat share whose answer never reaches the sharing kit counts as cancelled once the app
    // is back; the kit takes the next share.
    void unansweredWeChatShareEndsOnReturn()
    {
        ShareSDK::clientShareContent(gameContent(), ShareTypeWeixiSession, recordShares());
        QVERIFY(ShareQrPrompt::shared().isShown());
        // The answer reaches nobody (as when WeChat's handler takes it while a payment is
        // pending), and the app comes back.
        platform::ApplicationDelegate *delegate = Application::shared().delegate();
        Application::shared().setDelegate(nullptr);
        ShareQrPrompt::shared().done();
        Application::shared().setDelegate(delegate);
        QCOMPARE(states(), (QList<SSResponseState>{SSResponseStateBegin, SSResponseStateCancel}));
        QVERIFY(HudRecorder::shared().history().isEmpty());

        m_shares.clear();
        ShareSDK::clientShareContent(gameContent(), ShareTypeWeixiSession, recordShares());
        QVERIFY(ShareQrPrompt::shared().isShown());
        ShareQrPrompt::shared().done();
        QCOMPARE(states(), (QList<SSResponseState>{SSResponseStateBegin, SSResponseStateSuccess}));
    }

    void weChatAnswersAreRead_data()
    {
        QTest::addColumn<QUrl>("url");
        QTest::addColumn<bool>("handled");
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("returnKey");
        const QString scheme = QStringLiteral("wx7d3b5f1a9c2e4860://");
        QTest::newRow("paid") << QUrl(scheme + "pay/?returnKey=&ret=0") << true << "pay" << 0
                              << QString() << "";
        QTest::newRow("refused") << QUrl(scheme + "pay/?returnKey=k1&ret=-2") << true << "pay" << -2
                                 << QString() << "k1";
        QTest::newRow("failed with a reason")
                << WXApi::payAnswerURL(WXErrCodeCommon, QStringLiteral("余额不足 & 重试")) << true
                << "pay" << -1 << "余额不足 & 重试"
                << "";
        QTest::newRow("no code") << QUrl(scheme + "pay/?returnKey=") << true << "pay" << -1
                                 << QString() << "";
        QTest::newRow("shared") << WXApi::shareAnswerURL(WXSuccess) << true << "share" << 0
                                << QString() << "";
        QTest::newRow("upper-case scheme")
                << QUrl(QStringLiteral("WX7D3B5F1A9C2E4860://pay/?ret=0")) << true << "pay" << 0
                << QString() << "";
        QTest::newRow("unknown answer")
                << QUrl(scheme + "oauth?code=1") << false << "" << 0 << QString() << "";
        QTest::newRow("another app id") << QUrl(QStringLiteral("wx1111111111111111://pay/?ret=0"))
                                        << false << "" << 0 << QString() << "";
        QTest::newRow("web address") << QUrl(QStringLiteral("https://weixin.qq.com/pay/?ret=0"))
                                     << false << "" << 0 << QString() << "";
    }

    void weChatAnswersAreRead()
    {
        QFETCH(QUrl, url);
        QFETCH(bool, handled);
        QFETCH(QString, kind);
        QFETCH(int, code);
        QFETCH(QString, text);
        QFETCH(QString, returnKey);
        AnswerRecorder recorder;
        QCOMPARE(WXApi::handleOpenURL(url, &recorder), handled);
        QCOMPARE(recorder.kinds, kind.isEmpty() ? QStringList() : QStringList{kind});
        if (!handled)
            return;
        QCOMPARE(recorder.codes.first(), code);
        QCOMPARE(recorder.texts.first(), text);
        QCOMPARE(recorder.texts.first().isNull(), text.isNull());
        QCOMPARE(recorder.returnKeys.first(), returnKey);
    }

    void qrCodes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("encodes");
        QTest::newRow("page address") << "http://127.0.0.1:8080/products/12" << true;
        QTest::newRow("chinese text") << "《星际远征》限时五折" << true;
        QTest::newRow("empty") << "" << false;
        QTest::newRow("too long for a symbol") << QString(4000, QLatin1Char('x')) << false;
    }

    void qrCodes()
    {
        QFETCH(QString, text);
        QFETCH(bool, encodes);
        const platform::QrCode code = platform::QrCode::encode(text);
        QCOMPARE(!code.isNull(), encodes);
        if (!encodes) {
            QVERIFY(code.toImage(4).isNull());
            return;
        }
        // A symbol of version v has 17 + 4v modules a side, with finder patterns in three
        // corners: dark outer ring, light ring, dark centre, light separator.
        QVERIFY(code.width() >= 21);
        QCOMPARE((code.width() - 17) % 4, 0);
        for (const auto &[x, y] :
             {std::pair{0, 0}, std::pair{code.width() - 7, 0}, std::pair{0, code.width() - 7}}) {
            QVERIFY(code.isDark(x, y));
            QVERIFY(!code.isDark(x + 1, y + 1));
            QVERIFY(code.isDark(x + 3, y + 3));
        }
        QVERIFY(!code.isDark(7, 7));
        QVERIFY(!code.isDark(-1, 0));
        const QImage image = code.toImage(3, 4);
        QCOMPARE(image.width(), (code.width() + 8) * 3);
        QCOMPARE(image.pixelColor(0, 0), QColor(Qt::white));
        QCOMPARE(image.pixelColor(4 * 3, 4 * 3), QColor(Qt::black));
    }

    void coveringMakesTheAppInactive()
    {
        auto &application = Application::shared();
        application.setApplicationIconBadgeNumber(7);
        QSignalSpy becameActive(&application, &Application::didBecomeActive);
        application.beginCovering();
        application.beginCovering();
        QCOMPARE(application.applicationState(), Application::Inactive);
        application.endCovering();
        QCOMPARE(application.applicationState(), Application::Inactive);
        QCOMPARE(becameActive.count(), 0);
        application.endCovering();
        QCOMPARE(application.applicationState(), Application::Active);
        QCOMPARE(becameActive.count(), 1);
        // The delegate heard it: its return to the front clears the icon's number.
        QCOMPARE(application.applicationIconBadgeNumber(), 0);
        application.endCovering(); // unbalanced: nothing happens
        QCOMPARE(becameActive.count(), 1);
    }

    // Launch work of the kits waits for the window's first frame (or the grace time), runs in
    // the order asked, and is dropped with its context.
    void workAfterTheFirstFrame_data()
    {
        QTest::addColumn<bool>("windowOnItsWay");
        QTest::addColumn<bool>("frameShown");
        QTest::addColumn<bool>("contextGone");
        QTest::addColumn<QStringList>("ran");
        const QStringList both{QStringLiteral("first"), QStringLiteral("second")};
        QTest::newRow("no window: one pass later") << false << false << false << both;
        QTest::newRow("after the first frame") << true << true << false << both;
        QTest::newRow("no frame: after the grace time") << true << false << false << both;
        QTest::newRow("context gone: dropped") << true << true << true << QStringList();
    }

    void workAfterTheFirstFrame()
    {
        QFETCH(bool, windowOnItsWay);
        QFETCH(bool, frameShown);
        QFETCH(bool, contextGone);
        QFETCH(QStringList, ran);

        auto &application = Application::shared();
        if (windowOnItsWay)
            application.expectFirstFrame();
        auto context = std::make_unique<QObject>();
        QStringList done;
        application.afterFirstFrame(context.get(), [&done] { done << QStringLiteral("first"); });
        application.afterFirstFrame(context.get(), [&done] { done << QStringLiteral("second"); });
        QCoreApplication::processEvents();
        if (windowOnItsWay)
            QVERIFY(done.isEmpty());
        if (contextGone)
            context.reset();
        if (frameShown)
            application.firstFrameShown();
        if (ran.isEmpty()) {
            QCoreApplication::processEvents();
            QVERIFY(!application.isWaitingForFirstFrame());
        } else {
            QTRY_COMPARE_WITH_TIMEOUT(done, ran, Application::FirstFrameGraceMs * 3);
        }
        QCOMPARE(done, ran);
        QVERIFY(!application.isWaitingForFirstFrame());
    }

    void shareSheetScreenshot()
    {
        platform::Window *window = AppDelegate::shared()->window();
        window->setRootViewController(new platform::NavigationController(new GameDetailStandIn));
        window->makeKeyAndVisible();
        ShellWindow shell;
        QVERIFY(shell.show(window));

        ShareSDK::clientShareContent(gameContent(), ShareTypeWeixiSession, recordShares());
        auto *qr = shell.find(QStringLiteral("shareQrCode"));
        QVERIFY(qr);
        QTRY_COMPARE(shell.find(QStringLiteral("shareQrSheet"))->opacity(), 1.0);
        QVERIFY(qr->property("modules").toInt() >= 21);
        QVERIFY(shell.snapshot(QStringLiteral("kits_wechat_share_qr.png")));

        // The card's "完成" answers as a finished share.
        auto *card = shell.find(QStringLiteral("shareQrCard"));
        QVERIFY(card);
        const QPointF done = card->mapToScene(QPointF(card->width() * 0.75, card->height() - 23));
        QTest::mouseClick(shell.window(), Qt::LeftButton, {}, done.toPoint());
        QCOMPARE(states(), (QList<SSResponseState>{SSResponseStateBegin, SSResponseStateSuccess}));
        QVERIFY(!ShareQrPrompt::shared().isShown());
        shell.close();
        QVERIFY2(LogRecorder::qmlWarnings().isEmpty(),
                 qPrintable(LogRecorder::qmlWarnings().join(QLatin1Char('\n'))));
    }
};

TARVEL_TEST_MAIN(TestKits)
#include "tst_kits.moc"
