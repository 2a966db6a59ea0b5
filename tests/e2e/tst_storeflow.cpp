#include "JourneyApp.h"

#include "screens/store/BindingPackageViewContoller.h"
#include "screens/store/GoodsDetailViewController.h"
#include "screens/store/TabOneViewController.h"

#include <QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using tarvel::test::findAllNamed;
using tarvel::test::findNamed;

// The store and the app end to end: tarvel-store runs as its own process, the app starts as it
// does for a user (offscreen), the home grid shows, a game opens, then its DLC list and a DLC, and
// back leads to the home page in one step.
class TestStoreFlow : public QObject
{
    Q_OBJECT

private:
    tarvel::test::JourneyApp m_app;

    QQuickItem *root() const { return m_app.root(); }
    platform::NavigationController *homeStack() const { return m_app.stack(0); }

    TabOneViewController *home() const { return m_app.first<TabOneViewController>(0); }

private slots:
    void initTestCase() { QVERIFY(m_app.startStore()); }

    void cleanupTestCase()
    {
        m_app.close();
        m_app.stopStore();
    }

    void homeToDlcAndBackInOneStep()
    {
        QVERIFY(m_app.launch());

        // The home grid with its first page of covers.
        QVERIFY(QTest::qWaitFor([this] { return home() && !home()->arraySource().isEmpty(); },
                                20000));
        QVERIFY(QTest::qWaitFor(
                [this] {
                    QQuickItem *cell = findNamed(root(), QStringLiteral("homePageViewCell"));
                    return cell && cell->property("coverReady").toBool();
                },
                20000));
        QVERIFY(m_app.snapshot(QStringLiteral("storeflow_1_home.png")));

        // A shown game that has DLCs.
        QQuickItem *gameCell = nullptr;
        QString gameId;
        const QList<Object_HomeGames> games = home()->arraySource();
        for (QQuickItem *cell : findAllNamed(root(), QStringLiteral("homePageViewCell"))) {
            const QString title = cell->property("row").toMap().value("title").toString();
            for (const Object_HomeGames &game : games) {
                if (game.title != title)
                    continue;
                const QVariantMap detail
                        = m_app.storeData("/products/" + game.id + ".json?verbose=1").toMap();
                if (!detail.value("dlcs").toList().isEmpty() && !gameCell) {
                    gameCell = cell;
                    gameId = game.id;
                }
            }
        }
        QVERIFY2(gameCell, "no game with DLCs on the first screen of the home grid");
        QVERIFY(m_app.tap(gameCell));
        QTRY_COMPARE(homeStack()->depth(), 2);
        auto *game = qobject_cast<GoodsDetailViewController *>(homeStack()->topViewController());
        QVERIFY(game);
        QCOMPARE(game->gameId(), gameId);
        QVERIFY(QTest::qWaitFor([game] { return game->isLoaded(); }, 10000));
        QVERIFY(m_app.snapshot(QStringLiteral("storeflow_2_game.png")));

        // Its DLC list, from the DLC row further down the page.
        QQuickItem *table = m_app.waitNamed(QStringLiteral("goodsDetailTable"));
        QVERIFY(table);
        QMetaObject::invokeMethod(table, "positionViewAtEnd");
        QVERIFY(m_app.tapNamed(QStringLiteral("goodsDetailCell2_1")));
        QTRY_COMPARE(homeStack()->depth(), 3);
        auto *list = qobject_cast<BindingPackageViewContoller *>(homeStack()->topViewController());
        QVERIFY(list);
        QCOMPARE(list->navTitle(), game->sourceModel()->title + QStringLiteral("的DLC"));
        QVERIFY(m_app.waitNamed(QStringLiteral("bindingPackageRow0")));
        QVERIFY(m_app.snapshot(QStringLiteral("storeflow_3_dlcs.png")));

        // A DLC.
        QVERIFY(m_app.tapNamed(QStringLiteral("bindingPackageRow0")));
        QTRY_COMPARE(homeStack()->depth(), 4);
        auto *dlc = qobject_cast<GoodsDetailViewController *>(homeStack()->topViewController());
        QVERIFY(dlc);
        QCOMPARE(dlc->gameId(), list->arraySource().first().id);
        QVERIFY(QTest::qWaitFor([dlc] { return dlc->isLoaded(); }, 10000));
        QCOMPARE(dlc->parentID(), gameId);
        QVERIFY(m_app.snapshot(QStringLiteral("storeflow_4_dlc.png")));

        // Back: the home page in one step.
        QVERIFY(m_app.tapBack());
        QTRY_COMPARE(homeStack()->depth(), 1);
        QVERIFY(m_app.waitNamed(QStringLiteral("homeGrid")));
        QVERIFY(m_app.snapshot(QStringLiteral("storeflow_5_back_home.png")));
    }
};

TARVEL_TEST_MAIN(TestStoreFlow)
#include "tst_storeflow.moc"
