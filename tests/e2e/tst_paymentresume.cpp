#include "HudRecorder.h"
#include "InProcessStore.h"
#include "TestEnvironment.h"
#include "tst_home_fixture.h"
#include "tst_owned_support.h"

#include "app/AppDelegate.h"
#include "app/AppLaunch.h"
#include "app/ICTabBarController.h"
#include "platform/UserDefaults.h"
#include "platform/kits/WeChatPayPrompt.h"
#include "platform/ui/Button.h"
#include "screens/purchase/BuySuccessViewController.h"
#include "screens/purchase/ConfirmBottomView.h"
#include "screens/purchase/ConfirmOrderViewController.h"
#include "screens/purchase/MyOrderViewController.h"
#include "screens/purchase/PendingPaymentCheck.h"
#include "service/PendingPayment.h"

#include <QQmlApplicationEngine>
#include <QQmlExtensionPlugin>
#include <QQuickWindow>
#include <QTcpServer>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using namespace ownedtest;
using platform::WeChatPayPrompt;
using tarvel::test::InProcessStore;
using tarvel::test::ScreenHost;
using Outcome = PendingPaymentCheck::Outcome;

Q_DECLARE_METATYPE(PendingPaymentCheck::Outcome)

namespace {

// An address where nothing answers.
QString deadAddress()
{
    QTcpServer server;
    if (!server.listen(QHostAddress::LocalHost))
        return {};
    const quint16 port = server.serverPort();
    server.close();
    return QStringLiteral("http://127.0.0.1:%1").arg(port);
}

} // namespace

// The app closed while WeChat was in front: the order being paid is remembered, and the next
// launch asks the store about it and shows what the store says: the purchase result, the unpaid
// order, or the order history; with no answer the order stays remembered for the launch after.
class TestPaymentResume : public QObject
{
    Q_OBJECT

    std::unique_ptr<InProcessStore> m_store;

    static AppDelegate *app() { return AppDelegate::shared(); }

    // Starts paying a game the demo account does not own from the order screen, then closes the
    // app before WeChat answers: the screens are gone and nothing hears the answer. Answers the
    // order id and game id.
    std::pair<QString, QString> payAndClose(const QString &settle)
    {
        const QString gameId = firstNotOwned(catalogueIds(), ownedAtTheStore());
        if (gameId.isEmpty())
            return {};
        auto host = std::make_unique<ScreenHost>(new platform::ViewController);
        auto *order
                = new ConfirmOrderViewController({gameId}, ConfirmOrderViewController::BuyDirectly);
        host->navigation()->pushViewController(order, false);
        if (!QTest::qWaitFor([order] { return order->isOrderLoaded(); }, 15000)
            || !order->viewPay()->buttonPay()->tap())
            return {};
        auto &prompt = WeChatPayPrompt::shared();
        if (!QTest::qWaitFor([&prompt] { return prompt.canConfirm(); }, 15000))
            return {};
        const QString orderId = order->sourceModel().order_id;
        host.reset();
        tarvel::test::settle();
        if (settle == QLatin1String("confirm"))
            prompt.confirm();
        else if (settle == QLatin1String("cancel"))
            prompt.cancel();
        else
            prompt.dismiss();
        if (!QTest::qWaitFor([&prompt] { return !prompt.isShown(); }, 15000))
            return {};
        return {orderId, gameId};
    }

    // The next launch: the first screen is up, then the remembered payment is looked into.
    static std::optional<Outcome> relaunch(ScreenHost &host)
    {
        std::optional<Outcome> outcome;
        PendingPaymentCheck::run(host.navigation(),
                                 [&outcome](Outcome result) { outcome = result; });
        if (!QTest::qWaitFor([&outcome] { return outcome.has_value(); }, 15000))
            return std::nullopt;
        return outcome;
    }

private slots:
    void initTestCase()
    {
        StoreOptions options;
        options.requestLog = nullptr;
        options.outboxLog = nullptr;
        m_store = std::make_unique<InProcessStore>(options);
        QVERIFY(m_store->isRunning());
        app()->initWithShareSDK();
    }

    void init()
    {
        tarvel::test::pointApiAt(m_store->baseUrl());
        tarvel::test::resetSharedState();
        PendingPayment::forget();
        QVERIFY(kitstest::signInDemoUser());
    }

    void cleanup()
    {
        if (WeChatPayPrompt::shared().isShown())
            WeChatPayPrompt::shared().dismiss();
        QTRY_VERIFY(!app()->isWeChatPay());
    }

    void recordFollowsTheLatestPayment_data()
    {
        QTest::addColumn<QString>("remembered");
        QTest::addColumn<QString>("settled");
        QTest::addColumn<bool>("kept");
        QTest::newRow("its own answer settles it") << "41"
                                                   << "41" << false;
        QTest::newRow("another order's answer does not") << "42"
                                                         << "41" << true;
        QTest::newRow("nothing remembered") << ""
                                            << "41" << false;
    }

    void recordFollowsTheLatestPayment()
    {
        QFETCH(QString, remembered);
        QFETCH(QString, settled);
        QFETCH(bool, kept);
        const QDateTime started = QDateTime(QDate(2026, 5, 1), QTime(20, 44, 57), Qt::UTC);
        PendingPayment::remember(remembered, started);
        platform::UserDefaults::standard().reload(); // as a new launch reads it
        QCOMPARE(PendingPayment::current().has_value(), !remembered.isEmpty());
        PendingPayment::settle(settled);
        const std::optional<PendingPayment::Record> record = PendingPayment::current();
        QCOMPARE(record.has_value(), kept);
        if (kept) {
            QCOMPARE(record->orderId, remembered);
            QCOMPARE(record->startedAt, started);
        }
    }

    // Killed between "pay" and WeChat's answer; the store alone says what became of the order.
    void launchAfterAnInterruptedPayment_data()
    {
        QTest::addColumn<QString>("payer");
        QTest::addColumn<bool>("cancelOrder");
        QTest::addColumn<Outcome>("outcome");
        QTest::newRow("confirmed") << "confirm" << false << Outcome::Paid;
        QTest::newRow("refused") << "cancel" << false << Outcome::Unpaid;
        QTest::newRow("never answered") << "dismiss" << false << Outcome::Unpaid;
        QTest::newRow("order cancelled meanwhile") << "cancel" << true << Outcome::Closed;
    }

    void launchAfterAnInterruptedPayment()
    {
        QFETCH(QString, payer);
        QFETCH(bool, cancelOrder);
        QFETCH(Outcome, outcome);
        const auto [orderId, gameId] = payAndClose(payer);
        QVERIFY(!orderId.isEmpty());
        // The answer reached no screen: the order is still remembered.
        QVERIFY(PendingPayment::current());
        QCOMPARE(PendingPayment::current()->orderId, orderId);
        if (cancelOrder)
            QVERIFY(waitFor([&](const SuccessFn &ok, const FailureFn &failed) {
                        NetWorkHelper::shareInstance()->cancleMyOrderListWithOrderID(
                                orderId, {}, {}, ok, failed);
                    }).ok);
        OwnedGames::shared().clear();
        platform::UserDefaults::standard().reload();

        ScreenHost host(new platform::ViewController);
        QCOMPARE(relaunch(host), std::optional<Outcome>(outcome));
        QVERIFY(!PendingPayment::current());
        tarvel::test::settle();
        switch (outcome) {
        case Outcome::Paid: {
            auto *result = qobject_cast<BuySuccessViewController *>(host.top());
            QVERIFY(result);
            QCOMPARE(result->tableMain()->rows().value(1).value("title").toString(),
                     QStringLiteral("订单号:") + orderId);
            QTRY_VERIFY(OwnedGames::shared().contains(gameId));
            break;
        }
        case Outcome::Unpaid: {
            auto *order = qobject_cast<ConfirmOrderViewController *>(host.top());
            QVERIFY(order);
            QCOMPARE(order->type(), int(ConfirmOrderViewController::ExistingOrder));
            QCOMPARE(order->gamesID(), QStringList{orderId});
            QTRY_VERIFY(order->isOrderLoaded());
            QVERIFY(!OwnedGames::shared().contains(gameId));
            break;
        }
        default:
            QVERIFY(qobject_cast<MyOrderViewController *>(host.top()));
            break;
        }
    }

    // Without the store the order stays remembered, nothing is shown, and the launch after asks
    // again.
    void launchWithoutTheStoreKeepsTheOrder()
    {
        const auto [orderId, gameId] = payAndClose(QStringLiteral("confirm"));
        QVERIFY(!orderId.isEmpty());
        const std::optional<PendingPayment::Record> before = PendingPayment::current();
        QVERIFY(before);

        const QString dead = deadAddress();
        QVERIFY(!dead.isEmpty());
        tarvel::test::pointApiAt(dead);
        {
            ScreenHost host(new platform::ViewController);
            QCOMPARE(relaunch(host), std::optional<Outcome>(Outcome::Unanswered));
            tarvel::test::settle();
            QCOMPARE(host.depth(), 1);
            const std::optional<PendingPayment::Record> after = PendingPayment::current();
            QVERIFY(after);
            QCOMPARE(after->orderId, before->orderId);
            QCOMPARE(after->startedAt, before->startedAt);
        }

        tarvel::test::pointApiAt(m_store->baseUrl());
        ScreenHost host(new platform::ViewController);
        QCOMPARE(relaunch(host), std::optional<Outcome>(Outcome::Paid));
        QVERIFY(qobject_cast<BuySuccessViewController *>(host.top()));
        QVERIFY(!PendingPayment::current());
    }

    // The app's own launch looks into the remembered payment once its first screen is up, and
    // shows the purchase result on the home tab.
    void appLaunchShowsTheResult()
    {
        const auto [orderId, gameId] = payAndClose(QStringLiteral("confirm"));
        QVERIFY(!orderId.isEmpty());
        QQmlApplicationEngine engine;
        QQuickWindow *window = AppLaunch::launch(*qGuiApp, engine);
        QVERIFY(window);
        BuySuccessViewController *result = nullptr;
        QTRY_VERIFY((result
                     = qobject_cast<BuySuccessViewController *>(app()->visibleViewController())));
        QCOMPARE(result->tableMain()->rows().value(1).value("title").toString(),
                 QStringLiteral("订单号:") + orderId);
        auto *tabs = qobject_cast<ICTabBarController *>(app()->window()->rootViewController());
        QVERIFY(tabs);
        QCOMPARE(tabs->selectedIndex(), int(ICTabBarController::HomeTab));
        QVERIFY(!PendingPayment::current());
        QTRY_VERIFY(OwnedGames::shared().contains(gameId));
    }

    // An order the store does not know for this account (another account's, say) is forgotten
    // without showing anything.
    void launchWithAnOrderTheStoreRefuses()
    {
        PendingPayment::remember(QStringLiteral("999999"));
        ScreenHost host(new platform::ViewController);
        QCOMPARE(relaunch(host), std::optional<Outcome>(Outcome::Refused));
        tarvel::test::settle();
        QCOMPARE(host.depth(), 1);
        QVERIFY(!PendingPayment::current());
    }

    // Signed out, the store cannot be asked: the order waits for a launch with the user back.
    void signedOutLaunchWaits()
    {
        PendingPayment::remember(QStringLiteral("9"));
        app()->setUserLogin(std::nullopt);
        ScreenHost host(new platform::ViewController);
        QCOMPARE(relaunch(host), std::optional<Outcome>(Outcome::NothingPending));
        QCOMPARE(host.depth(), 1);
        QCOMPARE(PendingPayment::current()->orderId, QStringLiteral("9"));
    }
};

TARVEL_TEST_MAIN(TestPaymentResume)
#include "tst_paymentresume.moc"
