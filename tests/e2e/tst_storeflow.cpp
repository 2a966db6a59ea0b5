#include "InProcessStore.h"
#include "QuickTestItems.h"
#include "StoreProcess.h"
#include "TestEnvironment.h"

#include "app/AppDelegate.h"
#include "app/AppLaunch.h"
#include "app/WindowSnapshot.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/TabBarController.h"
#include "platform/ui/Window.h"
#include "screens/store/BindingPackageViewContoller.h"
#include "screens/store/GoodsDetailViewController.h"
#include "screens/store/TabOneViewController.h"

#include <QDir>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QPointer>
#include <QProcess>
#include <QQmlApplicationEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>
#include <QTemporaryDir>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using tarvel::test::findAllNamed;
using tarvel::test::findNamed;

namespace {

// GET `url` and the decoded "data" of the store's answer.
QVariant storeData(QNetworkAccessManager &network, const QString &url)
{
    QNetworkReply *reply = network.get(QNetworkRequest(QUrl(url)));
    QSignalSpy finished(reply, &QNetworkReply::finished);
    finished.wait(10000);
    const QVariant data
            = QJsonDocument::fromJson(reply->readAll()).toVariant().toMap().value("data");
    reply->deleteLater();
    return data;
}

} // namespace

// The store and the app end to end: tarvel-store runs as its own process, the app starts as it
// does for a user (offscreen), the home grid shows, a game opens, then its DLC list and a DLC, and
// back leads to the home page in one step.
class TestStoreFlow : public QObject
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

    bool stacksBusy() const { return tarvel::test::stacksBusy(root()); }

    // The item, once it shows.
    QQuickItem *waitNamed(const QString &name)
    {
        QQuickItem *found = nullptr;
        if (!QTest::qWaitFor([&] { return (found = findNamed(root(), name)) != nullptr; }, 10000))
            qWarning() << "no item named" << name;
        return found;
    }

    void click(QQuickItem *item) { QVERIFY(tarvel::test::tapWhenStill(m_window, item)); }

    void clickAt(const QPoint &point) { QTest::mouseClick(m_window, Qt::LeftButton, {}, point); }

    void snapshot(const QString &name)
    {
        QVERIFY(tarvel::test::waitForStillScene(m_window));
        QVERIFY(WindowSnapshot::save(
                m_window, QDir(tarvel::test::TestEnvironment::artifactsDir()).filePath(name)));
    }

    platform::NavigationController *homeStack() const
    {
        auto *tabs = qobject_cast<platform::TabBarController *>(
                AppDelegate::shared()->window()->rootViewController());
        return tabs ? qobject_cast<platform::NavigationController *>(tabs->viewControllerAt(0))
                    : nullptr;
    }

    TabOneViewController *home() const
    {
        platform::NavigationController *stack = homeStack();
        return stack ? qobject_cast<TabOneViewController *>(stack->viewControllerAt(0)) : nullptr;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_storeFolder.isValid());
        // The store picks its port and says which; nothing can take it in between.
        const int port = tarvel::test::startStoreOnAnyPort(
                m_storeProcess,
                {QStringLiteral("--db"), m_storeFolder.filePath(QStringLiteral("store.sqlite")),
                 QStringLiteral("--quiet"), QStringLiteral("--sandbox")});
        QVERIFY(port > 0);
        m_baseUrl = QStringLiteral("http://127.0.0.1:%1").arg(port);
        QVERIFY(QTest::qWaitFor(
                [this] { return storeData(m_network, m_baseUrl + "/store.json").isValid(); },
                30000));
        qputenv("TARVEL_API_BASE_URL", m_baseUrl.toUtf8());
    }

    void cleanupTestCase()
    {
        m_engine.reset();
        m_storeProcess.terminate();
        if (!m_storeProcess.waitForFinished(10000))
            m_storeProcess.kill();
    }

    void homeToDlcAndBackInOneStep()
    {
        m_engine = std::make_unique<QQmlApplicationEngine>();
        m_window = AppLaunch::launch(*qGuiApp, *m_engine);
        QVERIFY(m_window);
        QVERIFY(QTest::qWaitForWindowExposed(m_window));

        // The home grid with its first page of covers.
        QVERIFY(QTest::qWaitFor([this] { return home() && !home()->arraySource().isEmpty(); },
                                20000));
        QVERIFY(QTest::qWaitFor(
                [this] {
                    QQuickItem *cell = findNamed(root(), QStringLiteral("homePageViewCell"));
                    return cell && cell->property("coverReady").toBool();
                },
                20000));
        snapshot(QStringLiteral("storeflow_1_home.png"));

        // A shown game that has DLCs.
        QQuickItem *gameCell = nullptr;
        QString gameId;
        const QList<Object_HomeGames> games = home()->arraySource();
        for (QQuickItem *cell : findAllNamed(root(), QStringLiteral("homePageViewCell"))) {
            const QString title = cell->property("row").toMap().value("title").toString();
            for (const Object_HomeGames &game : games) {
                if (game.title != title)
                    continue;
                const QVariantMap detail = storeData(m_network, m_baseUrl + "/products/" + game.id
                                                                        + ".json?verbose=1")
                                                   .toMap();
                if (!detail.value("dlcs").toList().isEmpty() && !gameCell) {
                    gameCell = cell;
                    gameId = game.id;
                }
            }
        }
        QVERIFY2(gameCell, "no game with DLCs on the first screen of the home grid");
        click(gameCell);
        QTRY_COMPARE(homeStack()->depth(), 2);
        auto *game = qobject_cast<GoodsDetailViewController *>(homeStack()->topViewController());
        QVERIFY(game);
        QCOMPARE(game->gameId(), gameId);
        QVERIFY(QTest::qWaitFor([game] { return game->isLoaded(); }, 10000));
        snapshot(QStringLiteral("storeflow_2_game.png"));

        // Its DLC list, from the DLC row further down the page.
        QQuickItem *table = waitNamed(QStringLiteral("goodsDetailTable"));
        QVERIFY(table);
        QMetaObject::invokeMethod(table, "positionViewAtEnd");
        click(waitNamed(QStringLiteral("goodsDetailCell2_1")));
        QTRY_COMPARE(homeStack()->depth(), 3);
        auto *list = qobject_cast<BindingPackageViewContoller *>(homeStack()->topViewController());
        QVERIFY(list);
        QCOMPARE(list->navTitle(), game->sourceModel()->title + QStringLiteral("的DLC"));
        QVERIFY(waitNamed(QStringLiteral("bindingPackageRow0")));
        snapshot(QStringLiteral("storeflow_3_dlcs.png"));

        // A DLC.
        click(waitNamed(QStringLiteral("bindingPackageRow0")));
        QTRY_COMPARE(homeStack()->depth(), 4);
        auto *dlc = qobject_cast<GoodsDetailViewController *>(homeStack()->topViewController());
        QVERIFY(dlc);
        QCOMPARE(dlc->gameId(), list->arraySource().first().id);
        QVERIFY(QTest::qWaitFor([dlc] { return dlc->isLoaded(); }, 10000));
        QCOMPARE(dlc->parentID(), gameId);
        snapshot(QStringLiteral("storeflow_4_dlc.png"));

        // Back: the home page in one step.
        QVERIFY(QTest::qWaitFor([this] { return !stacksBusy(); }));
        clickAt(QPoint(22, 42)); // the back button at the left of the bar
        QTRY_COMPARE(homeStack()->depth(), 1);
        QVERIFY(waitNamed(QStringLiteral("homeGrid")));
        snapshot(QStringLiteral("storeflow_5_back_home.png"));
    }
};

TARVEL_TEST_MAIN(TestStoreFlow)
#include "tst_storeflow.moc"
