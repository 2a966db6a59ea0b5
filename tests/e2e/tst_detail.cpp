#include "HudRecorder.h"
#include "InProcessStore.h"
#include "ScriptedHttpServer.h"
#include "TestEnvironment.h"
#include "tst_detailsupport.h"

#include "screens/store/GoodsDetailHeaderView.h"
#include "screens/store/GoodsDetailWebView.h"
#include "util/AppConfig.h"

#include <QImage>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSignalSpy>

using namespace detailtest;
using platform::Hud;
using tarvel::test::InProcessStore;
using tarvel::test::ScriptedHttpServer;
using tarvel::test::ScriptedResponse;

namespace {

// "section,row" of every shown cell.
QStringList shownRows(const GoodsDetailViewController *detail)
{
    QStringList shown;
    for (int section = 0; section < detail->numberOfSections(); ++section) {
        for (int row = 0; row < detail->numberOfRowsInSection(section); ++row) {
            if (!detail->cellForRowAtIndexPath(section, row).isHidden())
                shown.append(QStringLiteral("%1,%2").arg(section).arg(row));
        }
    }
    return shown;
}

QList<int> rowCounts(const GoodsDetailViewController *detail)
{
    QList<int> counts;
    for (int section = 0; section < detail->numberOfSections(); ++section)
        counts.append(detail->numberOfRowsInSection(section));
    return counts;
}

QString inDays(int days)
{
    // An hour past the day boundary, so the count is exactly `days` whatever the time of day.
    return QString::number(QDateTime::currentSecsSinceEpoch() + qint64(days) * 86400 + 3600);
}

QVariantList systems(const QStringList &names)
{
    QVariantList entries;
    for (const QString &name : names)
        entries.append(QVariantMap{{QStringLiteral("name"), name}});
    return entries;
}

} // namespace

// A game's page loading its detail: the four sections and which rows show, the facts, the
// description as plain text, the header's prices, badges and systems, and what an unknown game or
// an odd answer leaves on screen.
class TestGoodsDetail : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<InProcessStore> m_store;
    ScriptedHttpServer m_server;

    void useStore() { qputenv("TARVEL_API_BASE_URL", m_store->baseUrl().toUtf8()); }
    void useScripted() { qputenv("TARVEL_API_BASE_URL", m_server.baseUrl().toUtf8()); }

    // Opens game 7 answered by the scripted server with `game`, and waits for it.
    GoodsDetailViewController *openScripted(StackHarness &harness, const QVariantMap &game)
    {
        useScripted();
        m_server.route(QStringLiteral("/products/7.json"), ScriptedResponse::json(envelope(game)));
        GoodsDetailViewController *detail = openDetail(harness, QStringLiteral("7"));
        return waitUntilLoaded(detail) ? detail : nullptr;
    }

private slots:
    void initTestCase()
    {
        m_store = std::make_unique<InProcessStore>();
        QVERIFY(m_store->isRunning());
        QVERIFY(m_server.listen());
        Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
    }

    void init()
    {
        useStore();
        Hud::shared().dismiss();
        HudRecorder::shared().clear();
        m_server.clearRequests();
    }

    void emptyUntilTheAnswerArrives()
    {
        useScripted();
        m_server.route(QStringLiteral("/products/8.json"), ScriptedResponse::hang());
        StackHarness harness;
        GoodsDetailViewController *detail = openDetail(harness, QStringLiteral("8"));
        QVERIFY(m_server.waitForRequests(1));
        QCOMPARE(m_server.lastRequest().path, QStringLiteral("/products/8.json"));
        QCOMPARE(m_server.lastRequest().query.queryItemValue(QStringLiteral("verbose")),
                 QStringLiteral("1"));
        QCOMPARE(HudRecorder::shared().records().value(0),
                 (HudRecorder::Record{Hud::Progress, QStringLiteral("正在加载"), true}));
        QCOMPARE(detail->numberOfSections(), 0);
        QCOMPARE(detail->tableMain()->count(), 0);
        QVERIFY(detail->tableHeaderView() == nullptr);
        // The bottom bar works before the page is known: signed out, it asks for a sign-in.
        AppDelegate::shared()->setUserLogin(std::nullopt);
        QVERIFY(detail->footerView()->buttonCart()->tap());
        QCOMPARE(harness.window.presentedCount(), 1);
    }

    void rowsShown_data()
    {
        QTest::addColumn<QVariantMap>("overrides");
        QTest::addColumn<QStringList>("shown");
        QTest::addColumn<QString>("noticeText"); // the text of the first shown notice, if any

        const QStringList always{"1,0", "1,1", "1,2", "1,3", "1,4", "3,0"};
        QTest::newRow("released base game") << QVariantMap() << always << QString();
        QTest::newRow("blocked") << QVariantMap{{"blocked", "1"}} << QStringList{"0,0"} + always
                                 << GoodsDetailCell::blockedNotice();
        QTest::newRow("pre-sale in ten days")
                << QVariantMap{{"release_date", inDays(10)}} << QStringList{"0,1"} + always
                << QStringLiteral("距离预购结束还有10天!");
        QTest::newRow("pre-sale tomorrow")
                << QVariantMap{{"release_date", inDays(1)}} << QStringList{"0,1"} + always
                << QStringLiteral("距离预购结束还有1天!");
        QTest::newRow("age limit") << QVariantMap{{"min_age", "18"}} << QStringList{"0,2"} + always
                                   << QStringLiteral("本游戏仅限18岁玩家购买和使用!");
        QTest::newRow("age limit as a number")
                << QVariantMap{{"min_age", 12}} << QStringList{"0,2"} + always
                << QStringLiteral("本游戏仅限12岁玩家购买和使用!");
        QTest::newRow("DLC of a base game")
                << QVariantMap{{"parent",
                                QVariantMap{
                                        {"parent", QVariantMap{{"id", 1}, {"title", "星际远征"}}}}}}
                << QStringList{"0,3"} + always
                << QStringLiteral("需要本体游戏星际远征才能使用该拓展包!");
        QTest::newRow("parent without the inner parent")
                << QVariantMap{{"parent", QVariantMap{{"id", 1}}}} << QStringList{"0,3"} + always
                << QStringLiteral("需要本体游戏才能使用该拓展包!");
        QTest::newRow("parent present but empty")
                << QVariantMap{{"parent", QVariantMap()}} << QStringList{"0,3"} + always
                << QStringLiteral("需要本体游戏才能使用该拓展包!");
        QTest::newRow("null parent")
                << QVariantMap{{"parent", QVariant::fromValue(nullptr)}} << always << QString();
        QTest::newRow("DLCs and bundles")
                << QVariantMap{{"dlcs", QVariantList{relatedItem(101, "A", "28", "7"),
                                                     relatedItem(102, "B", "10", "10")}},
                               {"included_bundles",
                                QVariantList{relatedItem(146, "C", "98", "68.6")}}}
                << QStringList{"1,0", "1,1", "1,2", "1,3", "1,4", "2,0", "2,1", "3,0"} << QString();
        QTest::newRow("DLCs not a list") << QVariantMap{{"dlcs", "none"}} << always << QString();
    }

    void rowsShown()
    {
        QFETCH(QVariantMap, overrides);
        QFETCH(QStringList, shown);
        QFETCH(QString, noticeText);

        StackHarness harness;
        GoodsDetailViewController *detail = openScripted(harness, gameAnswer(overrides));
        QVERIFY(detail);
        QCOMPARE(rowCounts(detail), (QList<int>{4, 5, 2, 1}));
        QCOMPARE(shownRows(detail), shown);
        if (!noticeText.isEmpty()) {
            const QStringList first = shown.first().split(QLatin1Char(','));
            QCOMPARE(detail->cellForRowAtIndexPath(first[0].toInt(), first[1].toInt()).labelTitle(),
                     noticeText);
        }
        // The view's rows: a section entry before each section, hidden cells kept as hidden.
        QCOMPARE(detail->tableMain()->count(), 4 + 4 + 5 + 2 + 1);
        int hiddenInView = 0;
        for (const QVariantMap &row : detail->tableMain()->rows())
            hiddenInView += row.value(QStringLiteral("hidden")).toBool() ? 1 : 0;
        QCOMPARE(hiddenInView, 12 - int(shown.size()));
    }

    void relatedItemRows()
    {
        StackHarness harness;
        GoodsDetailViewController *detail = openScripted(
                harness, gameAnswer({{"dlcs", QVariantList{relatedItem(101, "A", "28", "7"),
                                                           relatedItem(102, "B", "10", "10")}},
                                     {"included_bundles",
                                      QVariantList{relatedItem(146, "C", "98", "68.6")}}}));
        QVERIFY(detail);
        const GoodsDetailCell bundles = detail->cellForRowAtIndexPath(2, 0);
        QCOMPARE(bundles.labelTitle(), QStringLiteral("包含此游戏的捆绑包(1)"));
        QCOMPARE(bundles.type(), int(GoodsDetailCell::BundlesLink));
        QCOMPARE(bundles.buttonLookTag(), 1);
        const GoodsDetailCell dlcs = detail->cellForRowAtIndexPath(2, 1);
        QCOMPARE(dlcs.labelTitle(), QStringLiteral("包含此游戏的DLC(2)"));
        QCOMPARE(dlcs.type(), int(GoodsDetailCell::DlcsLink));
        QCOMPARE(dlcs.buttonLookTag(), 2);
        QCOMPARE(dlcs.titleParts(), QStringList({"包含此游戏的DLC", "(2)", QString()}));
    }

    void factsAndSectionHeaders()
    {
        StackHarness harness;
        GoodsDetailViewController *detail = openScripted(harness, gameAnswer());
        QVERIFY(detail);
        const QStringList tags{"发行商", "类   型", "发售日", "载   体", "语   言"};
        const QStringList values{"Aurora Interactive", "动作/冒险", "2016-11-26", "Steam 激活码",
                                 "简体中文/英语"};
        for (int row = 0; row < 5; ++row) {
            const GoodsDetailCell cell = detail->cellForRowAtIndexPath(1, row);
            QCOMPARE(cell.identifier(), QStringLiteral("GoodsDetailCell3"));
            QCOMPARE(cell.labelTag(), tags.at(row));
            QCOMPARE(cell.labelTitle(), values.at(row));
        }
        QCOMPARE(detail->titleForHeaderInSection(0), QString());
        QCOMPARE(detail->titleForHeaderInSection(1), QStringLiteral("游戏信息"));
        QCOMPARE(detail->titleForHeaderInSection(2), QString());
        QCOMPARE(detail->titleForHeaderInSection(3), QStringLiteral("游戏介绍"));
    }

    void descriptionBecomesPlainText()
    {
        useScripted();
        m_server.route(QStringLiteral("/products/7.json"),
                       ScriptedResponse::json(envelope(gameAnswer(
                               {{"raw_summary", "<p>第一段 &amp; <b>粗体</b></p><img "
                                                "src=\"/etc/hostname\"><p>第二段</p>"}}))));
        StackHarness harness;
        auto *detail = new GoodsDetailViewController;
        detail->setGameId(QStringLiteral("7"));
        QStringList descriptionsShown;
        connect(detail->tableMain(), &QAbstractItemModel::modelReset, detail, [&] {
            if (detail->numberOfSections() == 4)
                descriptionsShown.append(detail->cellForRowAtIndexPath(3, 0).labelTitle());
        });
        harness.push(detail);
        QVERIFY(waitUntilLoaded(detail));

        const QString text = detail->cellForRowAtIndexPath(3, 0).labelTitle();
        QVERIFY2(!text.contains(QLatin1Char('<')), qPrintable(text));
        QVERIFY(text.startsWith(QStringLiteral("第一段 & 粗体")));
        QVERIFY(text.endsWith(QStringLiteral("第二段")));
        QCOMPARE(detail->sourceModel()->raw_summary, text);
        QCOMPARE(detail->cellForRowAtIndexPath(3, 0).identifier(),
                 QStringLiteral("GoodsDetailCell5"));
        // The HTML never shows: the row is empty until the text is rendered.
        QCOMPARE(descriptionsShown, (QStringList{QString(), text}));
    }

    void failureMessages_data()
    {
        QTest::addColumn<QByteArray>("answer"); // empty: ask the store for an unknown game
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("shown");

        QTest::newRow("unknown game at the store")
                << QByteArray() << 0 << QStringLiteral("未找到该游戏");
        QTest::newRow("not found in an error envelope")
                << failure("error", "ActiveRecord::RecordNotFound") << 404
                << QStringLiteral("未找到该游戏");
        QTest::newRow("other message as it is")
                << failure("error", "服务器维护中，请稍后再试") << 503
                << QStringLiteral("服务器维护中，请稍后再试");
    }

    void failureMessages()
    {
        QFETCH(QByteArray, answer);
        QFETCH(int, status);
        QFETCH(QString, shown);

        QString gameId = QStringLiteral("99999");
        if (!answer.isEmpty()) {
            useScripted();
            gameId = QStringLiteral("9");
            m_server.route(QStringLiteral("/products/9.json"),
                           ScriptedResponse::json(answer, status));
        }
        StackHarness harness;
        GoodsDetailViewController *detail = openDetail(harness, gameId);
        QVERIFY(waitForHud(shown));
        QCOMPARE(Hud::shared().kind(), Hud::Error);
        QCOMPARE(detail->numberOfSections(), 0);
        QVERIFY(!detail->isLoaded());
        QVERIFY(detail->tableHeaderView() == nullptr);
        QCOMPARE(harness.top(), detail); // the page stays, empty
    }

    void answerThatIsNotADictionary()
    {
        useScripted();
        m_server.route(QStringLiteral("/products/5.json"),
                       ScriptedResponse::json(envelope(QVariantList{1, 2})));
        StackHarness harness;
        GoodsDetailViewController *detail = openDetail(harness, QStringLiteral("5"));
        QSignalSpy reloaded(detail->tableMain(), &QAbstractItemModel::modelReset);
        QVERIFY(reloaded.wait(5000));
        QCOMPARE(detail->numberOfSections(), 0);
        QVERIFY(!detail->isLoaded());
        QVERIFY(HudRecorder::shared().history().endsWith(QStringLiteral("正在加载")));
        QVERIFY(!Hud::shared().isVisible());
    }

    void header_data()
    {
        QTest::addColumn<QVariantMap>("overrides");
        QTest::addColumn<QString>("oldPrice");
        QTest::addColumn<QString>("newPrice");
        QTest::addColumn<QString>("discount"); // empty: badge hidden
        QTest::addColumn<bool>("presell");
        QTest::addColumn<QStringList>("icons");

        QTest::newRow("discounted") << QVariantMap() << "¥168"
                                    << "¥42"
                                    << " 75%OFF " << false << QStringList{"goodsDetail_windows"};
        QTest::newRow("equal price texts")
                << QVariantMap{{"list_price", "99"}, {"sale_price", "99"}} << ""
                << "¥99"
                << "" << false << QStringList{"goodsDetail_windows"};
        QTest::newRow("99 against 99.00")
                << QVariantMap{{"list_price", "99"}, {"sale_price", "99.00"}} << "¥99"
                << "¥99.00"
                << " 0%OFF " << false << QStringList{"goodsDetail_windows"};
        QTest::newRow("rounded discount")
                << QVariantMap{{"list_price", "98"}, {"sale_price", "68.6"}} << "¥98"
                << "¥68.6"
                << " 30%OFF " << false << QStringList{"goodsDetail_windows"};
        QTest::newRow("no list price to divide by")
                << QVariantMap{{"list_price", ""}, {"sale_price", "10"}} << "¥"
                << "¥10"
                << "" << false << QStringList{"goodsDetail_windows"};
        QTest::newRow("pre-sale") << QVariantMap{{"release_date", inDays(20)}} << "¥168"
                                  << "¥42"
                                  << " 75%OFF " << true << QStringList{"goodsDetail_windows"};
        QTest::newRow("released this second")
                << QVariantMap{{"release_date",
                                QString::number(QDateTime::currentSecsSinceEpoch())}}
                << "¥168"
                << "¥42"
                << " 75%OFF " << false << QStringList{"goodsDetail_windows"};
        QTest::newRow("every system and an unknown one")
                << QVariantMap{{"os", systems({"Win", "Linux", "Mac", "Amiga"})}} << "¥168"
                << "¥42"
                << " 75%OFF " << false
                << QStringList{"goodsDetail_windows", "goodsDetail_linux", "goodsDetail_mac"};
        QTest::newRow("systems not a list") << QVariantMap{{"os", "Win"}} << "¥168"
                                            << "¥42"
                                            << " 75%OFF " << false << QStringList();
    }

    void header()
    {
        QFETCH(QVariantMap, overrides);
        QFETCH(QString, oldPrice);
        QFETCH(QString, newPrice);
        QFETCH(QString, discount);
        QFETCH(bool, presell);
        QFETCH(QStringList, icons);

        StackHarness harness;
        GoodsDetailViewController *detail = openScripted(harness, gameAnswer(overrides));
        QVERIFY(detail);
        GoodsDetailHeaderView *header = detail->tableHeaderView();
        QVERIFY(header);
        QCOMPARE(header->labelNameCn(), QStringLiteral("霓虹编年史"));
        QCOMPARE(header->labelNameEn(), QStringLiteral("Neon Chronicles"));
        QCOMPARE(header->labelOldPrice(), oldPrice);
        QCOMPARE(header->labelNewPrice(), newPrice);
        QCOMPARE(header->labelDiscount(), discount);
        QCOMPARE(header->isDiscountHidden(), discount.isEmpty());
        QCOMPARE(header->isPresellHidden(), !presell);
        QCOMPARE(detail->isPresell(), presell ? QStringLiteral("1") : QStringLiteral("0"));
        QCOMPARE(header->osIcons(), icons);
        QCOMPARE(detail->footerView()->labelPrice()->text(), newPrice);
    }

    void imageUrlRule_data()
    {
        QTest::addColumn<QString>("image");
        QTest::addColumn<double>("points");
        QTest::addColumn<double>("scale");
        QTest::addColumn<QString>("expected"); // "BASE" stands for ApiBaseUrl()

        QTest::newRow("plain address")
                << "http://img.example.com/covers/7.jpg" << 375.0 << 1.0
                << "http://img.example.com/covers/7.jpg?imageView2/2/w/375/q/85";
        QTest::newRow("retina screen") << "http://img.example.com/c.jpg" << 375.0 << 2.0
                                       << "http://img.example.com/c.jpg?imageView2/2/w/750/q/85";
        QTest::newRow("fractional pixels round")
                << "http://img.example.com/c.jpg" << 187.5 << 3.0
                << "http://img.example.com/c.jpg?imageView2/2/w/563/q/85";
        QTest::newRow("Chinese and spaces escaped")
                << "http://img.example.com/封面 1.jpg" << 100.0 << 1.0
                << "http://img.example.com/%E5%B0%81%E9%9D%A2%201.jpg?imageView2/2/w/100/q/85";
        QTest::newRow("relative address from the store")
                << "/pictures/covers/3.jpg" << 375.0 << 1.0
                << "BASE/pictures/covers/3.jpg?imageView2/2/w/375/q/85";
        QTest::newRow("no picture") << "" << 375.0 << 1.0 << "";
    }

    void imageUrlRule()
    {
        QFETCH(QString, image);
        QFETCH(double, points);
        QFETCH(double, scale);
        QFETCH(QString, expected);
        expected.replace(QStringLiteral("BASE"), ApiBaseUrl());
        QCOMPARE(GoodsDetailHeaderView::imageUrlWithWidth(image, points, scale), expected);
    }

    void coverFromTheStoreLoads()
    {
        StackHarness harness;
        GoodsDetailViewController *detail = openDetail(harness, QStringLiteral("34"));
        QVERIFY(waitUntilLoaded(detail));
        const QString address = detail->tableHeaderView()->imageUrl();
        QVERIFY2(
                address.endsWith(QStringLiteral("/pictures/covers/34.jpg?imageView2/2/w/375/q/85")),
                qPrintable(address));
        QNetworkReply *reply = NetWorkHelper::shareInstance()->networkManager()->get(
                QNetworkRequest(QUrl(address)));
        QSignalSpy finished(reply, &QNetworkReply::finished);
        QVERIFY(finished.wait(10000));
        QCOMPARE(reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt(), 200);
        QImage cover;
        QVERIFY(cover.loadFromData(reply->readAll()));
        QCOMPARE(cover.width(), 375);
        reply->deleteLater();
    }

    void webViewRendersLatestOnly()
    {
        GoodsDetailWebView webView;
        QSignalSpy finished(&webView, &GoodsDetailWebView::didFinishLoad);
        webView.loadHTMLString(QStringLiteral("<p>旧的</p>"));
        webView.loadHTMLString(QStringLiteral("<ul><li>一</li><li>二</li></ul>"));
        QVERIFY(webView.isLoading());
        QVERIFY(webView.innerText().isEmpty());
        QVERIFY(finished.wait(2000));
        QCoreApplication::processEvents(); // the earlier load's turn has come and gone
        QCOMPARE(finished.count(), 1);
        QCOMPARE(webView.innerText(), QStringLiteral("一\n二"));
    }
};

TARVEL_TEST_MAIN(TestGoodsDetail)
#include "tst_detail.moc"
