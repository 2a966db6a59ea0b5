#include "TestEnvironment.h"

#include "screens/store/HomePageViewCell.h"
#include "screens/store/ICPageControl.h"
#include "util/AppConfig.h"

// The grid cell's display rules (prices, discount, pre-sale badge, picture address) and the
// carousel's dots.
class TestHomeCell : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qputenv("TARVEL_API_BASE_URL", "http://store.test:8080"); }

    void prices_data()
    {
        QTest::addColumn<QString>("listPrice");
        QTest::addColumn<QString>("salePrice");
        QTest::addColumn<QString>("oldPriceText");
        QTest::addColumn<QString>("newPriceText");
        QTest::addColumn<QString>("discount");
        QTest::addColumn<bool>("discountHidden");

        QTest::newRow("equal texts show no old price and no badge") << "99"
                                                                    << "99"
                                                                    << ""
                                                                    << "¥99"
                                                                    << "" << true;
        QTest::newRow("99 against 99.00 are different texts: a 0 discount") << "99"
                                                                            << "99.00"
                                                                            << "¥99"
                                                                            << "¥99.00"
                                                                            << "0%OFF " << false;
        QTest::newRow("quarter price") << "168"
                                       << "42"
                                       << "¥168"
                                       << "¥42"
                                       << "75%OFF " << false;
        QTest::newRow("two thirds off rounds up") << "3"
                                                  << "1"
                                                  << "¥3"
                                                  << "¥1"
                                                  << "67%OFF " << false;
        QTest::newRow("one third off rounds down") << "3"
                                                   << "2"
                                                   << "¥3"
                                                   << "¥2"
                                                   << "33%OFF " << false;
        QTest::newRow("decimal prices") << "58.5"
                                        << "29.25"
                                        << "¥58.5"
                                        << "¥29.25"
                                        << "50%OFF " << false;
        QTest::newRow("a sale price above the list price is a negative discount")
                << "50"
                << "60"
                << "¥50"
                << "¥60"
                << "-20%OFF " << false;
        QTest::newRow("a zero list price gives no computable discount") << "0"
                                                                        << "0.00"
                                                                        << "¥0"
                                                                        << "¥0.00"
                                                                        << "" << true;
    }

    void prices()
    {
        QFETCH(QString, listPrice);
        QFETCH(QString, salePrice);
        HomePageViewCell cell(172.5, 1);
        cell.setCellContentsWithImage(QStringLiteral("http://p/c.jpg"), listPrice, salePrice,
                                      QStringLiteral("0"), {});
        QTEST(cell.labelOldPrice(), "oldPriceText");
        QTEST(cell.labelNewPrice(), "newPriceText");
        QTEST(cell.labelDiscount(), "discount");
        QTEST(cell.isDiscountHidden(), "discountHidden");
        // The QML price label gets the bare prices; a list price only when it is shown.
        const QVariantMap row = cell.row();
        QCOMPARE(row.value("salePrice").toString(), salePrice);
        QCOMPARE(row.value("listPrice").toString().isEmpty(), cell.labelOldPrice().isEmpty());
    }

    void presellBadge_data()
    {
        QTest::addColumn<QString>("flag");
        QTest::addColumn<bool>("hidden");
        QTest::newRow("0 hides") << "0" << true;
        QTest::newRow("1 shows") << "1" << false;
        QTest::newRow("anything but 0 shows") << "" << false;
    }

    void presellBadge()
    {
        QFETCH(QString, flag);
        HomePageViewCell cell(100, 1);
        cell.setCellContentsWithImage(QStringLiteral("/c.jpg"), QStringLiteral("1"),
                                      QStringLiteral("1"), flag, {});
        QCOMPARE(cell.labelPresell(), QStringLiteral("预售"));
        QTEST(cell.isPresellHidden(), "hidden");
        QTEST(cell.row().value("presellHidden").toBool(), "hidden");
    }

    void imageAddress_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<double>("points");
        QTest::addColumn<double>("scale");
        QTest::addColumn<QString>("expected");

        QTest::newRow("absolute, 2x screen")
                << "http://cdn.test/covers/3.jpg" << 172.5 << 2.0
                << "http://cdn.test/covers/3.jpg?imageView2/2/w/345/q/85";
        QTest::newRow("half a pixel rounds up")
                << "http://cdn.test/covers/3.jpg" << 172.5 << 1.0
                << "http://cdn.test/covers/3.jpg?imageView2/2/w/173/q/85";
        QTest::newRow("3x screen") << "https://cdn.test/a.png" << 120.0 << 3.0
                                   << "https://cdn.test/a.png?imageView2/2/w/360/q/85";
        QTest::newRow("relative address goes under the store")
                << "/pictures/covers/3.jpg" << 375.0 << 1.0
                << "http://store.test:8080/pictures/covers/3.jpg?imageView2/2/w/375/q/85";
        QTest::newRow("non-ASCII and blanks are escaped as UTF-8")
                << "http://cdn.test/封面 1.jpg" << 100.0 << 1.0
                << "http://cdn.test/%E5%B0%81%E9%9D%A2%201.jpg?imageView2/2/w/100/q/85";
    }

    void imageAddress()
    {
        QFETCH(QString, stored);
        QFETCH(double, points);
        QFETCH(double, scale);
        QTEST(HomePageViewCell::imageUrlWithWidth(stored, points, scale), "expected");

        // A cell loads its cover by the same rule at its own width.
        HomePageViewCell cell(points, scale);
        cell.setCellContentsWithImage(stored, QStringLiteral("1"), QStringLiteral("1"),
                                      QStringLiteral("0"), {});
        QTEST(cell.imageGoods(), "expected");
    }

    void tapRunsTheBlock()
    {
        HomePageViewCell cell(100, 1);
        int taps = 0;
        cell.setCellContentsWithImage(QStringLiteral("/c.jpg"), QStringLiteral("1"),
                                      QStringLiteral("1"), QStringLiteral("0"), [&] { ++taps; });
        cell.gotoProductDetialBtnClicked();
        QCOMPARE(taps, 1);

        HomePageViewCell empty;
        empty.gotoProductDetialBtnClicked(); // no block: nothing happens
    }

    void pageControlDots_data()
    {
        QTest::addColumn<int>("pages");
        QTest::addColumn<int>("current");
        QTest::addColumn<int>("coloured"); // index of the dot in the current colour, -1 none

        QTest::newRow("first of four") << 4 << 0 << 0;
        QTest::newRow("last of four") << 4 << 3 << 3;
        QTest::newRow("a page past the dots colours none") << 3 << 5 << -1;
        QTest::newRow("no pages, no dots") << 0 << 0 << -1;
        QTest::newRow("negative page count, no dots") << -2 << 0 << -1;
    }

    void pageControlDots()
    {
        QFETCH(int, pages);
        QFETCH(int, current);
        QFETCH(int, coloured);
        const QColor on(Qt::white);
        const QColor off(Qt::gray);
        ICPageControl control(on, off);
        control.setPageNum(pages);
        control.setCurrentPage(current);
        const QVariantList dots = control.dots();
        QCOMPARE(dots.size(), qMax(0, pages));
        for (int i = 0; i < dots.size(); ++i)
            QCOMPARE(dots.at(i).value<QColor>(), i == coloured ? on : off);
    }

    void pageControlRebuilds()
    {
        ICPageControl control(Qt::white, Qt::gray);
        QCOMPARE(control.dotRadius(), ICPageControl::DefaultDotSize);
        control.setPageNum(3);
        control.setCurrentPage(1);
        control.setDotRadius(8);
        QCOMPARE(control.dotRadius(), 8.0);
        QCOMPARE(control.dots().size(), 3);
        control.setDotCurrentColor(Qt::red, Qt::blue);
        QCOMPARE(control.dots(),
                 QVariantList({QColor(Qt::blue), QColor(Qt::red), QColor(Qt::blue)}));
        control.setPageNum(2); // keeps the current page
        QCOMPARE(control.dots(), QVariantList({QColor(Qt::blue), QColor(Qt::red)}));
    }
};

TARVEL_TEST_MAIN(TestHomeCell)
#include "tst_home_cell.moc"
