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
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/RowModel.h"
#include "platform/ui/TextField.h"
#include "screens/account/HelpAndFeedbackViewController.h"
#include "screens/account/NavRootViewController.h"
#include "screens/account/PreferencesViewController.h"
#include "screens/account/TabFourViewController.h"
#include "screens/purchase/MyOrderViewController.h"

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
// four seeded orders, cancel the unpaid one, read the help page, turn push off and on, sign out.
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

        // Cancel the unpaid order from the list: no question, the list comes back without it.
        HudRecorder::shared().clear();
        QVERIFY(tap(QStringLiteral("buttonCancle")));
        QTRY_VERIFY(HudRecorder::shared().history().contains(QStringLiteral("正在取消...")));
        QTRY_COMPARE(statesShown(orders).count(QStringLiteral("已取消")), 2);
        QVERIFY(!statesShown(orders).contains(QStringLiteral("未付款")));
        QTRY_VERIFY(!findNamed(root(), QStringLiteral("buttonCancle")));
        QVERIFY(tap(QStringLiteral("orderTab2")));
        QTRY_COMPARE(statesShown(orders), QStringList{QStringLiteral("已完成")});
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
