#include "HudRecorder.h"
#include "InProcessStore.h"
#include "TestEnvironment.h"
#include "tst_home_fixture.h"
#include "tst_owned_support.h"

#include "app/AppDelegate.h"
#include "platform/kits/ShareSDK.h"
#include "platform/kits/WeChatPayPrompt.h"
#include "platform/ui/Button.h"
#include "platform/ui/RefreshHeader.h"
#include "screens/purchase/BuySuccessViewController.h"
#include "screens/purchase/ConfirmBottomView.h"
#include "screens/purchase/ConfirmOrderViewController.h"
#include "screens/store/BindingPackageViewContoller.h"
#include "screens/store/GoodsDetailViewController.h"
#include "screens/store/SearchDetailViewController.h"
#include "screens/store/TabOneViewController.h"
#include "service/ICCookiesHelper.h"
#include "service/PendingPayment.h"
#include "util/ICRuntimeHelper.h"

#include <QQmlExtensionPlugin>
#include <QQuickItem>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using namespace ownedtest;
using platform::Hud;
using platform::WeChatPayPrompt;
using tarvel::test::InProcessStore;
using tarvel::test::ScreenHost;

namespace {

const QStringList ListKinds{QStringLiteral("home grid"), QStringLiteral("search results"),
                            QStringLiteral("DLC list"), QStringLiteral("bundle list")};

// The detail answer of the first catalogue game with DLCs or with bundles (`key`).
QVariantMap gameWithRelated(const QString &key)
{
    for (int id = 1; id <= 80; ++id) {
        const QVariantMap detail = detailOf(QString::number(id));
        if (!detail.value(key).toList().isEmpty())
            return detail;
    }
    return {};
}

QList<Object_DLCOrBind> relatedItems(const QVariantMap &detail, const QString &key)
{
    return ICRuntimeHelper::analysArrayData<Object_DLCOrBind>(detail.value(key))
            .value_or(QList<Object_DLCOrBind>());
}

} // namespace

// "已拥有" on the games the signed-in user owns: on the home grid, the search results, the DLC
// and bundle lists and the game's page; from the store's owned-games answer, after sign-in,
// pull-to-refresh and a payment made in the app; gone at sign-out. And the store's refusal of a
// game that was bought elsewhere while it sat in the cart.
class TestOwnedMarks : public QObject
{
    Q_OBJECT

    std::unique_ptr<InProcessStore> m_store;

    static AppDelegate *app() { return AppDelegate::shared(); }

    static bool signIn()
    {
        if (!kitstest::signInDemoUser())
            return false;
        // The owned games follow every sign-in.
        const QStringList owned = ownedAtTheStore();
        return QTest::qWaitFor([owned] { return OwnedGames::shared().gameIds() == owned; }, 15000);
    }

    static void signOut()
    {
        app()->setUserLogin(std::nullopt);
        ICCookiesHelper::deleteCookies();
    }

    // Opens the list of `kind` in `host` and answers its rows once loaded.
    platform::RowModel *openList(const QString &kind, std::unique_ptr<ScreenHost> &host)
    {
        if (kind == QLatin1String("home grid")) {
            auto *home = new TabOneViewController;
            host = std::make_unique<ScreenHost>(home);
            if (!QTest::qWaitFor([home] { return home->collectionMenu()->count() > 0; }, 15000))
                return nullptr;
            return home->collectionMenu();
        }
        if (kind == QLatin1String("search results")) {
            auto *search = new SearchDetailViewController(QString());
            host = std::make_unique<ScreenHost>(search);
            if (!QTest::qWaitFor([search] { return search->collectionMenu()->count() > 0; }, 15000))
                return nullptr;
            return search->collectionMenu();
        }
        const QString key = kind == QLatin1String("DLC list") ? QStringLiteral("dlcs")
                                                              : QStringLiteral("included_bundles");
        const QVariantMap detail = gameWithRelated(key);
        if (detail.isEmpty())
            return nullptr;
        auto *list = new BindingPackageViewContoller(detail.value("title").toString(),
                                                     relatedItems(detail, key));
        host = std::make_unique<ScreenHost>(list);
        return list->tableMain();
    }

private slots:
    void initTestCase()
    {
        StoreOptions options;
        options.requestLog = nullptr;
        options.outboxLog = nullptr;
        m_store = std::make_unique<InProcessStore>(options);
        QVERIFY(m_store->isRunning());
        tarvel::test::pointApiAt(m_store->baseUrl());
        app()->initWithShareSDK();
    }

    void init()
    {
        tarvel::test::resetSharedState();
        QVERIFY(signIn());
    }

    void cleanup()
    {
        if (WeChatPayPrompt::shared().isShown())
            WeChatPayPrompt::shared().dismiss();
        QTRY_VERIFY(!app()->isWeChatPay());
    }

    // Each list marks exactly the games the store lists as owned; one bought elsewhere shows
    // after a pull or a new sign-in, and signing out takes every mark away.
    void marksOnEveryList_data()
    {
        QTest::addColumn<QString>("kind");
        for (const QString &kind : ListKinds)
            QTest::newRow(qPrintable(kind)) << kind;
    }

    void marksOnEveryList()
    {
        QFETCH(QString, kind);
        std::unique_ptr<ScreenHost> host;
        platform::RowModel *rows = openList(kind, host);
        QVERIFY(rows);
        QStringList owned = ownedAtTheStore();
        QTRY_COMPARE(marksOf(rows), expectedMarks(rows, owned));

        QStringList shown;
        for (const QVariantMap &row : rows->rows())
            shown.append(row.value(QStringLiteral("gameId")).toString());
        const QString bought = firstNotOwned(shown, owned);
        QVERIFY(!bought.isEmpty());
        QVERIFY(buyElsewhere(bought));
        owned = ownedAtTheStore();
        QVERIFY(owned.contains(bought));
        // The app hears of it on its next refresh: a pull where the list has one, else the
        // next sign-in.
        auto *top = host->top();
        if (auto *home = qobject_cast<TabOneViewController *>(top))
            home->refreshHeader()->beginRefreshing();
        else if (auto *search = qobject_cast<SearchDetailViewController *>(top))
            search->refreshHeader()->beginRefreshing();
        else
            OwnedGames::shared().refresh();
        QTRY_COMPARE(marksOf(rows), expectedMarks(rows, owned));
        QVERIFY(marksOf(rows).contains(bought + QStringLiteral(":owned")));

        // On screen: the badges are drawn, and go with the sign-out.
        kitstest::ShellWindow shell;
        QVERIFY(shell.show(host->window()));
        const auto badgesShown = [&shell] {
            int shown = 0;
            for (QQuickItem *badge :
                 tarvel::test::findAllNamed(shell.root(), QStringLiteral("ownedBadge")))
                shown += badge->isVisible() ? 1 : 0;
            return shown;
        };
        QTRY_VERIFY(badgesShown() > 0);
        QVERIFY(shell.snapshot(QStringLiteral("owned_%1.png").arg(kind).replace(' ', '_')));
        signOut();
        QTRY_COMPARE(marksOf(rows), expectedMarks(rows, {}));
        QVERIFY(OwnedGames::shared().isEmpty());
        QTRY_COMPARE(badgesShown(), 0);
        shell.close();
    }

    // The page shows the mark beside the price of an owned game, and only then.
    void markOnTheGamePage_data()
    {
        QTest::addColumn<bool>("owned");
        QTest::newRow("owned") << true;
        QTest::newRow("not owned") << false;
    }

    void markOnTheGamePage()
    {
        QFETCH(bool, owned);
        const QStringList mine = ownedAtTheStore();
        const QString gameId = owned ? mine.value(0) : firstNotOwned(catalogueIds(), mine);
        QVERIFY(!gameId.isEmpty());
        auto *page = new GoodsDetailViewController;
        page->setGameId(gameId);
        ScreenHost host(page);
        QTRY_VERIFY(page->isLoaded());
        QCOMPARE(page->isOwned(), owned);
        QSignalSpy changed(page, &GoodsDetailViewController::ownedChanged);
        signOut();
        QVERIFY(!page->isOwned());
        // The badge hears that the mark went.
        if (owned)
            QVERIFY(!changed.isEmpty());
        // The page's buttons stay as they are.
        QVERIFY(page->footerView()->buttonAddToCart());
    }

    // Paying in the app marks the game on the open grid and on its page at once.
    void paymentMarksTheGameWithoutRelaunch()
    {
        auto *home = new TabOneViewController;
        ScreenHost host(home);
        QTRY_VERIFY(home->collectionMenu()->count() > 0);
        QStringList shown;
        for (const QVariantMap &row : home->collectionMenu()->rows())
            shown.append(row.value(QStringLiteral("gameId")).toString());
        const QString gameId = firstNotOwned(shown, ownedAtTheStore());
        QVERIFY(!gameId.isEmpty());
        const int row = int(shown.indexOf(gameId));
        QVERIFY(!home->collectionMenu()->get(row).value(QStringLiteral("owned")).toBool());

        auto *page = new GoodsDetailViewController;
        page->setGameId(gameId);
        host.navigation()->pushViewController(page, false);
        QTRY_VERIFY(page->isLoaded());
        QVERIFY(!page->isOwned());
        auto *order
                = new ConfirmOrderViewController({gameId}, ConfirmOrderViewController::BuyDirectly);
        host.navigation()->pushViewController(order, false);
        QTRY_VERIFY(order->isOrderLoaded());
        QVERIFY(order->viewPay()->buttonPay()->tap());
        auto &prompt = WeChatPayPrompt::shared();
        QTRY_VERIFY(prompt.canConfirm());
        // While WeChat is in front the order is remembered.
        const std::optional<PendingPayment::Record> pending = PendingPayment::current();
        QVERIFY(pending);
        QCOMPARE(pending->orderId, order->sourceModel().order_id);
        QVERIFY(qAbs(pending->startedAt.secsTo(QDateTime::currentDateTimeUtc())) < 60);

        prompt.confirm();
        QTRY_VERIFY(qobject_cast<BuySuccessViewController *>(host.top()));
        QVERIFY(OwnedGames::shared().contains(gameId));
        QVERIFY(home->collectionMenu()->get(row).value(QStringLiteral("owned")).toBool());
        QVERIFY(page->isOwned());
        QVERIFY(!PendingPayment::current());
        // The store's own list agrees once it comes back.
        QTRY_COMPARE(OwnedGames::shared().gameIds(), ownedAtTheStore());
    }

    // A game in the cart bought on another device meanwhile: the store refuses the cart order
    // with one Chinese sentence naming the game, and the app shows it as it stands.
    void cartSubmissionOfAGameBoughtElsewhere()
    {
        const QString gameId
                = firstNotOwned(catalogueIds(QStringLiteral("latest"), "2"), ownedAtTheStore());
        QVERIFY(!gameId.isEmpty());
        const QString title = detailOf(gameId).value(QStringLiteral("title")).toString();
        QVERIFY(!title.isEmpty());
        QVERIFY(waitFor([&](const SuccessFn &ok, const FailureFn &failed) {
                    NetWorkHelper::shareInstance()->addGoodsToCartWithGameIds(gameId, {}, {}, ok,
                                                                              failed);
                }).ok);
        QVERIFY(buyElsewhere(gameId));

        ScreenHost host(new platform::ViewController);
        auto *order
                = new ConfirmOrderViewController({gameId}, ConfirmOrderViewController::FromCart);
        host.navigation()->pushViewController(order, false);
        const QString expected = QStringLiteral("您已拥有《%1》，无需重复购买").arg(title);
        QTRY_VERIFY(HudRecorder::shared().history().contains(expected));
        QCOMPARE(Hud::shared().kind(), Hud::Error);
        QCOMPARE(Hud::shared().text(), expected);
        QVERIFY(!order->isOrderLoaded());
    }
};

TARVEL_TEST_MAIN(TestOwnedMarks)
#include "tst_ownedmarks.moc"
