#include "HudRecorder.h"
#include "tst_kits_support.h"

#include "InProcessStore.h"
#include "app/Q9FatherViewController.h"
#include "platform/kits/Application.h"
#include "platform/kits/ShareSDK.h"
#include "platform/kits/WXApi.h"
#include "platform/kits/WeChatPayPrompt.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"

#include <QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using namespace kitstest;
using platform::Application;
using platform::WeChatPayPrompt;

namespace {

// An unpaid order of the demo user, with the payment parameters the store issued for it.
struct PendingOrder
{
    QString orderId;
    QString subtotal;
    Object_WeChatInfo payment;
};

class ConfirmOrderStandIn : public Q9FatherViewController
{
protected:
    void viewDidLoad() override
    {
        Q9FatherViewController::viewDidLoad();
        setNavTitleWithString(QStringLiteral("确认订单"));
    }
};

} // namespace

// WeChat payment from the app's side: the request sendPay builds, the sandbox sheet settling the
// prepay with tarvel-store, and the answer reaching the order screen's callback by each road
// (WeChat's answer, the return to the app without one, or both).
class TestPayment : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<tarvel::test::InProcessStore> m_store;
    QList<bool> m_reports;
    int m_nextGame = 2;

    AppDelegate *app() { return AppDelegate::shared(); }

    // Orders the next game the demo user does not own yet and asks the store to pay it.
    std::optional<PendingOrder> orderAndPrepay()
    {
        PendingOrder order;
        QString orderUrl;
        for (; m_nextGame < 60 && orderUrl.isEmpty(); ++m_nextGame) {
            const QString game = QString::number(m_nextGame);
            const StoreAnswer made = waitFor([&](const SuccessFn &ok, const FailureFn &failed) {
                NetWorkHelper::shareInstance()->createOrderOneKeyWithGameId(game, {}, {}, ok,
                                                                            failed);
            });
            orderUrl = made.data.toMap().value(QStringLiteral("url")).toString();
            order.orderId = made.data.toMap().value(QStringLiteral("order_id")).toString();
        }
        if (orderUrl.isEmpty())
            return std::nullopt;
        const StoreAnswer detail = waitFor([&](const SuccessFn &ok, const FailureFn &failed) {
            NetWorkHelper::shareInstance()->getOrderDetailWithOrderUrl(orderUrl, {}, {}, ok,
                                                                       failed);
        });
        order.subtotal = detail.data.toMap().value(QStringLiteral("order_subtotal")).toString();
        const StoreAnswer pay = waitFor([&](const SuccessFn &ok, const FailureFn &failed) {
            NetWorkHelper::shareInstance()->getThirdPaymentDataWithPaymentMethod(
                    QStringLiteral("wechat"), order.orderId,
                    ShareSDK::sandboxUid(ShareTypeWeixiSession), {}, {}, ok, failed);
        });
        const auto info = JSONModel::initWithDictionary<Object_WeChatInfo>(
                pay.data.toMap().value(QStringLiteral("params_info")));
        if (!info)
            return std::nullopt;
        order.payment = *info;
        return order;
    }

    QVariantMap completion(const QString &orderId)
    {
        return waitFor([&](const SuccessFn &ok, const FailureFn &failed) {
                   NetWorkHelper::shareInstance()->queryOrderWithOrder_id(orderId, {}, {}, ok,
                                                                          failed);
               })
                .data.toMap();
    }

    static Object_WeChatInfo unknownPrepay()
    {
        Object_WeChatInfo info;
        info.appid = QStringLiteral("wx7d3b5f1a9c2e4860");
        info.partnerid = QStringLiteral("1900000109");
        info.prepayid = QStringLiteral("wx-unknown-prepay");
        info.noncestr = QStringLiteral("NONCE");
        info.timestamp = QStringLiteral("1714550400");
        info.sign = QStringLiteral("SIGN");
        return info;
    }

    // Clears a payment left pending by a test without reporting it anywhere.
    void forgetPendingPayment()
    {
        app()->setWeChatBlock([](bool) {});
        if (WeChatPayPrompt::shared().isShown())
            WeChatPayPrompt::shared().dismiss();
        if (app()->isWeChatPay())
            app()->applicationDidBecomeActive();
        app()->setWeChatBlock(
                [this](bool mayHaveSucceeded) { m_reports.append(mayHaveSucceeded); });
    }

private slots:
    void initTestCase()
    {
        LogRecorder::install();
        m_store = std::make_unique<tarvel::test::InProcessStore>();
        QVERIFY(m_store->isRunning());
        qputenv("TARVEL_API_BASE_URL", m_store->baseUrl().toUtf8());
        app()->initWithShareSDK();
        QVERIFY(signInDemoUser());
        platform::Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
    }

    void init()
    {
        forgetPendingPayment();
        m_reports.clear();
        LogRecorder::clear();
        HudRecorder::shared().clear();
    }

    void cleanup() { forgetPendingPayment(); }

    void nothingToPaySendsNothing()
    {
        app()->sendPay(std::nullopt);
        QVERIFY(LogRecorder::infos().contains(QStringLiteral("服务器返回错误")));
        QVERIFY(!app()->isWeChatPay());
        QVERIFY(!WeChatPayPrompt::shared().isShown());
        QCOMPARE(Application::shared().applicationState(), Application::Active);
    }

    void payRequestIsFilledFromTheParameters_data()
    {
        QTest::addColumn<QString>("timestamp");
        QTest::addColumn<uint>("timeStamp");
        QTest::newRow("seconds") << "1714550400" << 1714550400u;
        QTest::newRow("leading digits") << "12abc" << 12u;
        QTest::newRow("blank before") << " 42" << 42u;
        QTest::newRow("empty") << "" << 0u;
        QTest::newRow("no digits") << "abc" << 0u;
        QTest::newRow("beyond 32 bits clamps") << "99999999999" << 2147483647u;
        QTest::newRow("negative wraps") << "-5" << 4294967291u;
    }

    void payRequestIsFilledFromTheParameters()
    {
        QFETCH(QString, timestamp);
        QFETCH(uint, timeStamp);
        Object_WeChatInfo info = unknownPrepay();
        info.timestamp = timestamp;
        info.package = QStringLiteral("prepay_id=wx-unknown-prepay"); // never passed on
        app()->setOpenID(QStringLiteral("oUser"));

        app()->sendPay(info);
        QVERIFY(app()->isWeChatPay());
        QVERIFY(WeChatPayPrompt::shared().isShown());
        const PayReq req = WeChatPayPrompt::shared().request();
        QCOMPARE(req.openID, QStringLiteral("oUser"));
        QCOMPARE(req.partnerId, info.partnerid);
        QCOMPARE(req.prepayId, info.prepayid);
        QCOMPARE(req.nonceStr, info.noncestr);
        QCOMPARE(req.timeStamp, timeStamp);
        QCOMPARE(req.package, QStringLiteral("Sign=WXPay"));
        QCOMPARE(req.sign, info.sign);
        const QString logged = QStringLiteral("appid=wx7d3b5f1a9c2e4860\npartid=1900000109\n"
                                              "prepayid=wx-unknown-prepay\nnoncestr=NONCE\n"
                                              "timestamp=%1\npackage=Sign=WXPay\nsign=SIGN")
                                       .arg(timeStamp);
        QVERIFY2(LogRecorder::infos().contains(logged),
                 qPrintable(LogRecorder::infos().join(QLatin1Char('|'))));
    }

    // The sheet cannot pay a prepay the store does not know; refusing it still answers.
    void unknownPrepayCanOnlyBeRefused()
    {
        app()->sendPay(unknownPrepay());
        auto &prompt = WeChatPayPrompt::shared();
        QTRY_COMPARE(prompt.status(), QStringLiteral("支付订单不存在或已失效"));
        QVERIFY(!prompt.canConfirm());
        QVERIFY(prompt.amount().isEmpty());
        prompt.confirm();
        QVERIFY(prompt.isShown());
        prompt.cancel();
        QTRY_VERIFY(!prompt.isShown());
        QCOMPARE(m_reports, QList<bool>{false});
        QVERIFY(LogRecorder::infos().contains(
                QStringLiteral("错误，retcode = -2, retstr = (null)")));
    }

    void paymentSequences_data()
    {
        QTest::addColumn<QString>("choice");
        QTest::addColumn<QList<bool>>("reports");
        QTest::addColumn<int>("completed");
        QTest::addColumn<QString>("logged");
        QTest::newRow("paid") << "confirm" << QList<bool>{true} << 1
                              << "支付成功－PaySuccess，retcode = 0";
        QTest::newRow("refused") << "cancel" << QList<bool>{false} << 0
                                 << "错误，retcode = -2, retstr = (null)";
        QTest::newRow("back to the app first") << "dismiss" << QList<bool>{true} << 0 << "";
        QTest::newRow("back first, answer later")
                << "dismiss then answer" << QList<bool>{true, true} << 0
                << "支付成功－PaySuccess，retcode = 0";
    }

    void paymentSequences()
    {
        QFETCH(QString, choice);
        QFETCH(QList<bool>, reports);
        QFETCH(int, completed);
        QFETCH(QString, logged);
        const std::optional<PendingOrder> order = orderAndPrepay();
        QVERIFY(order);
        Application::shared().setApplicationIconBadgeNumber(3);
        QSignalSpy becameActive(&Application::shared(), &Application::didBecomeActive);

        app()->sendPay(order->payment);
        auto &prompt = WeChatPayPrompt::shared();
        QVERIFY(app()->isWeChatPay());
        QCOMPARE(Application::shared().applicationState(), Application::Inactive);
        const QString amount
                = QStringLiteral("¥") + QString::number(order->subtotal.toDouble(), 'f', 2);
        QTRY_COMPARE(prompt.amount(), amount);
        QCOMPARE(prompt.orderNumber(), order->orderId);
        QVERIFY(prompt.canConfirm());

        if (choice == QLatin1String("confirm"))
            prompt.confirm();
        else if (choice == QLatin1String("cancel"))
            prompt.cancel();
        else
            prompt.dismiss();
        QTRY_VERIFY(!prompt.isShown());
        QTRY_COMPARE(becameActive.count(), 1);
        if (choice == QLatin1String("dismiss then answer")) {
            QCOMPARE(m_reports, QList<bool>{true});
            QVERIFY(app()->openURL(WXApi::payAnswerURL(WXSuccess), WXApi::sourceApplication(), {}));
        }

        QCOMPARE(m_reports, reports);
        QVERIFY(!app()->isWeChatPay());
        QCOMPARE(Application::shared().applicationState(), Application::Active);
        QCOMPARE(Application::shared().applicationIconBadgeNumber(), 0);
        QCOMPARE(completion(order->orderId).value(QStringLiteral("completed")).toInt(), completed);
        if (!logged.isEmpty())
            QVERIFY2(LogRecorder::infos().contains(logged),
                     qPrintable(LogRecorder::infos().join(QLatin1Char('|'))));
    }

    // The window getting focus while WeChat is in front does not bring the app back.
    void focusWhileWeChatIsInFrontReportsNothing()
    {
        app()->sendPay(unknownPrepay());
        app()->applicationDidBecomeActive(); // as the shell reports a focused window
        QVERIFY(app()->isWeChatPay());
        QVERIFY(m_reports.isEmpty());
        WeChatPayPrompt::shared().dismiss();
        QCOMPARE(m_reports, QList<bool>{true});
        app()->applicationDidBecomeActive();
        QCOMPARE(m_reports, QList<bool>{true});
    }

    // The store refuses to complete an order cancelled while WeChat was open: WeChat answers
    // with an error and the order screen hears of a failure.
    void confirmingACancelledOrderFails()
    {
        const std::optional<PendingOrder> order = orderAndPrepay();
        QVERIFY(order);
        app()->sendPay(order->payment);
        auto &prompt = WeChatPayPrompt::shared();
        QTRY_VERIFY(prompt.canConfirm());
        const StoreAnswer cancelled = waitFor([&](const SuccessFn &ok, const FailureFn &failed) {
            NetWorkHelper::shareInstance()->cancleMyOrderListWithOrderID(order->orderId, {}, {}, ok,
                                                                         failed);
        });
        QVERIFY(cancelled.ok);
        prompt.confirm();
        QTRY_VERIFY(!prompt.isShown());
        QCOMPARE(m_reports, QList<bool>{false});
        QVERIFY2(LogRecorder::infos().contains(QStringLiteral(
                         "错误，retcode = -1, retstr = 该笔支付已取消或已失效，请重新发起支付")),
                 qPrintable(LogRecorder::infos().join(QLatin1Char('|'))));
    }

    void openedAddressesAreRouted_data()
    {
        QTest::addColumn<bool>("pending");
        QTest::addColumn<QString>("entry");
        QTest::addColumn<QUrl>("url");
        QTest::addColumn<bool>("handled");
        QTest::addColumn<QList<bool>>("reports");
        QTest::addColumn<QString>("hud");
        const QUrl paid = WXApi::payAnswerURL(WXSuccess);
        const QUrl weibo(QStringLiteral("wb0631431896://response?id=1"));
        QTest::newRow("pay answer, payment pending")
                << true << "openURL" << paid << true << QList<bool>{true} << "";
        QTest::newRow("pay answer, nothing pending (through sharing)")
                << false << "openURL" << paid << true << QList<bool>{true} << "";
        QTest::newRow("weibo answer, payment pending (WeChat refuses it)")
                << true << "openURL" << weibo << false << QList<bool>{} << "";
        QTest::newRow("weibo answer, nothing pending (sharing takes it)")
                << false << "openURL" << weibo << true << QList<bool>{} << "";
        QTest::newRow("share answer, payment pending")
                << true << "openURL" << WXApi::shareAnswerURL(WXSuccess) << true << QList<bool>{}
                << "分享成功";
        QTest::newRow("foreign address")
                << false << "openURL" << QUrl(QStringLiteral("https://example.com/a")) << false
                << QList<bool>{} << "";
        QTest::newRow("another app's WeChat answer")
                << true << "openURL" << QUrl(QStringLiteral("wx0000000000000000://pay/?ret=0"))
                << false << QList<bool>{} << "";
        QTest::newRow("handleOpenURL always asks sharing")
                << true << "handleOpenURL" << WXApi::payAnswerURL(WXErrCodeUserCancel) << true
                << QList<bool>{false} << "";
    }

    void openedAddressesAreRouted()
    {
        QFETCH(bool, pending);
        QFETCH(QString, entry);
        QFETCH(QUrl, url);
        QFETCH(bool, handled);
        QFETCH(QList<bool>, reports);
        QFETCH(QString, hud);
        if (pending) {
            app()->sendPay(unknownPrepay());
            QVERIFY(app()->isWeChatPay());
        }
        const bool answer = entry == QLatin1String("handleOpenURL")
                                    ? app()->handleOpenURL(url)
                                    : app()->openURL(url, WXApi::sourceApplication(), {});
        QCOMPARE(answer, handled);
        QCOMPARE(m_reports, reports);
        // Only an answer WeChat's handler read ends the pending payment.
        QCOMPARE(app()->isWeChatPay(), pending && !handled);
        QCOMPARE(HudRecorder::shared().history(), hud.isEmpty() ? QStringList() : QStringList{hud});
    }

    void sheetScreenshot()
    {
        const std::optional<PendingOrder> order = orderAndPrepay();
        QVERIFY(order);
        platform::Window *window = app()->window();
        window->setRootViewController(new platform::NavigationController(new ConfirmOrderStandIn));
        window->makeKeyAndVisible();
        ShellWindow shell;
        QVERIFY(shell.show(window));

        app()->sendPay(order->payment);
        QTRY_VERIFY(WeChatPayPrompt::shared().canConfirm());
        auto *panel = shell.find(QStringLiteral("weChatPayPanel"));
        QVERIFY(panel);
        QTRY_COMPARE(panel->y() + panel->height() - panel->property("radius").toReal(), 667.0);
        QVERIFY(shell.snapshot(QStringLiteral("kits_wechat_pay.png")));

        // The sheet's own button pays.
        auto *confirm = shell.find(QStringLiteral("weChatPayConfirm"));
        QVERIFY(confirm);
        shell.click(confirm);
        QTRY_COMPARE(m_reports, QList<bool>{true});
        QTRY_VERIFY(!shell.find(QStringLiteral("weChatPaySheet"))->isVisible());
        QCOMPARE(completion(order->orderId).value(QStringLiteral("completed")).toInt(), 1);
        shell.close();
        QVERIFY2(LogRecorder::qmlWarnings().isEmpty(),
                 qPrintable(LogRecorder::qmlWarnings().join(QLatin1Char('\n'))));
    }
};

TARVEL_TEST_MAIN(TestPayment)
#include "tst_payment.moc"
