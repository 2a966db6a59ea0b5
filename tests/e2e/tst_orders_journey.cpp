#include "JourneyApp.h"

#include "app/ICTabBarController.h"
#include "platform/UserDefaults.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/RowModel.h"
#include "screens/account/HelpAndFeedbackViewController.h"
#include "screens/account/NavRootViewController.h"
#include "screens/account/PreferencesViewController.h"
#include "screens/account/TabFourViewController.h"
#include "screens/purchase/ConfirmOrderViewController.h"
#include "screens/purchase/MyGamesViewController.h"
#include "screens/purchase/MyOrderViewController.h"
#include "screens/store/GoodsDetailViewController.h"

#include <QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using tarvel::test::findNamed;

namespace {

QStringList statesShown(const MyOrderViewController *orders)
{
    QStringList labels;
    for (const QVariantMap &row : orders->tableMain()->rows())
        labels.append(row.value(QStringLiteral("status")).toString());
    return labels;
}

} // namespace

// The order history and the my page end to end: tarvel-store runs as its own process and the app
// starts as it does for a user. Sign in with the e-mail demo account from the my-page tab, find the
// four seeded orders, pay the unpaid one in the WeChat sandbox and find it completed, leave a
// "立即购买" order unpaid and cancel it from the list, read the help page, turn push off and on,
// sign out.
class TestOrdersJourney : public QObject
{
    Q_OBJECT

private:
    tarvel::test::JourneyApp m_app;

    QQuickItem *root() const { return m_app.root(); }

    // The id of the first listed order in `state`, or nothing.
    static QString orderIn(const MyOrderViewController *orders, const QString &state)
    {
        const QStringList ids = ordersWith(orders, state);
        return ids.value(0);
    }

    static QStringList ordersWith(const MyOrderViewController *orders, const QString &state)
    {
        QStringList ids;
        for (const Object_MyOrderList &order : orders->arraySource()) {
            if (order.state == state)
                ids.append(order.id);
        }
        return ids;
    }

    // A game of the catalogue that the signed-in account neither owns nor has ordered.
    QString gameNotOwned()
    {
        const QStringList games = m_app.latestGameIds();
        auto *mine = new MyGamesViewController;
        AppDelegate::shared()->visibleViewController()->navigationController()->pushViewController(
                mine, false);
        (void)QTest::qWaitFor([mine] { return !mine->arraySource().isEmpty(); }, 15000);
        QStringList owned;
        for (const Object_MyGameList &entry : mine->arraySource())
            owned.append(entry.gameId);
        mine->navigationController()->popViewController(false);
        for (const QString &id : games) {
            if (!owned.contains(id))
                return id;
        }
        return {};
    }

    ICTabBarController *tabs() const { return qobject_cast<ICTabBarController *>(m_app.tabs()); }

    void back()
    {
        platform::ViewController *top = AppDelegate::shared()->visibleViewController();
        QVERIFY(top);
        QVERIFY(top->leftBarItem()->tap());
        QTRY_VERIFY(qobject_cast<TabFourViewController *>(
                AppDelegate::shared()->visibleViewController()));
    }

private slots:
    void initTestCase() { QVERIFY(m_app.startStore()); }

    void cleanupTestCase()
    {
        m_app.close();
        m_app.stopStore();
    }

    void ordersHelpPushAndSignOut()
    {
        QVERIFY(m_app.launch());

        // The my-page tab asks for sign-in; signing in lands on it.
        QVERIFY(m_app.tapNamed(QStringLiteral("tabButton2")));
        auto *signIn = m_app.waitForScreen<NavRootViewController>();
        QVERIFY(signIn);
        QVERIFY(m_app.signIn(QStringLiteral("demo@tarvel.test"), QStringLiteral("tarvel2024")));
        TabFourViewController *myPage = m_app.waitForScreen<TabFourViewController>();
        QVERIFY(myPage);
        QTRY_COMPARE(myPage->nickName(), QStringLiteral("邮箱玩家"));
        // The sign-in sheet has slid away and its HUD has gone.
        QTRY_VERIFY_WITH_TIMEOUT(!findNamed(root(), QStringLiteral("fieldUser")), 10000);
        QTRY_VERIFY_WITH_TIMEOUT(!platform::Hud::shared().isVisible(), 10000);
        QVERIFY(tarvel::test::findText(root(), QStringLiteral("邮箱玩家")));
        QVERIFY(m_app.snapshot(QStringLiteral("journey_1_mypage.png")));

        // "我的订单": the four seeded states.
        QVERIFY(m_app.tapNamed(QStringLiteral("menuButton1")));
        MyOrderViewController *orders = m_app.waitForScreen<MyOrderViewController>();
        QVERIFY(orders);
        QTRY_COMPARE(orders->tableMain()->count(), 4);
        QStringList labels = statesShown(orders);
        labels.sort();
        QStringList expected{"未付款", "已完成", "已取消", "待定中"};
        expected.sort();
        QCOMPARE(labels, expected);
        QVERIFY(tarvel::test::findText(root(), QStringLiteral("未付款")));
        QVERIFY(m_app.snapshot(QStringLiteral("journey_2_orders.png")));

        // Pay the unpaid order from the list: the order screen with type 2, then the WeChat
        // sandbox.
        const QString unpaid = orderIn(orders, QStringLiteral("in_checkout"));
        QVERIFY(!unpaid.isEmpty());
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonPay")));
        auto *confirm = m_app.waitForScreen<ConfirmOrderViewController>();
        QVERIFY(confirm);
        QCOMPARE(confirm->type(), 2);
        QCOMPARE(confirm->gamesID(), QStringList{unpaid});
        QVERIFY(QTest::qWaitFor([confirm] { return confirm->isOrderLoaded(); }, 20000));
        BuySuccessViewController *result = m_app.payInWeChatSandbox();
        QVERIFY(result);
        QCOMPARE(result->title(), QStringLiteral("购买成功"));
        // "继续购物" leads back to the my page; the paid order is under "已完成".
        QVERIFY(m_app.tapNamed(QStringLiteral("buySuccessContinue")));
        QVERIFY(m_app.waitForScreen<TabFourViewController>());
        QVERIFY(m_app.tapNamed(QStringLiteral("menuButton1")));
        orders = m_app.waitForScreen<MyOrderViewController>();
        QVERIFY(orders);
        QVERIFY(m_app.tapNamed(QStringLiteral("orderTab2")));
        // The tab's own list: completed orders only, the one just paid among them.
        QTRY_VERIFY(!orders->arraySource().isEmpty()
                    && ordersWith(orders, QStringLiteral("completed")).size()
                               == orders->arraySource().size()
                    && ordersWith(orders, QStringLiteral("completed")).contains(unpaid));
        QTRY_VERIFY(!platform::Hud::shared().isVisible());
        QVERIFY(m_app.snapshot(QStringLiteral("journey_3_paid.png")));
        back();

        // "立即购买" on a game's page, left unpaid, then cancelled from the list without a
        // question.
        const QString game = gameNotOwned();
        QVERIFY(!game.isEmpty());
        auto *page = new GoodsDetailViewController;
        page->setGameId(game);
        myPage->navigationController()->pushViewController(page, true);
        QVERIFY(QTest::qWaitFor([page] { return page->isLoaded(); }, 20000));
        QVERIFY(m_app.tapNamed(QStringLiteral("buyNowButton")));
        auto *oneKey = m_app.waitForScreen<ConfirmOrderViewController>();
        QVERIFY(oneKey);
        QCOMPARE(oneKey->type(), 1);
        QVERIFY(QTest::qWaitFor([oneKey] { return oneKey->isOrderLoaded(); }, 20000));
        const QString left = oneKey->sourceModel().order_id;
        QVERIFY(!left.isEmpty());
        myPage->navigationController()->popToRootViewController(true);
        QVERIFY(m_app.waitForScreen<TabFourViewController>());
        QVERIFY(m_app.tapNamed(QStringLiteral("menuButton1")));
        orders = m_app.waitForScreen<MyOrderViewController>();
        QVERIFY(orders);
        QVERIFY(m_app.tapNamed(QStringLiteral("orderTab1")));
        QTRY_COMPARE(ordersWith(orders, QStringLiteral("in_checkout")), QStringList{left});
        HudRecorder::shared().clear();
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonCancle")));
        QTRY_VERIFY(HudRecorder::shared().history().contains(QStringLiteral("正在取消...")));
        QTRY_VERIFY(orders->arraySource().isEmpty());
        QTRY_VERIFY(!findNamed(root(), QStringLiteral("buttonCancle")));
        back();

        // "帮助与反馈": the store's help page in the web view.
        QVERIFY(m_app.tapNamed(QStringLiteral("menuButton5")));
        auto *help = m_app.waitForScreen<HelpAndFeedbackViewController>();
        QVERIFY(help);
        QTRY_COMPARE_WITH_TIMEOUT(help->webView()->loadState(), platform::WebView::Loaded, 60000);
        QCOMPARE(help->webView()->title(), QStringLiteral("帮助与反馈"));
        back();

        // "偏好设置": push off, then on again.
        QVERIFY(m_app.tapNamed(QStringLiteral("menuButton4")));
        auto *preferences = m_app.waitForScreen<PreferencesViewController>();
        QVERIFY(preferences);
        QVERIFY(preferences->switchPush()->isOn());
        QVERIFY(m_app.tapNamed(QStringLiteral("switchPush")));
        QTRY_COMPARE(platform::UserDefaults::standard().objectForKey("isPush").toString(),
                     QStringLiteral("0"));
        QVERIFY(m_app.tapNamed(QStringLiteral("switchPush")));
        QTRY_COMPARE(platform::UserDefaults::standard().objectForKey("isPush").toString(),
                     QStringLiteral("1"));
        back();

        // Sign out: the home tab, and the cart and my tabs ask for sign-in again.
        HudRecorder::shared().clear();
        QVERIFY(m_app.tapNamed(QStringLiteral("buttonLogOut")));
        QTRY_COMPARE(tabs()->selectedIndex(), int(ICTabBarController::HomeTab));
        QVERIFY(HudRecorder::shared().history().contains(QStringLiteral("退出成功")));
        QVERIFY(!AppDelegate::shared()->isSignedIn());
        for (const char *tab : {"tabButton1", "tabButton2"}) {
            QTRY_VERIFY(!platform::Hud::shared().isVisible());
            QVERIFY(m_app.tapNamed(QString::fromLatin1(tab)));
            auto *signIn = m_app.waitForScreen<NavRootViewController>();
            QVERIFY2(signIn, tab);
            QCOMPARE(tabs()->selectedIndex(), int(ICTabBarController::HomeTab));
            QVERIFY(signIn->leftBarItem()->tap());
            QTRY_VERIFY_WITH_TIMEOUT(!findNamed(root(), QStringLiteral("fieldUser")), 10000);
        }
    }
};

TARVEL_TEST_MAIN(TestOrdersJourney)
#include "tst_orders_journey.moc"
