#include "JourneyApp.h"

#include "platform/ui/RowModel.h"
#include "screens/purchase/ConfirmOrderViewController.h"
#include "screens/purchase/MyGamesViewController.h"
#include "screens/purchase/TabThreeViewController.h"
#include "screens/store/GoodsDetailViewController.h"
#include "screens/store/LibraryViewController.h"
#include "screens/store/TabOneViewController.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QQmlExtensionPlugin>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using tarvel::test::findText;

namespace {

// Every table's rows as text, by table, in row order.
using Tables = QMap<QString, QStringList>;

Tables readTables(const QString &path)
{
    SQLite::Database db(path.toStdString(), SQLite::OPEN_READONLY);
    Tables tables;
    SQLite::Statement names(db, "SELECT name FROM sqlite_master WHERE type = 'table' "
                                "AND name NOT LIKE 'sqlite_%'");
    while (names.executeStep()) {
        const std::string table = names.getColumn(0).getString();
        SQLite::Statement rows(db, "SELECT * FROM \"" + table + "\" ORDER BY rowid");
        QStringList lines;
        while (rows.executeStep()) {
            QStringList values;
            for (int column = 0; column < rows.getColumnCount(); ++column)
                values.append(QString::fromStdString(rows.getColumn(column).getString()));
            lines.append(values.join(QLatin1Char('|')));
        }
        tables.insert(QString::fromStdString(table), lines);
    }
    return tables;
}

QStringList added(const QStringList &before, const QStringList &after)
{
    QStringList rows;
    for (const QString &row : after) {
        if (!before.contains(row))
            rows.append(row);
    }
    return rows;
}

} // namespace

// A purchase as a customer makes it, against tarvel-store as its own process and the app started
// as main() starts it: sign in from the cart tab, tick a line, delete the other, order with
// WELCOME10 (attached, detached, attached again), pay in the WeChat sandbox, see the result, find
// the game under "我的游戏", then buy a second game with "立即购买" from its page. Afterwards the
// database holds both orders as completed and the coupon as used, and nothing else has changed.
class TestPurchaseFlow : public QObject
{
    Q_OBJECT

private:
    tarvel::test::JourneyApp m_app;

    QQuickItem *root() const { return m_app.root(); }
    platform::NavigationController *stack(int tab) const { return m_app.stack(tab); }
    platform::ViewController *top(int tab) const { return m_app.top(tab); }

    // The index of `gameId` in the home grid, or -1.
    int gridIndexOf(const QString &gameId) const
    {
        auto *home = m_app.first<TabOneViewController>(0);
        if (!home)
            return -1;
        const QList<QVariantMap> rows = home->collectionMenu()->rows();
        for (int index = 0; index < rows.size(); ++index) {
            if (rows.at(index).value(QStringLiteral("gameId")).toString() == gameId)
                return index;
        }
        return -1;
    }

    // Whether a grid cell inside the window shows "已拥有" for `gameId`.
    bool ownedBadgeShownFor(const QString &gameId) const
    {
        const QRectF screen(0, 0, m_app.window()->width(), m_app.window()->height());
        for (QQuickItem *badge : tarvel::test::findAllNamed(root(), QStringLiteral("ownedBadge"))) {
            QQuickItem *cell = badge->parentItem();
            while (cell && !cell->property("row").isValid())
                cell = cell->parentItem();
            if (!badge->isVisible() || !cell
                || cell->property("row").toMap().value(QStringLiteral("gameId")).toString()
                           != gameId)
                continue;
            if (screen.contains(
                        badge->mapRectToScene(QRectF(0, 0, badge->width(), badge->height()))))
                return findText(badge, QStringLiteral("已拥有")) != nullptr;
        }
        return false;
    }

    int visibleBadges(const QString &name) const
    {
        int shown = 0;
        for (QQuickItem *badge : tarvel::test::findAllNamed(root(), name))
            shown += badge->isVisible() ? 1 : 0;
        return shown;
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_app.startStore());
        // The HUDs of this journey stay up and take no touches.
        platform::Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
        m_app.setTapsWaitForHud(false);
    }

    void cleanupTestCase()
    {
        m_app.close();
        m_app.stopStore();
    }

    void buyFromTheCartAndWithBuyNow()
    {
        const Tables before = readTables(m_app.databasePath());
        QVERIFY(m_app.launch());

        // The cart tab asks for a sign-in first.
        QVERIFY(m_app.tapNamed(QStringLiteral("tabButton1")));
        QVERIFY(m_app.signIn(QStringLiteral("13800138000"), QStringLiteral("tarvel2024")));
        QVERIFY(QTest::qWaitFor([this] { return m_app.tabs()->selectedIndex() == 1; }, 20000));
        auto *cart = qobject_cast<TabThreeViewController *>(top(1));
        QVERIFY(cart);
        QVERIFY(QTest::qWaitFor([cart] { return cart->cells().size() == 2; }, 20000));
        QTRY_COMPARE(AppDelegate::shared()->labelRedDot()->text(), QStringLiteral("2"));
        QVERIFY(m_app.waitOnScreen(QStringLiteral("cartBadge")));
        QVERIFY(m_app.snapshot(QStringLiteral("purchaseflow_1_cart.png")));

        // Tick the first line, slide the second open and delete it.
        const QString boughtFromCart = cart->arraySource().at(0).id;
        const QString deleted = cart->arraySource().at(1).id;
        QVERIFY(m_app.tapNamed(QStringLiteral("cartCell0")));
        QTRY_COMPARE(cart->arraySelect().first(), QStringLiteral("1"));
        QQuickItem *second = m_app.waitOnScreen(QStringLiteral("cartCell1"));
        const QPoint start
                = second->mapToScene(QPointF(second->width() * 0.7, second->height() / 2))
                          .toPoint();
        QTest::mousePress(m_app.window(), Qt::LeftButton, {}, start);
        for (int step = 1; step <= 6; ++step)
            QTest::mouseMove(m_app.window(), start - QPoint(step * 10, 0), 16);
        QTest::mouseRelease(m_app.window(), Qt::LeftButton, {}, start - QPoint(60, 0), 16);
        QTRY_COMPARE(cart->cells().at(1)->contentX(), -40.0);
        QVERIFY(m_app.tap(tarvel::test::findNamed(second, QStringLiteral("cartDeleteButton"))));
        QVERIFY(QTest::qWaitFor([cart] { return cart->cells().size() == 1; }, 20000));
        QTRY_COMPARE(AppDelegate::shared()->labelRedDot()->text(), QStringLiteral("1"));
        QCOMPARE(cart->arraySelect(), QStringList{QStringLiteral("1")});

        // Submit: the order screen with its amounts.
        QVERIFY(m_app.tapNamed(QStringLiteral("cartSubmit")));
        ConfirmOrderViewController *order = nullptr;
        QVERIFY(QTest::qWaitFor(
                [&] {
                    order = qobject_cast<ConfirmOrderViewController *>(top(1));
                    return order && order->isOrderLoaded();
                },
                20000));
        QCOMPARE(order->gamesID(), QStringList{boughtFromCart});
        const QString subtotal = order->sourceModel().order_subtotal;

        // WELCOME10: attached, detached, attached again.
        for (const QString &step :
             {QStringLiteral("使用成功"), QStringLiteral("取消成功"), QStringLiteral("使用成功")}) {
            HudRecorder::shared().clear();
            if (step == QStringLiteral("使用成功")) {
                QVERIFY(m_app.fill(QStringLiteral("confirmCouponField"),
                                   QStringLiteral("WELCOME10")));
                QVERIFY(m_app.tapNamed(QStringLiteral("confirmCouponSure")));
            } else {
                QVERIFY(m_app.tapNamed(QStringLiteral("confirmCouponCancel")));
            }
            QVERIFY2(m_app.waitForHud(step, 20000),
                     qPrintable(HudRecorder::shared().history().join('|')));
        }
        QCOMPARE(order->footerView()->labelCouponPrice()->text(), QStringLiteral("-¥10"));
        const QString paid = order->modelCoupon()->subtotal;
        QCOMPARE(paid.toDouble(), subtotal.toDouble() - 10);
        QVERIFY(m_app.snapshot(QStringLiteral("purchaseflow_2_order.png")));

        // Pay, confirm in the sandbox: "购买成功" with the amount.
        BuySuccessViewController *result = m_app.payInWeChatSandbox();
        QVERIFY(result);
        QCOMPARE(result, top(1));
        QVERIFY(m_app.waitOnScreen(QStringLiteral("buySuccessCell0")));
        QVERIFY(findText(root(), QStringLiteral("订单金额:¥") + paid));
        QCOMPARE(result->title(), QStringLiteral("购买成功"));
        QVERIFY(m_app.snapshot(QStringLiteral("purchaseflow_3_result.png")));
        const QString firstOrder = result->sourceModel().value("id").toString();

        // "继续购物": the cart's root, now empty.
        QVERIFY(m_app.tapNamed(QStringLiteral("buySuccessContinue")));
        QTRY_COMPARE(stack(1)->depth(), 1);
        QVERIFY(QTest::qWaitFor([cart] { return !cart->isEmptyViewHidden(); }, 20000));

        // "我的游戏" from the library: the bought game is there.
        stack(1)->pushViewController(new LibraryViewController, true);
        QVERIFY(m_app.tapNamed(QStringLiteral("libraryRow1")));
        MyGamesViewController *games = nullptr;
        QVERIFY(QTest::qWaitFor(
                [&] {
                    games = qobject_cast<MyGamesViewController *>(top(1));
                    return games && !games->arraySource().isEmpty()
                           && !games->refreshHeader()->isRefreshing();
                },
                20000));
        QStringList owned;
        for (const Object_MyGameList &game : games->arraySource())
            owned.append(game.gameId);
        QVERIFY(owned.contains(boughtFromCart));
        QVERIFY(m_app.snapshot(QStringLiteral("purchaseflow_4_my_games.png")));

        // A second game with "立即购买" from its page, opened from the home tab.
        QString secondGame;
        for (const QString &id : m_app.latestGameIds()) {
            if (!owned.contains(id) && id != deleted && id != boughtFromCart) {
                secondGame = id;
                break;
            }
        }
        QVERIFY(!secondGame.isEmpty());
        stack(1)->popToRootViewController(true); // back out of the library to the cart
        QVERIFY(m_app.tapNamed(QStringLiteral("tabButton0")));
        QTRY_COMPARE(m_app.tabs()->selectedIndex(), 0);
        auto *page = new GoodsDetailViewController;
        page->setGameId(secondGame);
        stack(0)->pushViewController(page, true);
        QVERIFY(QTest::qWaitFor([page] { return page->isLoaded(); }, 20000));
        QVERIFY(m_app.tapNamed(QStringLiteral("buyNowButton")));
        ConfirmOrderViewController *oneKey = nullptr;
        QVERIFY(QTest::qWaitFor(
                [&] {
                    oneKey = qobject_cast<ConfirmOrderViewController *>(top(0));
                    return oneKey && oneKey->isOrderLoaded();
                },
                20000));
        QCOMPARE(oneKey->type(), 1);
        BuySuccessViewController *secondResult = m_app.payInWeChatSandbox();
        QVERIFY(secondResult);
        QCOMPARE(secondResult, top(0));
        const QString secondOrder = secondResult->sourceModel().value("id").toString();
        QVERIFY(m_app.snapshot(QStringLiteral("purchaseflow_5_second_result.png")));

        // "继续购物" back to the home grid: the game just bought carries "已拥有" on its cover,
        // and on its page beside the price, without a relaunch.
        QVERIFY(m_app.tapNamed(QStringLiteral("buySuccessContinue")));
        QTRY_COMPARE(stack(0)->depth(), 1);
        QVERIFY(QTest::qWaitFor([this] { return !tarvel::test::stacksBusy(root()); }, 20000));
        QQuickItem *grid = m_app.waitOnScreen(QStringLiteral("homeGrid"));
        QVERIFY(grid);
        QVERIFY(QMetaObject::invokeMethod(grid, "positionViewAtIndex",
                                          Q_ARG(int, gridIndexOf(secondGame)),
                                          Q_ARG(int, 1 /* GridView.Center */)));
        QVERIFY(QTest::qWaitFor([&] { return ownedBadgeShownFor(secondGame); }, 20000));
        platform::Hud::shared().dismiss();
        QVERIFY(m_app.snapshot(QStringLiteral("purchaseflow_6_owned_grid.png")));
        auto *ownedPage = new GoodsDetailViewController;
        ownedPage->setGameId(secondGame);
        stack(0)->pushViewController(ownedPage, true);
        QVERIFY(QTest::qWaitFor([ownedPage] { return ownedPage->isLoaded(); }, 20000));
        QVERIFY(ownedPage->isOwned());
        QVERIFY(QTest::qWaitFor(
                [this] { return visibleBadges(QStringLiteral("goodsDetailOwned")) == 1; }, 20000));
        QVERIFY(m_app.snapshot(QStringLiteral("purchaseflow_7_owned_page.png")));
        stack(0)->popToRootViewController(false);

        // The database: both orders completed, the coupon used, nothing else changed.
        m_app.close();
        const Tables after = readTables(m_app.databasePath());
        QStringList changed;
        for (auto it = after.cbegin(); it != after.cend(); ++it) {
            if (before.value(it.key()) != it.value())
                changed.append(it.key());
        }
        const QStringList expected{"cart_items", "coupons",     "order_games", "order_line_items",
                                   "orders",     "owned_games", "prepays",     "sessions"};
        for (const QString &table : changed) {
            QVERIFY2(expected.contains(table) || table == QLatin1String("push_clients")
                             || table == QLatin1String("accounts"),
                     qPrintable(table));
        }
        const QStringList newOrders = added(before.value("orders"), after.value("orders"));
        QCOMPARE(newOrders.size(), 2);
        for (const QString &row : newOrders) {
            QVERIFY2(row.contains(QLatin1String("|completed|")), qPrintable(row));
            const QString id = row.section(QLatin1Char('|'), 0, 0);
            QVERIFY(id == firstOrder || id == secondOrder);
        }
        QCOMPARE(added(after.value("orders"), before.value("orders")), QStringList());
        const QStringList couponsChanged = added(before.value("coupons"), after.value("coupons"));
        QCOMPARE(couponsChanged.size(), 1);
        QVERIFY(couponsChanged.first().contains(QLatin1String("WELCOME10")));
        QCOMPARE(added(after.value("owned_games"), before.value("owned_games")), QStringList());
        QCOMPARE(added(before.value("owned_games"), after.value("owned_games")).size(), 2);
        QCOMPARE(added(before.value("cart_items"), after.value("cart_items")), QStringList());
        QCOMPARE(added(after.value("cart_items"), before.value("cart_items")).size(), 2);
    }
};

TARVEL_TEST_MAIN(TestPurchaseFlow)
#include "tst_purchaseflow.moc"
