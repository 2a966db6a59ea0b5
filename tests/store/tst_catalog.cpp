#include "InProcessStore.h"
#include "StoreClient.h"
#include "StoreContext.h"
#include "TestEnvironment.h"

#include <QDateTime>
#include <QImage>
#include <QtTest>

using namespace tarvel::test;

// The catalogue answers: home page, sorted lists, detail, search and pictures.
class TestCatalog : public QObject
{
    Q_OBJECT

private:
    InProcessStore m_store;
    std::unique_ptr<StoreClient> m_client;

    QJsonArray listPage(const QString &type, int page)
    {
        const Answer answer = m_client->get(
                QStringLiteral("/products.json"),
                {{QStringLiteral("type"), type}, {QStringLiteral("page"), QString::number(page)}});
        [&] { QVERIFY2(answer.ok(), answer.body); }();
        return answer.array();
    }

    QList<QJsonObject> wholeList(const QString &type)
    {
        QList<QJsonObject> all;
        for (int page = 1; page < 50; ++page) {
            const QJsonArray entries = listPage(type, page);
            if (entries.isEmpty())
                break;
            for (const QJsonValue &entry : entries)
                all.append(entry.toObject());
        }
        return all;
    }

    QJsonObject detail(qint64 id)
    {
        return m_client
                ->get(QStringLiteral("/products/%1.json").arg(id),
                      {{QStringLiteral("verbose"), QStringLiteral("1")}})
                .object();
    }

    static double price(const QJsonObject &game, const char *key)
    {
        return game.value(QLatin1String(key)).toString().toDouble();
    }

private slots:
    void initTestCase()
    {
        QVERIFY(m_store.isRunning());
        m_client = std::make_unique<StoreClient>(m_store.baseUrl());
    }
    void cleanupTestCase() { m_client.reset(); }

    void homePageCarouselLinksProductsAndOutside()
    {
        const Answer answer = m_client->get(QStringLiteral("/store.json"));
        QVERIFY(answer.ok());
        const QJsonArray recs = answer.object().value(QStringLiteral("focus_recs")).toArray();
        QVERIFY(recs.size() >= 3);
        int productLinks = 0;
        int outsideLinks = 0;
        for (const QJsonValue &value : recs) {
            const QJsonObject rec = value.toObject();
            QVERIFY(rec.value(QStringLiteral("img"))
                            .toString()
                            .startsWith(m_store.baseUrl() + "/pictures/"));
            const QString url = rec.value(QStringLiteral("url")).toString();
            if (url.startsWith(QLatin1String("/products/"))) {
                ++productLinks;
                QVERIFY2(m_client->get(url + QStringLiteral(".json")).ok(), qPrintable(url));
            } else {
                QVERIFY(url.startsWith(QLatin1String("https://")));
                ++outsideLinks;
            }
        }
        QVERIFY(productLinks > 0);
        QVERIFY(outsideLinks > 0);
    }

    void listsArePagedByTwenty_data()
    {
        QTest::addColumn<QString>("type");
        QTest::newRow("latest") << "latest";
        QTest::newRow("rec") << "rec";
        QTest::newRow("onsale") << "onsale";
        QTest::newRow("top") << "top";
    }
    void listsArePagedByTwenty()
    {
        QFETCH(QString, type);
        const QList<QJsonObject> all = wholeList(type);
        QVERIFY(!all.isEmpty());
        QCOMPARE(listPage(type, 1).size(), qMin<qsizetype>(20, all.size()));
        const int pages = int((all.size() + 19) / 20);
        QVERIFY(listPage(type, pages + 1).isEmpty());
        QSet<qint64> ids;
        for (const QJsonObject &game : all) {
            ids.insert(game.value(QStringLiteral("id")).toInteger());
            for (const char *key : {"id", "title", "list_price", "sale_price", "product_image",
                                    "release_date", "game_status", "install_type", "code_type"})
                QVERIFY2(game.contains(QLatin1String(key)), key);
        }
        QCOMPARE(ids.size(), all.size()); // no product twice across pages
    }

    void listsAreSortedByTheirKey()
    {
        const QList<QJsonObject> latest = wholeList(QStringLiteral("latest"));
        QCOMPARE(latest.size(), m_store.context().catalog().size());
        for (qsizetype i = 1; i < latest.size(); ++i)
            QVERIFY(latest[i - 1].value("release_date").toString().toLongLong()
                    >= latest[i].value("release_date").toString().toLongLong());
        for (const QJsonObject &game : wholeList(QStringLiteral("onsale")))
            QVERIFY(price(game, "sale_price") < price(game, "list_price"));
    }

    void listRefusesUnknownSortAndPage_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<QString>("page");
        QTest::addColumn<QString>("field");
        QTest::newRow("unknown sort") << "cheapest"
                                      << "1"
                                      << "type";
        QTest::newRow("sql in sort") << "latest' OR '1'='1"
                                     << "1"
                                     << "type";
        QTest::newRow("page zero") << "latest"
                                   << "0"
                                   << "page";
        QTest::newRow("page text") << "latest"
                                   << "one"
                                   << "page";
        QTest::newRow("negative page") << "top"
                                       << "-3"
                                       << "page";
    }
    void listRefusesUnknownSortAndPage()
    {
        QFETCH(QString, type);
        QFETCH(QString, page);
        QFETCH(QString, field);
        const Answer answer
                = m_client->get(QStringLiteral("/products.json"),
                                {{QStringLiteral("type"), type}, {QStringLiteral("page"), page}});
        QCOMPARE(answer.envelopeStatus(), QStringLiteral("fail"));
        QVERIFY(!answer.failMessage(field).isEmpty());
    }

    void catalogueHasEveryKindOfProduct()
    {
        const qint64 now = QDateTime::currentSecsSinceEpoch();
        int dlcs = 0, bundles = 0, presales = 0, aged = 0, blocked = 0, discounted = 0, full = 0;
        const auto &products = m_store.context().catalog().products();
        QVERIFY(products.size() >= 150);
        for (const Product &product : products) {
            dlcs += product.kind == QLatin1String("dlc");
            bundles += product.kind == QLatin1String("bundle");
            presales += product.releaseDate > now;
            aged += !product.minAge.isEmpty();
            blocked += product.blocked;
            discounted += product.salePrice < product.listPrice;
            full += product.salePrice == product.listPrice;
            QVERIFY(!product.title.isEmpty() && !product.aliasName.isEmpty());
            QVERIFY(product.rawSummary.startsWith(QLatin1String("<p>")));
        }
        QVERIFY(dlcs >= 20);
        QVERIFY(bundles >= 10);
        QVERIFY(presales >= 3);
        QVERIFY(aged >= 10);
        QCOMPARE(blocked, 1);
        QVERIFY(discounted >= 20 && full >= 20);
    }

    void detailOfTheKinds_data()
    {
        QTest::addColumn<QString>("kind");
        QTest::newRow("game") << "game";
        QTest::newRow("dlc") << "dlc";
        QTest::newRow("bundle") << "bundle";
        QTest::newRow("blocked") << "blocked";
        QTest::newRow("pre-sale") << "presale";
    }
    void detailOfTheKinds()
    {
        QFETCH(QString, kind);
        const qint64 now = QDateTime::currentSecsSinceEpoch();
        const Product *chosen = nullptr;
        for (const Product &product : m_store.context().catalog().products()) {
            const bool match = kind == QLatin1String("blocked")   ? product.blocked
                               : kind == QLatin1String("presale") ? product.releaseDate > now
                                                                  : product.kind == kind;
            if (match && (kind != QLatin1String("game") || product.minAge == QLatin1String("18"))) {
                chosen = &product;
                break;
            }
        }
        QVERIFY(chosen);
        const QJsonObject game = detail(chosen->id);
        QCOMPARE(game.value("id").toInteger(), chosen->id);
        for (const char *key : {"alias_name", "title",      "filesize",         "tags",
                                "list_price", "os",         "languages",        "developers",
                                "publishers", "dlcs",       "included_bundles", "product_image",
                                "pubtype",    "manual",     "release_date",     "raw_summary",
                                "type_name",  "sale_price", "game_status",      "code_type",
                                "icon_image", "min_age",    "available",        "blocked"})
            QVERIFY2(game.contains(QLatin1String(key)), key);
        for (const QJsonValue &os : game.value("os").toArray())
            QVERIFY(QStringList({"Win", "Linux", "Mac"})
                            .contains(os.toObject().value("name").toString()));
        QVERIFY(!game.value("tags")
                         .toArray()
                         .first()
                         .toObject()
                         .value("name")
                         .toString()
                         .isEmpty());

        if (kind == QLatin1String("game")) {
            QCOMPARE(game.value("min_age").toString(), QStringLiteral("18"));
            QVERIFY(!game.contains("parent"));
        } else if (kind == QLatin1String("dlc")) {
            const QJsonObject base = game.value("parent").toObject().value("parent").toObject();
            QCOMPARE(base.value("id").toInteger(), chosen->parentId);
            QCOMPARE(base.value("title").toString(),
                     m_store.context().catalog().find(chosen->parentId)->title);
            bool listedAtParent = false;
            for (const QJsonValue &dlc : detail(chosen->parentId).value("dlcs").toArray())
                listedAtParent |= dlc.toObject().value("id").toInteger() == chosen->id;
            QVERIFY(listedAtParent);
        } else if (kind == QLatin1String("bundle")) {
            const QJsonArray items = game.value("included_games").toArray();
            QVERIFY(!items.isEmpty());
            const QJsonObject member = detail(items.first().toObject().value("id").toInteger());
            bool listed = false;
            for (const QJsonValue &bundle : member.value("included_bundles").toArray()) {
                listed |= bundle.toObject().value("id").toInteger() == chosen->id;
                QCOMPARE(bundle.toObject().value("type_name").toString(), QStringLiteral("捆绑包"));
            }
            QVERIFY(listed);
        } else if (kind == QLatin1String("blocked")) {
            QCOMPARE(game.value("blocked").toString(), QStringLiteral("1"));
            QCOMPARE(game.value("available").toString(), QStringLiteral("0"));
        } else {
            QVERIFY(game.value("release_date").toString().toLongLong() > now);
            QCOMPARE(game.value("game_status").toString(), QStringLiteral("pre_sale"));
        }
    }

    void unknownGameAnswersNotFound_data()
    {
        QTest::addColumn<QString>("id");
        QTest::newRow("missing") << "99999";
        QTest::newRow("text") << "abc";
        QTest::newRow("quote") << "1'";
        QTest::newRow("zero") << "0";
    }
    void unknownGameAnswersNotFound()
    {
        QFETCH(QString, id);
        const Answer answer = m_client->get(QStringLiteral("/products/%1.json").arg(id),
                                            {{QStringLiteral("verbose"), QStringLiteral("1")}});
        QCOMPARE(answer.status, 404);
        QCOMPARE(answer.envelopeStatus(), QStringLiteral("error"));
        QVERIFY(answer.message().contains(QLatin1String("NotFound")));
    }

    void searchFindsBySubstring_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("atLeast");
        QTest::newRow("chinese") << "星际" << 5;
        QTest::newRow("english any case") << "stELLar" << 5;
        QTest::newRow("dlc words") << "季票" << 1;
        QTest::newRow("nothing") << "不存在的游戏名" << 0;
        QTest::newRow("sql quote") << "' OR '1'='1" << 0;
        QTest::newRow("like wildcard") << "%" << 0;
        QTest::newRow("underscore") << "_" << 0;
    }
    void searchFindsBySubstring()
    {
        QFETCH(QString, text);
        QFETCH(int, atLeast);
        const Answer answer = m_client->get(
                QStringLiteral("/store/search.json"),
                {{QStringLiteral("q"), text}, {QStringLiteral("page"), QStringLiteral("1")}});
        QVERIFY(answer.ok());
        const QJsonArray found = answer.array();
        QVERIFY(found.size() >= atLeast);
        if (atLeast == 0)
            QCOMPARE(found.size(), 0);
        for (const QJsonValue &value : found) {
            const QJsonObject game = value.toObject();
            QVERIFY(game.value("title").toString().contains(text, Qt::CaseInsensitive)
                    || game.value("alias_name").toString().contains(text, Qt::CaseInsensitive));
            QVERIFY(game.contains("raw_summary"));
        }
    }

    void searchIsPaged()
    {
        const Form first{{QStringLiteral("q"), QStringLiteral("a")},
                         {QStringLiteral("page"), QStringLiteral("1")}};
        const QJsonArray page1 = m_client->get(QStringLiteral("/store/search.json"), first).array();
        QCOMPARE(page1.size(), 20);
        const QJsonArray page2 = m_client->get(QStringLiteral("/store/search.json"),
                                               {{QStringLiteral("q"), QStringLiteral("a")},
                                                {QStringLiteral("page"), QStringLiteral("2")}})
                                         .array();
        QVERIFY(!page2.isEmpty());
        QVERIFY(page1.first().toObject().value("id") != page2.first().toObject().value("id"));
        QVERIFY(m_client->get(QStringLiteral("/store/search.json"),
                              {{QStringLiteral("q"), QStringLiteral("a")},
                               {QStringLiteral("page"), QStringLiteral("99")}})
                        .array()
                        .isEmpty());
    }

    void picturesHonourTheImageViewSuffix_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("suffix");
        QTest::addColumn<int>("width");
        QTest::newRow("cover original") << "/pictures/covers/3.jpg"
                                        << "" << 640;
        QTest::newRow("cover scaled") << "/pictures/covers/3.jpg"
                                      << "imageView2/2/w/300/q/85" << 300;
        QTest::newRow("cover enlarged") << "/pictures/covers/3.jpg"
                                        << "imageView2/2/w/1242/q/85" << 1242;
        QTest::newRow("icon scaled") << "/pictures/icons/3.png"
                                     << "imageView2/2/w/64/q/85" << 64;
        QTest::newRow("banner scaled") << "/pictures/banners/1.jpg"
                                       << "imageView2/2/w/375/q/60" << 375;
        QTest::newRow("avatar") << "/pictures/avatars/default.png"
                                << "" << 200;
    }
    void picturesHonourTheImageViewSuffix()
    {
        QFETCH(QString, path);
        QFETCH(QString, suffix);
        QFETCH(int, width);
        const QString target = suffix.isEmpty() ? path : path + QLatin1Char('?') + suffix;
        const Answer answer = m_client->get(target);
        QCOMPARE(answer.status, 200);
        const QImage image = QImage::fromData(answer.body);
        QCOMPARE(image.width(), width);
        if (!suffix.isEmpty()) {
            QCOMPARE(answer.contentType, QByteArray("image/jpeg"));
            const QImage original = QImage::fromData(m_client->get(path).body);
            QCOMPARE(image.height(), qRound(double(original.height()) * width / original.width()));
            QCOMPARE(m_client->get(target).body,
                     answer.body); // the same bytes again, from the cache
        }
    }

    void coversAreTheSameOnEveryStore()
    {
        InProcessStore other;
        StoreClient client(other.baseUrl());
        QCOMPARE(client.get(QStringLiteral("/pictures/covers/7.jpg")).body,
                 m_client->get(QStringLiteral("/pictures/covers/7.jpg")).body);
        QVERIFY(client.get(QStringLiteral("/pictures/covers/7.jpg")).body
                != m_client->get(QStringLiteral("/pictures/covers/8.jpg")).body);
    }

    void badPictureRequests_data()
    {
        QTest::addColumn<QString>("target");
        QTest::addColumn<int>("status");
        QTest::newRow("unknown product") << "/pictures/covers/99999.jpg" << 404;
        QTest::newRow("unknown kind") << "/pictures/secrets/1.jpg" << 404;
        QTest::newRow("path escape") << "/uploads/..%2Fstore.sqlite" << 404;
        QTest::newRow("width zero") << "/pictures/covers/1.jpg?imageView2/2/w/0/q/85" << 400;
        QTest::newRow("huge width") << "/pictures/covers/1.jpg?imageView2/2/w/99999/q/85" << 400;
        QTest::newRow("bad quality") << "/pictures/covers/1.jpg?imageView2/2/w/100/q/101" << 400;
        QTest::newRow("garbage") << "/pictures/covers/1.jpg?imageView2/2/x/100" << 400;
    }
    void badPictureRequests()
    {
        QFETCH(QString, target);
        QFETCH(int, status);
        const Answer answer = m_client->get(target);
        QCOMPARE(answer.status, status);
        QCOMPARE(answer.envelopeStatus(), QStringLiteral("error"));
    }
};

TARVEL_TEST_MAIN(TestCatalog)
#include "tst_catalog.moc"
