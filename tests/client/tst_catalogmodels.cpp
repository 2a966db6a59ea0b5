#include "TestEnvironment.h"

#include "models/GameRelease.h"
#include "models/Object_GameDetail.h"
#include "models/Object_HomeGames.h"
#include "models/Object_SearchGames.h"

#include <QJsonDocument>
#include <QTest>

namespace {

QVariant json(const QByteArray &text)
{
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError)
        qFatal("bad test JSON: %s", qPrintable(error.errorString()));
    return document.toVariant();
}

Object_GameDetail mappedDetail(const QByteArray &text)
{
    const QVariant raw = json(text);
    std::optional<Object_GameDetail> detail = JSONModel::initWithDictionary<Object_GameDetail>(raw);
    if (!detail)
        qFatal("the detail did not map");
    detail->completeWithRaw(raw.toMap());
    return *detail;
}

} // namespace

class TestCatalogModels : public QObject
{
    Q_OBJECT

private slots:
    void mapsHomeGame();
    void mapsSearchGameWithMixedTypes();
    void completesDetailLists_data();
    void completesDetailLists();
    void keepsOsAndDevelopersAsMapped();
    void readsBaseGame_data();
    void readsBaseGame();
    void decidesPreSale_data();
    void decidesPreSale();
};

void TestCatalogModels::mapsHomeGame()
{
    const auto game = JSONModel::initWithDictionary<Object_HomeGames>(json(R"({
        "game_status": "on_sale", "id": 1024, "title": "仙剑奇侠传七", "list_price": 128,
        "sale_price": 99.5, "install_type": "steam", "code_type": "cdkey",
        "product_image": "http://img/p.jpg", "release_date": 1700000000, "unused": [1]})"));
    QVERIFY(game.has_value());
    Object_HomeGames expected;
    expected.game_status = "on_sale";
    expected.id = "1024";
    expected.title = QStringLiteral("仙剑奇侠传七");
    expected.list_price = "128";
    expected.sale_price = "99.5";
    expected.install_type = "steam";
    expected.code_type = "cdkey";
    expected.product_image = "http://img/p.jpg";
    expected.release_date = "1700000000";
    QCOMPARE(*game, expected);
}

void TestCatalogModels::mapsSearchGameWithMixedTypes()
{
    const auto game = JSONModel::initWithDictionary<Object_SearchGames>(json(R"({
        "raw_summary": "<p>好玩</p>", "id": "7", "available": true, "type_name": null,
        "title": {"zh": "x"}, "sale_price": [1], "list_price": "58"})"));
    QVERIFY(game.has_value());
    QCOMPARE(game->raw_summary, QStringLiteral("<p>好玩</p>"));
    QCOMPARE(game->available, QStringLiteral("1"));
    QVERIFY(game->type_name.isNull());
    QVERIFY(game->title.isNull());
    QVERIFY(game->sale_price.isNull());
    QCOMPARE(game->list_price, QStringLiteral("58"));
    QVERIFY(game->release_date.isNull());
}

void TestCatalogModels::completesDetailLists_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QStringList>("dlcIds");
    QTest::addColumn<QStringList>("bundleTitles");
    QTest::addColumn<int>("tags");
    QTest::addColumn<int>("languages");
    QTest::addColumn<int>("publishers");

    QTest::newRow("all lists") << QByteArray(R"({"id":"1",
        "dlcs":[{"id":11,"title":"扩展包","sale_price":"18"},{"id":"12"}],
        "included_bundles":[{"id":"30","title":"合集"}],
        "tags":[{"name":"动作"},{"name":"RPG"}], "languages":[{"name":"简体中文"}],
        "publishers":[{"name":"A"},{"name":"B"},{"name":"C"}]})")
                               << QStringList{"11", "12"} << QStringList{QStringLiteral("合集")}
                               << 2 << 1 << 3;
    QTest::newRow("dlcs not a list") << QByteArray(R"({"dlcs":{"id":"11"},"included_bundles":"x",
        "tags":"RPG","languages":null})")
                                     << QStringList{} << QStringList{} << 0 << 0 << 0;
    QTest::newRow("missing lists")
            << QByteArray(R"({"id":"1"})") << QStringList{} << QStringList{} << 0 << 0 << 0;
    QTest::newRow("non-dictionary elements skipped")
            << QByteArray(R"({"dlcs":[5,{"id":"13"},null,"x"],"included_bundles":[[]],
                             "tags":[1,"two",{"name":"three"}]})")
            << QStringList{"13"} << QStringList{} << 3 << 0 << 0;
}

void TestCatalogModels::completesDetailLists()
{
    QFETCH(QByteArray, answer);
    QFETCH(QStringList, dlcIds);
    QFETCH(QStringList, bundleTitles);
    QFETCH(int, tags);
    QFETCH(int, languages);
    QFETCH(int, publishers);

    const Object_GameDetail detail = mappedDetail(answer);
    QStringList ids;
    for (const Object_DLCOrBind &dlc : detail.dlcs)
        ids << dlc.id;
    QCOMPARE(ids, dlcIds);
    QStringList titles;
    for (const Object_DLCOrBind &bundle : detail.included_bundles)
        titles << bundle.title;
    QCOMPARE(titles, bundleTitles);
    QCOMPARE(detail.tags.size(), tags);
    QCOMPARE(detail.languages.size(), languages);
    QCOMPARE(detail.publishers.size(), publishers);

    // Completing twice must not duplicate anything.
    Object_GameDetail again = detail;
    again.completeWithRaw(json(answer).toMap());
    QCOMPARE(again, detail);
}

void TestCatalogModels::keepsOsAndDevelopersAsMapped()
{
    const Object_GameDetail detail = mappedDetail(R"({"os":[{"name":"Win"},{"name":"Mac"}],
        "developers":"not a list","min_age":18,"blocked":1})");
    QCOMPARE(detail.os.size(), 2);
    QCOMPARE(detail.os.first().toMap().value("name").toString(), QStringLiteral("Win"));
    QVERIFY(detail.developers.isEmpty());
    QCOMPARE(detail.min_age, QStringLiteral("18"));
    QCOMPARE(detail.blocked, QStringLiteral("1"));
}

void TestCatalogModels::readsBaseGame_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("id");
    QTest::addColumn<QString>("title");

    QTest::newRow("downloadable content")
            << QByteArray(R"({"parent":{"parent":{"id":"500","title":"巫师3"}}})") << "500"
            << QStringLiteral("巫师3");
    QTest::newRow("numeric id") << QByteArray(R"({"parent":{"parent":{"id":500}}})") << "500"
                                << QString();
    QTest::newRow("base game") << QByteArray(R"({"id":"1"})") << QString() << QString();
    QTest::newRow("parent without inner parent")
            << QByteArray(R"({"parent":{"id":"500","title":"巫师3"}})") << QString() << QString();
    QTest::newRow("inner parent not a dictionary")
            << QByteArray(R"({"parent":{"parent":"500"}})") << QString() << QString();
    QTest::newRow("parent not a dictionary")
            << QByteArray(R"({"parent":[1]})") << QString() << QString();
}

void TestCatalogModels::readsBaseGame()
{
    QFETCH(QByteArray, answer);
    QFETCH(QString, id);
    QFETCH(QString, title);
    const Object_GameDetail detail = mappedDetail(answer);
    QCOMPARE(detail.baseGameId(), id);
    QCOMPARE(detail.baseGameTitle(), title);
}

void TestCatalogModels::decidesPreSale_data()
{
    QTest::addColumn<QString>("releaseDate");
    QTest::addColumn<qint64>("now");
    QTest::addColumn<bool>("preSale");

    QTest::newRow("released a second from now") << "1700000001" << qint64(1700000000) << true;
    QTest::newRow("released this second") << "1700000000" << qint64(1700000000) << false;
    QTest::newRow("released earlier") << "1699999999" << qint64(1700000000) << false;
    QTest::newRow("empty") << "" << qint64(0) << false;
    QTest::newRow("null") << QString() << qint64(0) << false;
    QTest::newRow("non-numeric reads as 0") << "soon" << qint64(0) << false;
    QTest::newRow("non-numeric is exactly 0") << "soon" << qint64(-1) << true;
    QTest::newRow("leading digits count") << "1700000001abc" << qint64(1700000000) << true;
    QTest::newRow("leading blanks and sign") << "  +1700000001" << qint64(1700000000) << true;
    QTest::newRow("beyond 32 bits clamps") << "99999999999" << qint64(2147483647) << false;
    QTest::newRow("beyond 32 bits still ahead") << "99999999999" << qint64(2147483646) << true;
    QTest::newRow("fraction truncated") << "1700000000.9" << qint64(1700000000) << false;
}

void TestCatalogModels::decidesPreSale()
{
    QFETCH(QString, releaseDate);
    QFETCH(qint64, now);
    QFETCH(bool, preSale);
    QCOMPARE(isPreSale(releaseDate, now), preSale);
}

TARVEL_TEST_MAIN(TestCatalogModels)
#include "tst_catalogmodels.moc"
