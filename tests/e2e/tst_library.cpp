#include "TestEnvironment.h"
#include "tst_detailsupport.h"

#include "app/ICTabBarController.h"
#include "platform/ui/BarButtonItem.h"
#include "screens/purchase/MyCouponViewController.h"
#include "screens/purchase/MyGamesViewController.h"
#include "screens/store/LibraryViewController.h"

using namespace detailtest;

// The library menu: its fixed rows, the screens they open, back, and the hidden tab strip.
class TestLibrary : public QObject
{
    Q_OBJECT

private slots:
    void titleAndRows()
    {
        StackHarness harness;
        auto *library = new LibraryViewController;
        harness.push(library);
        QCOMPARE(library->title(), QStringLiteral("库"));
        QCOMPARE(library->leftBarItem()->imageName(), QStringLiteral("common_navBack"));
        QVERIFY(library->rightBarItem()->isHidden());
        const QList<QVariantMap> rows = library->mainTable()->rows();
        QCOMPARE(rows.size(), 2);
        QCOMPARE(rows.at(0).value("title").toString(), QStringLiteral("我的优惠券(6张)"));
        QCOMPARE(rows.at(1).value("title").toString(), QStringLiteral("我的游戏(317款)"));
        QCOMPARE(rows.at(0).value("identifier").toString(), QStringLiteral("LibraryViewCell"));
        QVERIFY(rows.at(0).value("icon") != rows.at(1).value("icon"));
    }

    void rowsOpenTheirScreens_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QByteArray>("screen");
        QTest::addColumn<QString>("title");
        QTest::newRow("coupons") << 0 << QByteArray("MyCouponViewController") << "我的优惠券";
        QTest::newRow("games") << 1 << QByteArray("MyGamesViewController") << "我的游戏";
    }

    void rowsOpenTheirScreens()
    {
        QFETCH(int, row);
        QFETCH(QByteArray, screen);
        QFETCH(QString, title);
        StackHarness harness;
        auto *library = new LibraryViewController;
        harness.push(library);
        library->didSelectRowAtIndex(row);
        QCOMPARE(QByteArray(harness.top()->metaObject()->className()), screen);
        QCOMPARE(harness.top()->title(), title);
        // Back from there returns to the library.
        QVERIFY(harness.top()->leftBarItem()->tap());
        QCOMPARE(harness.top(), library);
    }

    void otherRowsDoNothing()
    {
        StackHarness harness;
        auto *library = new LibraryViewController;
        harness.push(library);
        library->didSelectRowAtIndex(2);
        library->didSelectRowAtIndex(-1);
        QCOMPARE(harness.top(), library);
    }

    void tabStripHiddenWhileShown()
    {
        platform::Window window;
        auto *home = new platform::ViewController;
        auto *navigation = new platform::NavigationController(home);
        auto *tabs = new ICTabBarController;
        tabs->setViewControllers({navigation});
        window.setRootViewController(tabs);
        window.makeKeyAndVisible();
        QVERIFY(!tabs->isHide());
        navigation->pushViewController(new LibraryViewController, false);
        QTRY_VERIFY(tabs->isHide());
    }
};

TARVEL_TEST_MAIN(TestLibrary)
#include "tst_library.moc"
