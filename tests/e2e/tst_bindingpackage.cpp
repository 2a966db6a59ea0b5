#include "TestEnvironment.h"
#include "tst_detailsupport.h"

#include "platform/ui/BarButtonItem.h"
#include "screens/store/BindingPackageViewContoller.h"

using namespace detailtest;

namespace {

Object_DLCOrBind item(const QString &id, const QString &title, const QString &list,
                      const QString &sale)
{
    Object_DLCOrBind record;
    record.id = id;
    record.title = title;
    record.list_price = list;
    record.sale_price = sale;
    record.type_name = QStringLiteral("DLC");
    return record;
}

} // namespace

// The DLC and bundle list of a game: the layout and texts of each row, the title and bar items,
// back, and a row opening the item's page.
class TestBindingPackage : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        // Pages opened from the list load from nowhere; their loading is not under test.
        qputenv("TARVEL_API_BASE_URL", "http://127.0.0.1:9");
        platform::Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
    }

    void rowLayout_data()
    {
        QTest::addColumn<QString>("list");
        QTest::addColumn<QString>("sale");
        QTest::addColumn<QString>("identifier");
        QTest::addColumn<QString>("off");
        QTest::addColumn<QString>("oldPrice");
        QTest::addColumn<QString>("nowPrice");

        QTest::newRow("discounted") << "28"
                                    << "7"
                                    << "BindingPackageCell1"
                                    << " 75%OFF "
                                    << "¥28"
                                    << "¥7";
        QTest::newRow("fraction rounds") << "98"
                                         << "68.6"
                                         << "BindingPackageCell1"
                                         << " 30%OFF "
                                         << "¥98"
                                         << "¥68.6";
        QTest::newRow("equal texts: plain layout") << "99"
                                                   << "99"
                                                   << "BindingPackageCell2"
                                                   << ""
                                                   << ""
                                                   << "¥99";
        QTest::newRow("99 against 99.00 differs") << "99"
                                                  << "99.00"
                                                  << "BindingPackageCell1"
                                                  << " 0%OFF "
                                                  << "¥99"
                                                  << "¥99.00";
        QTest::newRow("free") << "0"
                              << "0"
                              << "BindingPackageCell2"
                              << ""
                              << ""
                              << "¥0";
    }

    void rowLayout()
    {
        QFETCH(QString, list);
        QFETCH(QString, sale);
        QFETCH(QString, identifier);
        QFETCH(QString, off);
        QFETCH(QString, oldPrice);
        QFETCH(QString, nowPrice);

        BindingPackageViewContoller controller(QStringLiteral("星际远征的DLC"),
                                               {item("101", "冰封之地", list, sale)});
        const QVariantMap row = controller.tableMain()->get(0);
        QCOMPARE(row.value("identifier").toString(), identifier);
        QCOMPARE(row.value("name").toString(), QStringLiteral("冰封之地"));
        QCOMPARE(row.value("off").toString(), off);
        QCOMPARE(row.value("oldPrice").toString(), oldPrice);
        QCOMPARE(row.value("nowPrice").toString(), nowPrice);
        QCOMPARE(row.value("discounted").toBool(),
                 identifier == QLatin1String("BindingPackageCell1"));
    }

    void titleBarAndRows()
    {
        StackHarness harness;
        auto *list = new BindingPackageViewContoller(QStringLiteral("星际远征的捆绑包"),
                                                     {item("146", "星际远征完整版", "98", "68.6"),
                                                      item("151", "策略合集", "300", "180"),
                                                      item("152", "休闲合集", "50", "50")});
        harness.push(list);
        QCOMPARE(list->title(), QStringLiteral("星际远征的捆绑包"));
        QCOMPARE(list->leftBarItem()->imageName(), QStringLiteral("common_navBack"));
        QVERIFY(list->rightBarItem()->isHidden());
        QCOMPARE(list->tableMain()->count(), 3);
    }

    void rowOpensTheItemsPage_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<QString>("gameId");
        QTest::newRow("first") << 0 << "146";
        QTest::newRow("last") << 2 << "152";
    }

    void rowOpensTheItemsPage()
    {
        QFETCH(int, row);
        QFETCH(QString, gameId);
        StackHarness harness;
        auto *list = new BindingPackageViewContoller(QStringLiteral("星际远征的捆绑包"),
                                                     {item("146", "A", "98", "68.6"),
                                                      item("151", "B", "300", "180"),
                                                      item("152", "C", "50", "50")});
        harness.push(list);
        list->didSelectRowAtIndex(row);
        auto *detail = qobject_cast<GoodsDetailViewController *>(harness.top());
        QVERIFY(detail);
        QCOMPARE(detail->gameId(), gameId);
    }

    void rowOutsideTheListDoesNothing()
    {
        StackHarness harness;
        auto *list = new BindingPackageViewContoller(QStringLiteral("X的DLC"),
                                                     {item("1", "A", "1", "1")});
        harness.push(list);
        list->didSelectRowAtIndex(1);
        list->didSelectRowAtIndex(-1);
        QCOMPARE(harness.top(), list);
    }

    void backPopsOneLevel()
    {
        StackHarness harness;
        auto *middle = new BindingPackageViewContoller(QStringLiteral("A的DLC"), {});
        auto *list = new BindingPackageViewContoller(QStringLiteral("B的DLC"), {});
        harness.push(middle);
        harness.push(list);
        QVERIFY(list->leftBarItem()->tap());
        QCOMPARE(harness.top(), middle);
    }
};

TARVEL_TEST_MAIN(TestBindingPackage)
#include "tst_bindingpackage.moc"
