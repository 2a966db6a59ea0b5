#include "HudRecorder.h"
#include "InProcessStore.h"
#include "QuickTestItems.h"
#include "StoreProcess.h"
#include "TestEnvironment.h"

#include "app/AppDelegate.h"
#include "app/AppLaunch.h"
#include "app/ICTabBarController.h"
#include "app/WindowSnapshot.h"
#include "platform/UserDefaults.h"
#include "platform/kits/WeChatPayPrompt.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/RowModel.h"
#include "platform/ui/TextField.h"
#include "screens/account/HelpAndFeedbackViewController.h"
#include "screens/account/NavRootViewController.h"
#include "screens/account/PreferencesViewController.h"
#include "screens/account/TabFourViewController.h"
#include "screens/purchase/BuySuccessViewController.h"
#include "screens/purchase/ConfirmOrderViewController.h"
#include "screens/purchase/MyGamesViewController.h"
#include "screens/purchase/MyOrderViewController.h"
#include "screens/store/GoodsDetailViewController.h"

#include <QDir>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProcess>
#include <QQmlApplicationEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTemporaryDir>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using tarvel::test::findNamed;

namespace {

bool storeAnswers(QNetworkAccessManager &network, const QString &url)
{
    QNetworkReply *reply = network.get(QNetworkRequest(QUrl(url)));
    QSignalSpy finished(reply, &QNetworkReply::finished);
    finished.wait(10000);
    const bool ok = reply->error() == QNetworkReply::NoError;
    reply->deleteLater();
    return ok;
}

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
    QTemporaryDir m_storeFolder;
    QProcess m_storeProcess;
    QString m_baseUrl;
    std::unique_ptr<QQmlApplicationEngine> m_engine;
    QQuickWindow *m_window = nullptr;
    QNetworkAccessManager m_network;

    QQuickItem *root() const { return m_window->contentItem(); }

    QQuickItem *waitNamed(const QString &name)
    {
        QQuickItem *found = nullptr;
        if (!QTest::qWaitFor([&] { return (found = findNamed(root(), name)) != nullptr; }, 15000))
            qWarning() << "no item named" << name;
        return found;
    }

    bool tap(const QString &name) { return tarvel::test::tapWhenStill(m_window, waitNamed(name)); }

    template<typename Screen>
    Screen *waitForScreen()
    {
        Screen *screen = nullptr;
        const bool shown = QTest::qWaitFor(
                [&] {
                    screen = qobject_cast<Screen *>(AppDelegate::shared()->visibleViewController());
                    return screen != nullptr && !tarvel::test::stacksBusy(root());
                },
                15000);
        return shown ? screen : nullptr;
    }

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
        QNetworkRequest request(QUrl(m_baseUrl + "/products.json?type=latest&page=1"));
        QNetworkReply *reply = m_network.get(request);
        QSignalSpy finished(reply, &QNetworkReply::finished);
        finished.wait(10000);
        const QVariantList games = QJsonDocument::fromJson(reply->readAll())
                                           .toVariant()
                                           .toMap()
                                           .value(QStringLiteral("data"))
                                           .toList();
        reply->deleteLater();
        auto *mine = new MyGamesViewController;
        AppDelegate::shared()->visibleViewController()->navigationController()->pushViewController(
                mine, false);
        (void)QTest::qWaitFor([mine] { return !mine->arraySource().isEmpty(); }, 15000);
        QStringList owned;
        for (const Object_MyGameList &entry : mine->arraySource())
            owned.append(entry.gameId);
        mine->navigationController()->popViewController(false);
        for (const QVariant &entry : games) {
            const QString id = entry.toMap().value(QStringLiteral("id")).toString();
            if (!owned.contains(id))
                return id;
        }
        return {};
    }

    // Pays the order screen on top in the WeChat sandbox and waits for the purchase result.
    bool payInTheSandbox()
    {
        if (!tap(QStringLiteral("confirmPayButton")))
            return false;
        // The sheet slides up from below the window before its button can be pressed.
        QQuickItem *confirm = waitNamed(QStringLiteral("weChatPayConfirm"));
        const QRectF screen(0, 0, m_window->width(), m_window->height());
        const auto onScreen = [&] {
            return screen.contains(
                    confirm->mapToScene(QPointF(confirm->width() / 2, confirm->height() / 2)));
        };
        if (!confirm || !QTest::qWaitFor(onScreen, 15000)
            || !QTest::qWaitFor([] { return platform::WeChatPayPrompt::shared().canConfirm(); },
                                15000)
            || !tarvel::test::tapWhenStill(m_window, confirm))
            return false;
        auto *result = waitForScreen<BuySuccessViewController>();
        return result && result->title() == QStringLiteral("购买成功");
    }

    ICTabBarController *tabs() const
    {
        return qobject_cast<ICTabBarController *>(
                AppDelegate::shared()->window()->rootViewController());
    }

    void snapshot(const QString &name)
    {
        QTRY_VERIFY(!tarvel::test::stacksBusy(root()));
        QVERIFY(WindowSnapshot::save(
                m_window, QDir(tarvel::test::TestEnvironment::artifactsDir()).filePath(name)));
    }

    void back()
    {
        platform::ViewController *top = AppDelegate::shared()->visibleViewController();
        QVERIFY(top);
        QVERIFY(top->leftBarItem()->tap());
        QTRY_VERIFY(qobject_cast<TabFourViewController *>(
                AppDelegate::shared()->visibleViewController()));
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_storeFolder.isValid());
        const int port = tarvel::test::startStoreOnAnyPort(
                m_storeProcess,
                {QStringLiteral("--db"), m_storeFolder.filePath(QStringLiteral("store.sqlite")),
                 QStringLiteral("--quiet"), QStringLiteral("--sandbox")});
        QVERIFY(port > 0);
        m_baseUrl = QStringLiteral("http://127.0.0.1:%1").arg(port);
        QVERIFY(QTest::qWaitFor(
                [this] { return storeAnswers(m_network, m_baseUrl + "/store.json"); }, 30000));
        qputenv("TARVEL_API_BASE_URL", m_baseUrl.toUtf8());
    }

    void cleanupTestCase()
    {
        m_engine.reset();
        m_storeProcess.terminate();
        if (!m_storeProcess.waitForFinished(10000))
            m_storeProcess.kill();
    }

    void ordersHelpPushAndSignOut()
    {
        m_engine = std::make_unique<QQmlApplicationEngine>();
        m_window = AppLaunch::launch(*qGuiApp, *m_engine);
        QVERIFY(m_window);
        QVERIFY(QTest::qWaitForWindowExposed(m_window));

        // The my-page tab asks for sign-in; signing in lands on it.
        QVERIFY(tap(QStringLiteral("tabButton2")));
        auto *signIn = waitForScreen<NavRootViewController>();
        QVERIFY(signIn);
        QVERIFY(waitNamed(QStringLiteral("fieldUser")));
        // Typed into the form's fields (the keyboard is the sign-in tests' business).
        signIn->fieldUser()->setText(QStringLiteral("demo@tarvel.test"));
        signIn->fieldPassword()->setText(QStringLiteral("tarvel2024"));
        QVERIFY(signIn->buttonLogin()->tap());
        TabFourViewController *myPage = waitForScreen<TabFourViewController>();
        QVERIFY(myPage);
        QTRY_COMPARE(myPage->nickName(), QStringLiteral("邮箱玩家"));
        // The sign-in sheet has slid away and its HUD has gone.
        QTRY_VERIFY_WITH_TIMEOUT(!findNamed(root(), QStringLiteral("fieldUser")), 10000);
        QTRY_VERIFY_WITH_TIMEOUT(!platform::Hud::shared().isVisible(), 10000);
        QVERIFY(tarvel::test::findText(root(), QStringLiteral("邮箱玩家")));
        snapshot(QStringLiteral("journey_1_mypage.png"));

        // "我的订单": the four seeded states.
        QVERIFY(tap(QStringLiteral("menuButton1")));
        MyOrderViewController *orders = waitForScreen<MyOrderViewController>();
        QVERIFY(orders);
        QTRY_COMPARE(orders->tableMain()->count(), 4);
        QStringList labels = statesShown(orders);
        labels.sort();
        QStringList expected{"未付款", "已完成", "已取消", "待定中"};
        expected.sort();
        QCOMPARE(labels, expected);
        QVERIFY(tarvel::test::findText(root(), QStringLiteral("未付款")));
        snapshot(QStringLiteral("journey_2_orders.png"));

        // Pay the unpaid order from the list: the order screen with type 2, then the WeChat
        // sandbox.
        const QString unpaid = orderIn(orders, QStringLiteral("in_checkout"));
        QVERIFY(!unpaid.isEmpty());
        QVERIFY(tap(QStringLiteral("buttonPay")));
        auto *confirm = waitForScreen<ConfirmOrderViewController>();
        QVERIFY(confirm);
        QCOMPARE(confirm->type(), 2);
        QCOMPARE(confirm->gamesID(), QStringList{unpaid});
        QVERIFY(QTest::qWaitFor([confirm] { return confirm->isOrderLoaded(); }, 20000));
        QVERIFY(payInTheSandbox());
        // "继续购物" leads back to the my page; the paid order is under "已完成".
        QVERIFY(tap(QStringLiteral("buySuccessContinue")));
        QVERIFY(waitForScreen<TabFourViewController>());
        QVERIFY(tap(QStringLiteral("menuButton1")));
        orders = waitForScreen<MyOrderViewController>();
        QVERIFY(orders);
        QVERIFY(tap(QStringLiteral("orderTab2")));
        // The tab's own list: completed orders only, the one just paid among them.
        QTRY_VERIFY(!orders->arraySource().isEmpty()
                    && ordersWith(orders, QStringLiteral("completed")).size()
                               == orders->arraySource().size()
                    && ordersWith(orders, QStringLiteral("completed")).contains(unpaid));
        QTRY_VERIFY(!platform::Hud::shared().isVisible());
        snapshot(QStringLiteral("journey_3_paid.png"));
        back();

        // "立即购买" on a game's page, left unpaid, then cancelled from the list without a
        // question.
        const QString game = gameNotOwned();
        QVERIFY(!game.isEmpty());
        auto *page = new GoodsDetailViewController;
        page->setGameId(game);
        myPage->navigationController()->pushViewController(page, true);
        QVERIFY(QTest::qWaitFor([page] { return page->isLoaded(); }, 20000));
        QVERIFY(tap(QStringLiteral("buyNowButton")));
        auto *oneKey = waitForScreen<ConfirmOrderViewController>();
        QVERIFY(oneKey);
        QCOMPARE(oneKey->type(), 1);
        QVERIFY(QTest::qWaitFor([oneKey] { return oneKey->isOrderLoaded(); }, 20000));
        const QString left = oneKey->sourceModel().order_id;
        QVERIFY(!left.isEmpty());
        myPage->navigationController()->popToRootViewController(true);
        QVERIFY(waitForScreen<TabFourViewController>());
        QVERIFY(tap(QStringLiteral("menuButton1")));
        orders = waitForScreen<MyOrderViewController>();
        QVERIFY(orders);
        QVERIFY(tap(QStringLiteral("orderTab1")));
        QTRY_COMPARE(ordersWith(orders, QStringLiteral("in_checkout")), QStringList{left});
        HudRecorder::shared().clear();
        QVERIFY(tap(QStringLiteral("buttonCancle")));
        QTRY_VERIFY(HudRecorder::shared().history().contains(QStringLiteral("正在取消...")));
        QTRY_VERIFY(orders->arraySource().isEmpty());
        QTRY_VERIFY(!findNamed(root(), QStringLiteral("buttonCancle")));
        back();

        // "帮助与反馈": the store's help page in the web view.
        QVERIFY(tap(QStringLiteral("menuButton5")));
        auto *help = waitForScreen<HelpAndFeedbackViewController>();
        QVERIFY(help);
        QTRY_COMPARE_WITH_TIMEOUT(help->webView()->loadState(), platform::WebView::Loaded, 60000);
        QCOMPARE(help->webView()->title(), QStringLiteral("帮助与反馈"));
        back();

        // "偏好设置": push off, then on again.
        QVERIFY(tap(QStringLiteral("menuButton4")));
        auto *preferences = waitForScreen<PreferencesViewController>();
        QVERIFY(preferences);
        QVERIFY(preferences->switchPush()->isOn());
        QVERIFY(tap(QStringLiteral("switchPush")));
        QTRY_COMPARE(platform::UserDefaults::standard().objectForKey("isPush").toString(),
                     QStringLiteral("0"));
        QVERIFY(tap(QStringLiteral("switchPush")));
        QTRY_COMPARE(platform::UserDefaults::standard().objectForKey("isPush").toString(),
                     QStringLiteral("1"));
        back();

        // Sign out: the home tab, and the cart and my tabs ask for sign-in again.
        HudRecorder::shared().clear();
        QVERIFY(tap(QStringLiteral("buttonLogOut")));
        QTRY_COMPARE(tabs()->selectedIndex(), int(ICTabBarController::HomeTab));
        QVERIFY(HudRecorder::shared().history().contains(QStringLiteral("退出成功")));
        QVERIFY(!AppDelegate::shared()->isSignedIn());
        for (const char *tab : {"tabButton1", "tabButton2"}) {
            QTRY_VERIFY(!platform::Hud::shared().isVisible());
            QVERIFY(tap(QString::fromLatin1(tab)));
            auto *signIn = waitForScreen<NavRootViewController>();
            QVERIFY2(signIn, tab);
            QCOMPARE(tabs()->selectedIndex(), int(ICTabBarController::HomeTab));
            QVERIFY(signIn->leftBarItem()->tap());
            QTRY_VERIFY_WITH_TIMEOUT(!findNamed(root(), QStringLiteral("fieldUser")), 10000);
        }
    }
};

int main(int argc, char *argv[])
{
    tarvel::test::TestEnvironment environment;
    AppLaunch::prepare();
    QGuiApplication app(argc, argv);
    TestOrdersJourney test;
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(&test, argc, argv);
}

#include "tst_orders_journey.moc"
