#include "HudRecorder.h"
#include "InProcessStore.h"
#include "QuickTestItems.h"
#include "TestEnvironment.h"
#include "tst_detailsupport.h"

#include "app/WindowSnapshot.h"
#include "platform/kits/ShareQrPrompt.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/ImageNetworkFactory.h"
#include "screens/purchase/MyGamesViewController.h"
#include "screens/store/BindingPackageViewContoller.h"
#include "screens/store/LibraryViewController.h"

#include <QDir>
#include <QPointer>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQmlExtensionPlugin>
#include <QQuickItem>
#include <QQuickWindow>
#include <QSignalSpy>

Q_IMPORT_QML_PLUGIN(TarvelPlugin)

using namespace detailtest;
using platform::Hud;
using tarvel::test::findNamed;
using tarvel::test::findText;
using tarvel::test::InProcessStore;
using tarvel::test::QmlWarnings;

namespace {

QString artifact(const QString &name)
{
    return QDir(tarvel::test::TestEnvironment::artifactsDir()).filePath(name);
}

} // namespace

// The views of the game page, the related-items list, the library and the share sheet: they load
// without a QML warning, show what their controllers hold, pass taps back, and are written out as
// screenshots for review.
class TestDetailViews : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<InProcessStore> m_store;
    std::unique_ptr<StackHarness> m_harness;
    std::unique_ptr<QQmlEngine> m_engine;
    std::unique_ptr<QQuickWindow> m_window;

    QQuickItem *root() const { return m_window->contentItem(); }

    // Shows the harness's window in a phone-sized Qt Quick window.
    bool showShell()
    {
        m_window = std::make_unique<QQuickWindow>();
        m_window->resize(375, 667);
        m_window->setColor(Qt::white);
        QQmlComponent component(m_engine.get());
        component.setData("import QtQuick\nimport Tarvel\nWindowView {}",
                          QUrl(QStringLiteral("qrc:/tests/DetailHarness.qml")));
        QObject *object = component.createWithInitialProperties(
                {{QStringLiteral("window"), QVariant::fromValue(&m_harness->window)}});
        auto *item = qobject_cast<QQuickItem *>(object);
        if (!item) {
            qWarning() << component.errors();
            delete object;
            return false;
        }
        item->setParentItem(m_window->contentItem());
        item->setSize(QSizeF(375, 667));
        item->setParent(m_window.get()); // lives as long as the window, whatever the collector does
        m_window->show();
        return QTest::qWaitForWindowExposed(m_window.get());
    }

    bool waitForCover()
    {
        return QTest::qWaitFor(
                [this] {
                    QQuickItem *cover = findNamed(root(), QStringLiteral("goodsDetailCover"));
                    return cover && cover->property("status").toInt() == 1; // Image.Ready
                },
                15000);
    }

    // Lets animations end and the window draw, then writes it out.
    void snapshot(const QString &name)
    {
        QVERIFY(tarvel::test::waitForStillScene(m_window.get()));
        QVERIFY(WindowSnapshot::save(m_window.get(), artifact(name)));
    }

    // The item, once it shows (views make their items a little later than their models change).
    QQuickItem *waitNamed(const QString &name)
    {
        QQuickItem *found = nullptr;
        if (!QTest::qWaitFor([&] { return (found = findNamed(root(), name)) != nullptr; }, 5000))
            qWarning() << "no item named" << name;
        return found;
    }
    QQuickItem *waitText(const QString &text)
    {
        QQuickItem *found = nullptr;
        if (!QTest::qWaitFor([&] { return (found = findText(root(), text)) != nullptr; }, 5000))
            qWarning() << "no text" << text;
        return found;
    }

    void click(QQuickItem *item) { QVERIFY(tarvel::test::tapWhenStill(m_window.get(), item)); }

    // Whether the page shows its top: the cover right under the bar, not scrolled away.
    bool coverAtTop()
    {
        return QTest::qWaitFor([this] {
            QQuickItem *table = findNamed(root(), QStringLiteral("goodsDetailTable"));
            QQuickItem *cover = findNamed(root(), QStringLiteral("goodsDetailCover"));
            return table && cover
                   && qFuzzyCompare(table->mapToScene(QPointF()).y() + 1,
                                    cover->mapToScene(QPointF()).y() + 1);
        });
    }

    GoodsDetailViewController *openShown(const QString &gameId)
    {
        GoodsDetailViewController *detail = openDetail(*m_harness, gameId);
        if (!showShell() || !waitUntilLoaded(detail) || !waitForCover())
            return nullptr;
        return detail;
    }

private slots:
    void initTestCase()
    {
        QmlWarnings::install();
        m_store = std::make_unique<InProcessStore>();
        QVERIFY(m_store->isRunning());
        qputenv("TARVEL_API_BASE_URL", m_store->baseUrl().toUtf8());
        Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
    }

    void init()
    {
        QmlWarnings::clear();
        signOut();
        platform::UserDefaults::standard().setObject(QStringLiteral("2"),
                                                     QStringLiteral("cartnum"));
        Hud::shared().dismiss();
        HudRecorder::shared().clear(); // also starts it
        m_harness = std::make_unique<StackHarness>();
        m_engine = std::make_unique<QQmlEngine>();
        m_engine->addImportPath(QStringLiteral("qrc:/"));
        platform::ImageNetworkFactory::install(m_engine.get());
    }

    void cleanup()
    {
        m_window.reset();
        m_harness.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_engine.reset();
        QVERIFY2(QmlWarnings::messages().isEmpty(), qPrintable(QmlWarnings::text()));
    }

    void discountedGame()
    {
        GoodsDetailViewController *detail = openShown(QStringLiteral("34"));
        QVERIFY(detail);
        GoodsDetailHeaderView *header = detail->tableHeaderView();
        QVERIFY(!header->isDiscountHidden());
        QVERIFY(waitText(header->labelNameCn()));
        QVERIFY(waitText(header->labelNewPrice()));
        QVERIFY(waitText(header->labelOldPrice()));
        QVERIFY(waitText(header->labelDiscount()));
        QVERIFY(waitText(QStringLiteral("商品详情")));
        QVERIFY(waitText(QStringLiteral("加入购物车")));
        QVERIFY(waitText(QStringLiteral("立即购买")));
        QVERIFY(waitText(QStringLiteral("2"))); // the cart badge
        QVERIFY(waitText(QStringLiteral("游戏信息")));
        QVERIFY(coverAtTop());
        snapshot(QStringLiteral("detail_discounted.png"));

        // The description at the end of the page, as plain text.
        QQuickItem *table = waitNamed(QStringLiteral("goodsDetailTable"));
        QVERIFY(table);
        QMetaObject::invokeMethod(table, "positionViewAtEnd");
        const QString description = detail->cellForRowAtIndexPath(3, 0).labelTitle();
        QVERIFY(!description.isEmpty());
        QVERIFY(waitText(description));
        QVERIFY(waitText(QStringLiteral("游戏介绍")));
        snapshot(QStringLiteral("detail_discounted_end.png"));
    }

    void preSaleAndBlockedGames_data()
    {
        QTest::addColumn<QString>("gameId");
        QTest::addColumn<QString>("notice");
        QTest::newRow("pre-sale") << QStringLiteral("6") << QString();
        QTest::newRow("blocked") << QStringLiteral("42") << GoodsDetailCell::blockedNotice();
    }

    void preSaleAndBlockedGames()
    {
        QFETCH(QString, gameId);
        QFETCH(QString, notice);
        GoodsDetailViewController *detail = openShown(gameId);
        QVERIFY(detail);
        const QString shown
                = notice.isEmpty() ? detail->cellForRowAtIndexPath(0, 1).labelTitle() : notice;
        QVERIFY(shown.startsWith(notice.isEmpty() ? QStringLiteral("距离预购结束还有") : notice));
        QVERIFY(waitText(shown));
        if (notice.isEmpty())
            QVERIFY(waitText(QStringLiteral(" 预售 ")));
        snapshot(QStringLiteral("detail_%1.png").arg(notice.isEmpty() ? "presale" : "blocked"));
    }

    void dlcOfAGame()
    {
        GoodsDetailViewController *detail = openShown(QStringLiteral("101"));
        QVERIFY(detail);
        QVERIFY(waitNamed(QStringLiteral("goodsDetailCell0_3")));
        QVERIFY(coverAtTop());
        snapshot(QStringLiteral("detail_dlc.png"));

        // Its base-game row opens the base game.
        click(waitNamed(QStringLiteral("goodsDetailCell0_3")));
        QTRY_COMPARE(m_harness->depth(), 3);
        auto *base = qobject_cast<GoodsDetailViewController *>(m_harness->top());
        QVERIFY(base);
        QCOMPARE(base->gameId(), QStringLiteral("1"));
        QVERIFY(waitUntilLoaded(base));
    }

    void shareSheet()
    {
        GoodsDetailViewController *detail = openShown(QStringLiteral("34"));
        QVERIFY(detail);
        detail->rightBarItem()->tap();
        QVERIFY(waitText(QStringLiteral("微信朋友圈")));
        QVERIFY(waitText(QStringLiteral("微信好友")));
        QVERIFY(waitText(QStringLiteral("新浪微博")));
        snapshot(QStringLiteral("share_sheet.png"));

        // The sheet sits on the bottom edge of the window.
        QQuickItem *cancel = waitNamed(QStringLiteral("shareCancel"));
        QVERIFY(cancel);
        const QRectF cancelArea
                = cancel->mapRectToScene(QRectF(0, 0, cancel->width(), cancel->height()));
        QCOMPARE(qRound(cancelArea.bottom()), 667);
        QCOMPARE(qRound(cancelArea.width()), 375);

        click(waitText(QStringLiteral("取消")));
        QTRY_VERIFY(!detail->shareView()->isShown());
        QTRY_VERIFY(!findText(root(), QStringLiteral("微信好友")));
    }

    // WeChat moments through the app's sharing kit: its QR sheet shows the page, and once the
    // user is done the panel reports the share.
    void shareToWeChatMoments()
    {
        AppDelegate::shared()->initWithShareSDK();
        GoodsDetailViewController *detail = openShown(QStringLiteral("34"));
        QVERIFY(detail);
        detail->rightBarItem()->tap();
        QVERIFY(waitNamed(QStringLiteral("shareTarget5001")));
        QVERIFY(tarvel::test::waitForStillScene(m_window.get())); // the sheet has slid in
        click(waitNamed(QStringLiteral("shareTarget5001")));
        QTRY_VERIFY(platform::ShareQrPrompt::shared().isShown());
        QVERIFY(!detail->shareView()->isShown());
        QCOMPARE(platform::ShareQrPrompt::shared().shareTitle(), detail->sourceModel()->title);
        QCOMPARE(platform::ShareQrPrompt::shared().code(),
                 m_store->baseUrl() + QStringLiteral("/products/34"));
        QVERIFY(waitText(QStringLiteral("请使用微信扫一扫")));
        snapshot(QStringLiteral("share_wechat_qr.png"));

        platform::ShareQrPrompt::shared().done();
        QTRY_VERIFY(HudRecorder::shared().history().contains(QStringLiteral("分享成功")));
        QTRY_VERIFY(!platform::ShareQrPrompt::shared().isShown());
    }

    void signedOutAddToCartAsksForSignIn()
    {
        GoodsDetailViewController *detail = openShown(QStringLiteral("34"));
        QVERIFY(detail);
        click(waitNamed(QStringLiteral("addToCartButton")));
        QTRY_COMPARE(m_harness->window.presentedCount(), 1);
        QCOMPARE(m_harness->top(), detail);
        snapshot(QStringLiteral("detail_sign_in.png")); // also lets the sheet finish sliding
    }

    void dlcList()
    {
        GoodsDetailViewController *detail = openShown(QStringLiteral("1"));
        QVERIFY(detail);
        detail->clickButtonLook(2);
        auto *list = qobject_cast<BindingPackageViewContoller *>(m_harness->top());
        QVERIFY(list);
        const QVariantMap first = list->tableMain()->get(0);
        QVERIFY(waitText(first.value(QStringLiteral("name")).toString()));
        QVERIFY(waitText(first.value(QStringLiteral("nowPrice")).toString()));
        snapshot(QStringLiteral("dlc_list.png"));

        click(waitText(first.value(QStringLiteral("name")).toString()));
        QTRY_COMPARE(m_harness->depth(), 4);
        auto *opened = qobject_cast<GoodsDetailViewController *>(m_harness->top());
        QVERIFY(opened);
        QCOMPARE(opened->gameId(), list->arraySource().first().id);
        QVERIFY(waitUntilLoaded(opened));
        // Back from the DLC returns past both pages and the list to where the first page opened.
        opened->leftBarItem()->tap();
        QTRY_COMPARE(m_harness->depth(), 1);
    }

    void library()
    {
        auto *library = new LibraryViewController;
        m_harness->push(library);
        QVERIFY(showShell());
        QVERIFY(waitText(QStringLiteral("我的优惠券(6张)")));
        QVERIFY(waitText(QStringLiteral("我的游戏(317款)")));
        snapshot(QStringLiteral("library.png"));
        click(waitNamed(QStringLiteral("libraryRow1")));
        QTRY_COMPARE(m_harness->top()->title(), QStringLiteral("我的游戏"));
        QVERIFY(qobject_cast<MyGamesViewController *>(m_harness->top()));
    }
};

TARVEL_TEST_MAIN(TestDetailViews)
#include "tst_detailviews.moc"
