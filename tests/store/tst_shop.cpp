#include "InProcessStore.h"
#include "StoreClient.h"
#include "StoreContext.h"
#include "StoreSeed.h"
#include "TestEnvironment.h"

#include <QtTest>

using namespace tarvel::test;

// Cart, orders, coupons, payment through the WeChat sandbox, history and owned games.
class TestShop : public QObject
{
    Q_OBJECT

private:
    std::unique_ptr<InProcessStore> m_store;
    std::unique_ptr<StoreClient> m_phone; // the phone demo account, signed in
    std::unique_ptr<StoreClient> m_mail; // the e-mail demo account, signed in

    static int cartNum(const Answer &answer)
    {
        const QByteArray raw = answer.setCookie("cart_num");
        if (raw.isEmpty())
            return -1;
        return raw.mid(9, raw.indexOf(';') - 9).toInt();
    }

    // A game the phone account may buy, priced from `low` to `high` yuan.
    qint64 buyableGame(double low, double high, int skip = 0)
    {
        const QSet<qint64> taken{3, 5, 8, 12, 15, 17, 22, 26, 31, 44};
        for (const Product &product : m_store->context().catalog().products()) {
            const double price = product.salePrice / 100.0;
            if (product.kind == QLatin1String("game") && !product.blocked
                && !taken.contains(product.id) && price >= low && price <= high && skip-- == 0)
                return product.id;
        }
        return 0;
    }

    QString oneKeyOrder(StoreClient &client, qint64 gameId)
    {
        const Answer answer = client.post(
                QStringLiteral("/orders.json"),
                client.withToken({{QStringLiteral("game_id"), QString::number(gameId)}}));
        return answer.object().value("url").toString();
    }

    static qint64 orderIdOf(const QString &url)
    {
        return url.section(QLatin1Char('/'), -1).toLongLong();
    }

    Answer attach(StoreClient &client, qint64 orderId, const QString &code)
    {
        return client.post(
                QStringLiteral("/orders/%1/line_items.json").arg(orderId),
                client.withToken({{QStringLiteral("item_type"), QStringLiteral("coupon")},
                                  {QStringLiteral("code"), code}}));
    }

    Answer pay(StoreClient &client, qint64 orderId,
               const QString &method = QStringLiteral("wechat"))
    {
        return client.post(
                QStringLiteral("/orders/pay.json"),
                client.withToken({{QStringLiteral("from"), QStringLiteral("ios")},
                                  {QStringLiteral("payment_method"), method},
                                  {QStringLiteral("order_id"), QString::number(orderId)},
                                  {QStringLiteral("openID"), QStringLiteral("oTarvelTester")}}));
    }

    // The payer's answer; a success confirms the amount the prepay shows unless `amount` is given.
    Answer confirm(StoreClient &client, const QString &prepayId, const QString &result,
                   QString amount = {})
    {
        if (amount.isNull())
            amount = client.get(QStringLiteral("/sandbox/wechat/prepay"),
                                {{QStringLiteral("prepayid"), prepayId}})
                             .object()
                             .value("amount")
                             .toString();
        return client.post(QStringLiteral("/sandbox/wechat/confirm"),
                           {{QStringLiteral("prepayid"), prepayId},
                            {QStringLiteral("result"), result},
                            {QStringLiteral("amount"), amount}});
    }

    QJsonObject checkout(StoreClient &client, qint64 orderId)
    {
        return client.get(QStringLiteral("/orders/%1/checkout.json").arg(orderId)).object();
    }

private slots:
    void init()
    {
        m_store = std::make_unique<InProcessStore>();
        m_phone = std::make_unique<StoreClient>(m_store->baseUrl());
        m_mail = std::make_unique<StoreClient>(m_store->baseUrl());
        QVERIFY(m_phone->signIn(QString::fromLatin1(StoreSeed::kDemoPhone),
                                QString::fromLatin1(StoreSeed::kDemoPassword))
                        .ok());
        QVERIFY(m_mail->signIn(QString::fromLatin1(StoreSeed::kDemoEmail),
                               QString::fromLatin1(StoreSeed::kDemoPassword))
                        .ok());
    }
    void cleanup()
    {
        m_phone.reset();
        m_mail.reset();
        m_store.reset();
    }

    void cartLinesAndTheCartNumCookie()
    {
        Answer cart = m_phone->get(QStringLiteral("/cart.json"));
        QVERIFY(cart.ok());
        QCOMPARE(cart.array().size(), 2);
        QCOMPARE(cartNum(cart), 2);
        for (const QJsonValue &line : cart.array())
            for (const char *key :
                 {"id", "title", "type", "list_price", "sale_price", "product_image"})
                QVERIFY2(line.toObject().contains(QLatin1String(key)), key);

        const qint64 game = buyableGame(1, 1000);
        Answer added = m_phone->get(QStringLiteral("/cart/add.json"),
                                    {{QStringLiteral("game_id"), QString::number(game)}});
        QVERIFY(added.ok());
        QCOMPARE(cartNum(added), 3);
        added = m_phone->get(QStringLiteral("/cart/add.json"),
                             {{QStringLiteral("game_id"), QString::number(game)}});
        QCOMPARE(cartNum(added), 3); // a game is in the cart once
        const Answer removed = m_phone->post(
                QStringLiteral("/cart/remove.json"),
                m_phone->withToken({{QStringLiteral("game_ids"), QString::number(game)}}));
        QVERIFY(removed.ok());
        QCOMPARE(cartNum(removed), 2);
        const Answer cleared = m_phone->post(
                QStringLiteral("/cart/remove.json"),
                m_phone->withToken({{QStringLiteral("game_ids[]"), QStringLiteral("5")},
                                    {QStringLiteral("game_ids[]"), QStringLiteral("12")}}));
        QCOMPARE(cartNum(cleared), 0);
        QVERIFY(m_phone->get(QStringLiteral("/cart.json")).array().isEmpty());
    }

    void cartRefusals_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<QString>("gameId");
        QTest::addColumn<int>("status");
        QTest::newRow("owned game") << "add"
                                    << "3" << 409;
        QTest::newRow("blocked game") << "add"
                                      << "42" << 409;
        QTest::newRow("unknown game") << "add"
                                      << "99999" << 404;
        QTest::newRow("not a number") << "add"
                                      << "abc" << 422;
        QTest::newRow("sql") << "add"
                             << "1 OR 1=1" << 422;
        QTest::newRow("remove without token") << "remove-no-token"
                                              << "5" << 403;
        QTest::newRow("remove with wrong token") << "remove-bad-token"
                                                 << "5" << 403;
        QTest::newRow("signed out") << "signed-out"
                                    << "7" << 401;
    }
    void cartRefusals()
    {
        QFETCH(QString, action);
        QFETCH(QString, gameId);
        QFETCH(int, status);
        StoreClient stranger(m_store->baseUrl());
        Answer answer;
        if (action == QLatin1String("add"))
            answer = m_phone->get(QStringLiteral("/cart/add.json"),
                                  {{QStringLiteral("game_id"), gameId}});
        else if (action == QLatin1String("remove-no-token"))
            answer = m_phone->post(QStringLiteral("/cart/remove.json"),
                                   {{QStringLiteral("game_ids"), gameId}});
        else if (action == QLatin1String("remove-bad-token"))
            answer = m_phone->post(QStringLiteral("/cart/remove.json"),
                                   {{QStringLiteral("authenticity_token"), m_mail->token()},
                                    {QStringLiteral("game_ids"), gameId}});
        else
            answer = stranger.get(QStringLiteral("/cart/add.json"),
                                  {{QStringLiteral("game_id"), gameId}});
        QCOMPARE(answer.status, status);
        QVERIFY(!answer.ok());
        QVERIFY(!answer.message().isEmpty());
        QCOMPARE(m_phone->get(QStringLiteral("/cart.json")).array().size(), 2);
    }

    void gameIdListsInEveryEncoding_data()
    {
        QTest::addColumn<Form>("ids");
        QTest::newRow("repeated") << Form{{"game_ids", "5"}, {"game_ids", "12"}};
        QTest::newRow("brackets") << Form{{"game_ids[]", "5"}, {"game_ids[]", "12"}};
        QTest::newRow("indexed") << Form{{"game_ids[0]", "5"}, {"game_ids[1]", "12"}};
        QTest::newRow("commas") << Form{{"game_ids", "5, 12"}};
    }
    void gameIdListsInEveryEncoding()
    {
        QFETCH(Form, ids);
        const Answer answer
                = m_phone->post(QStringLiteral("/cart/submit.json"), m_phone->withToken(ids));
        QVERIFY2(answer.ok(), answer.body);
        const QJsonArray games = checkout(*m_phone, answer.object().value("order_id").toInteger())
                                         .value("order_games")
                                         .toArray();
        QCOMPARE(games.size(), 2);
        QCOMPARE(cartNum(answer), 0);
    }

    void ordersFromTheCartAndForOneGame()
    {
        const Answer submitted = m_phone->post(
                QStringLiteral("/cart/submit.json"),
                m_phone->withToken({{QStringLiteral("game_ids[]"), QStringLiteral("5")},
                                    {QStringLiteral("game_ids[]"), QStringLiteral("12")}}));
        QVERIFY2(submitted.ok(), submitted.body);
        const QString url = submitted.object().value("url").toString();
        QVERIFY(url.startsWith(QLatin1String("/orders/")));
        QCOMPARE(cartNum(submitted), 0);

        const Answer detail = m_phone->get(url + QStringLiteral(".json"),
                                           {{QStringLiteral("from"), QStringLiteral("ios")}});
        QVERIFY(detail.ok());
        const QJsonObject order = detail.object();
        QCOMPARE(order.value("order_id").toInteger(), orderIdOf(url));
        const QJsonArray games = order.value("order_games").toArray();
        QCOMPARE(games.size(), 2);
        double sum = 0;
        for (const QJsonValue &game : games) {
            for (const char *key : {"id", "title", "type_name", "price"})
                QVERIFY(game.toObject().contains(QLatin1String(key)));
            sum += game.toObject().value("price").toString().toDouble();
        }
        QCOMPARE(order.value("order_subtotal").toString().toDouble(), sum);
        QCOMPARE(order.value("payment_methods")
                         .toArray()
                         .first()
                         .toObject()
                         .value("name")
                         .toString(),
                 QStringLiteral("wechat"));
        QVERIFY(order.value("order_line_items").toArray().isEmpty());
        QCOMPARE(checkout(*m_phone, orderIdOf(url)), order);

        const QString oneKey = oneKeyOrder(*m_phone, buyableGame(1, 1000));
        QVERIFY(oneKey.startsWith(QLatin1String("/orders/")));
        QCOMPARE(checkout(*m_phone, orderIdOf(oneKey)).value("order_games").toArray().size(), 1);

        // a game that is not in the cart cannot be submitted from it; an owned one cannot be
        // ordered
        const Answer notInCart = m_phone->post(
                QStringLiteral("/cart/submit.json"),
                m_phone->withToken({{QStringLiteral("game_ids[]"), QStringLiteral("7")}}));
        QCOMPARE(notInCart.status, 409);
        QCOMPARE(oneKeyOrder(*m_phone, 3), QString());
        // an owned game (bought elsewhere, so gone from the cart too) is refused as owned
        const Answer owned = m_phone->post(
                QStringLiteral("/cart/submit.json"),
                m_phone->withToken({{QStringLiteral("game_ids[]"), QStringLiteral("3")}}));
        QCOMPARE(owned.status, 409);
        const QString title = m_phone->get(QStringLiteral("/products/3.json"))
                                      .object()
                                      .value("title")
                                      .toString();
        QVERIFY(!title.isEmpty());
        QCOMPARE(owned.message(), QStringLiteral("您已拥有《%1》，无需重复购买").arg(title));
    }

    void couponRules_data()
    {
        QTest::addColumn<QString>("code");
        QTest::addColumn<QString>("status");
        QTest::addColumn<QString>("text");
        QTest::newRow("public") << "WELCOME10"
                                << "success"
                                << "";
        QTest::newRow("any case") << "welcome10"
                                  << "success"
                                  << "";
        QTest::newRow("own") << "PHONE15"
                             << "success"
                             << "";
        QTest::newRow("unknown") << "NOPE"
                                 << "error"
                                 << "该优惠码无效，请核对后重新输入";
        QTest::newRow("another user's") << "MAIL15"
                                        << "error"
                                        << "该优惠码无效，请核对后重新输入";
        QTest::newRow("empty") << ""
                               << "fail"
                               << "请输入优惠码";
        QTest::newRow("under minimum") << "PHONE30"
                                       << "error"
                                       << "订单满150元才能使用该优惠码";
        QTest::newRow("used") << "PHONEWELCOME5"
                              << "error"
                              << "该优惠码已被使用";
        QTest::newRow("sql") << "' OR 1=1 --"
                             << "error"
                             << "该优惠码无效，请核对后重新输入";
    }
    void couponRules()
    {
        QFETCH(QString, code);
        QFETCH(QString, status);
        QFETCH(QString, text);
        const qint64 orderId = orderIdOf(oneKeyOrder(*m_phone, buyableGame(60, 140)));
        const double total
                = checkout(*m_phone, orderId).value("order_subtotal").toString().toDouble();
        const Answer answer = attach(*m_phone, orderId, code);
        QCOMPARE(answer.envelopeStatus(), status);
        const QJsonObject order = checkout(*m_phone, orderId);
        if (status == QLatin1String("success")) {
            const QJsonObject coupon = answer.object();
            for (const char *key : {"amount", "code", "id", "line_item_id", "subtotal"})
                QVERIFY2(coupon.contains(QLatin1String(key)), key);
            QCOMPARE(coupon.value("subtotal").toString().toDouble(),
                     total - coupon.value("amount").toString().toDouble());
            const QJsonObject line = order.value("order_line_items").toArray().first().toObject();
            QCOMPARE(line.value("id").toInteger(), coupon.value("line_item_id").toInteger());
            QCOMPARE(line.value("type_value").toString(), code);
            QCOMPARE(order.value("order_subtotal").toString(), coupon.value("subtotal").toString());
        } else {
            QCOMPARE(status == QLatin1String("fail") ? answer.failMessage("code")
                                                     : answer.message(),
                     text);
            QVERIFY(order.value("order_line_items").toArray().isEmpty());
            QCOMPARE(order.value("order_subtotal").toString().toDouble(), total);
        }
    }

    void oneCouponPerOrderAndDetaching()
    {
        const qint64 orderId = orderIdOf(oneKeyOrder(*m_phone, buyableGame(100, 1000)));
        const QString total = checkout(*m_phone, orderId).value("order_subtotal").toString();
        const Answer first = attach(*m_phone, orderId, QStringLiteral("WELCOME10"));
        QVERIFY(first.ok());
        QCOMPARE(attach(*m_phone, orderId, QStringLiteral("SAVE20")).message(),
                 QStringLiteral("每个订单只能使用一张优惠码"));
        const qint64 line = first.object().value("line_item_id").toInteger();
        const QString path = QStringLiteral("/orders/%1/line_items/%2.json").arg(orderId).arg(line);
        const Answer detached = m_phone->post(
                path, m_phone->withToken({{QStringLiteral("_method"), QStringLiteral("delete")}}));
        QVERIFY2(detached.ok(), detached.body);
        QCOMPARE(detached.object().value("subtotal").toString(), total);
        QCOMPARE(m_phone->post(path, m_phone->withToken({{QStringLiteral("_method"),
                                                          QStringLiteral("delete")}}))
                         .status,
                 404);
        QCOMPARE(m_phone->post(path, m_phone->withToken({})).status,
                 405); // a plain POST is not a removal

        const Answer second = attach(*m_phone, orderId, QStringLiteral("SAVE20"));
        QVERIFY(second.ok());
        QVERIFY(second.object().value("line_item_id").toInteger()
                > line); // line ids are never reused
        const QString secondPath = QStringLiteral("/orders/%1/line_items/%2.json")
                                           .arg(orderId)
                                           .arg(second.object().value("line_item_id").toInteger());
        // a real DELETE carries the token in its body too
        QCOMPARE(m_phone->send("DELETE",
                               secondPath + QStringLiteral("?authenticity_token=")
                                       + m_phone->token(),
                               {}, {})
                         .status,
                 403);
        QVERIFY(m_phone->send("DELETE", secondPath, StoreClient::encode(m_phone->withToken({})),
                              "application/x-www-form-urlencoded")
                        .ok());
    }

    void anOpenOrderReservesItsCoupon()
    {
        const qint64 first = orderIdOf(oneKeyOrder(*m_phone, buyableGame(40, 1000)));
        const qint64 second = orderIdOf(oneKeyOrder(*m_phone, buyableGame(40, 1000, 1)));
        QVERIFY(attach(*m_phone, first, QStringLiteral("WELCOME10")).ok());
        QCOMPARE(attach(*m_phone, second, QStringLiteral("WELCOME10")).status, 409);
        QVERIFY(m_phone->post(QStringLiteral("/orders/%1/cancel.json").arg(first),
                              m_phone->withToken({}))
                        .ok());
        QVERIFY(attach(*m_phone, second, QStringLiteral("WELCOME10")).ok());
    }

    void sandboxPaymentCompletesTheOrder()
    {
        const qint64 game = buyableGame(40, 1000);
        QVERIFY(m_phone->get(QStringLiteral("/cart/add.json"),
                             {{QStringLiteral("game_id"), QString::number(game)}})
                        .ok());
        const qint64 orderId = orderIdOf(oneKeyOrder(*m_phone, game));
        QVERIFY(attach(*m_phone, orderId, QStringLiteral("WELCOME10")).ok());

        Answer paid = pay(*m_phone, orderId);
        QVERIFY2(paid.ok(), paid.body);
        QJsonObject params = paid.object().value("params_info").toObject();
        for (const char *key :
             {"appid", "noncestr", "package", "partnerid", "prepayid", "sign", "timestamp"})
            QVERIFY2(!params.value(QLatin1String(key)).toString().isEmpty(), key);
        QCOMPARE(m_phone->get(QStringLiteral("/orders/%1/complete.json").arg(orderId))
                         .object()
                         .value("completed")
                         .toInt(),
                 0);

        // the payer gives up: nothing is paid, the order can be paid again
        QVERIFY(confirm(*m_phone, params.value("prepayid").toString(), QStringLiteral("cancel"))
                        .ok());
        QCOMPARE(m_phone->get(QStringLiteral("/orders/%1/complete.json").arg(orderId))
                         .object()
                         .value("completed")
                         .toInt(),
                 0);

        params = pay(*m_phone, orderId).object().value("params_info").toObject();
        const Answer confirmed
                = confirm(*m_phone, params.value("prepayid").toString(), QStringLiteral("success"));
        QVERIFY2(confirmed.ok(), confirmed.body);
        QCOMPARE(confirm(*m_phone, params.value("prepayid").toString(), QStringLiteral("success"))
                         .status,
                 409);

        const QJsonObject done
                = m_phone->get(QStringLiteral("/orders/%1/complete.json").arg(orderId)).object();
        QCOMPARE(done.value("completed").toInt(), 1);
        QCOMPARE(done.value("id").toInteger(), orderId);
        QCOMPARE(done.value("payment_method").toString(), QStringLiteral("微信支付"));
        QCOMPARE(done.value("subtotal").toString(),
                 checkout(*m_phone, orderId).value("order_subtotal").toString());

        bool owned = false;
        for (const QJsonValue &value :
             m_phone->get(QStringLiteral("/home/games.json")).object().value("games").toArray()) {
            const QJsonObject entry = value.toObject();
            QVERIFY(entry.contains("gameIcon") && entry.contains("productImage"));
            owned |= entry.value("gameId").toInteger() == game;
        }
        QVERIFY(owned);
        QCOMPARE(m_phone->get(QStringLiteral("/cart.json")).array().size(),
                 2); // the paid game left the cart
        QCOMPARE(m_phone->get(QStringLiteral("/cart/add.json"),
                              {{QStringLiteral("game_id"), QString::number(game)}})
                         .status,
                 409);
        const qint64 later = orderIdOf(oneKeyOrder(*m_phone, buyableGame(40, 1000, 1)));
        QCOMPARE(attach(*m_phone, later, QStringLiteral("WELCOME10")).message(),
                 QStringLiteral("该优惠码已被使用"));
        QCOMPARE(pay(*m_phone, orderId).status, 409);
    }

    void payRefusals_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<QString>("orderId");
        QTest::addColumn<bool>("withToken");
        QTest::addColumn<int>("status");
        QTest::newRow("alipay") << "alipay"
                                << "own" << true << 422;
        QTest::newRow("no order id") << "wechat"
                                     << "" << true << 422;
        QTest::newRow("garbage order id") << "wechat"
                                          << "1; DROP TABLE orders" << true << 422;
        QTest::newRow("someone else's order") << "wechat"
                                              << "other" << true << 404;
        QTest::newRow("completed order") << "wechat"
                                         << "completed" << true << 409;
        QTest::newRow("no token") << "wechat"
                                  << "own" << false << 403;
    }
    void payRefusals()
    {
        QFETCH(QString, method);
        QFETCH(QString, orderId);
        QFETCH(bool, withToken);
        QFETCH(int, status);
        const QString own = QString::number(orderIdOf(oneKeyOrder(*m_phone, buyableGame(1, 1000))));
        const QString other = QString::number(orderIdOf(oneKeyOrder(*m_mail, 50)));
        const QString id = orderId == QLatin1String("own")         ? own
                           : orderId == QLatin1String("other")     ? other
                           : orderId == QLatin1String("completed") ? QStringLiteral("1")
                                                                   : orderId;
        Form form{{QStringLiteral("payment_method"), method}, {QStringLiteral("order_id"), id}};
        const Answer answer = m_phone->post(QStringLiteral("/orders/pay.json"),
                                            withToken ? m_phone->withToken(form) : form);
        QCOMPARE(answer.status, status);
        QVERIFY(!answer.ok());
    }

    // Not a form mistake of the customer's: one sentence to show as it stands.
    void unsupportedPaymentMethodIsAnError()
    {
        const QString own = QString::number(orderIdOf(oneKeyOrder(*m_phone, buyableGame(1, 1000))));
        const Answer answer = m_phone->post(
                QStringLiteral("/orders/pay.json"),
                m_phone->withToken({{QStringLiteral("payment_method"), QStringLiteral("alipay")},
                                    {QStringLiteral("order_id"), own}}));
        QCOMPARE(answer.envelopeStatus(), QStringLiteral("error"));
        QCOMPARE(answer.message(), QStringLiteral("暂不支持该支付方式，请使用微信支付"));
    }

    void anotherUsersOrderStaysInvisibleAndUnchanged()
    {
        const qint64 orderId = orderIdOf(oneKeyOrder(*m_mail, 50));
        const QJsonObject before = checkout(*m_mail, orderId);
        QVERIFY(!before.isEmpty());
        const QString base = QStringLiteral("/orders/%1").arg(orderId);
        QList<Answer> answers{
                m_phone->get(base + QStringLiteral(".json")),
                m_phone->get(base + QStringLiteral("/checkout.json")),
                m_phone->get(base + QStringLiteral("/complete.json")),
                attach(*m_phone, orderId, QStringLiteral("WELCOME10")),
                m_phone->post(base + QStringLiteral("/cancel.json"), m_phone->withToken({})),
                pay(*m_phone, orderId)};
        for (const Answer &answer : answers) {
            QCOMPARE(answer.status, 404);
            QVERIFY(answer.message().contains(QLatin1String("NotFound")));
        }
        QCOMPARE(checkout(*m_mail, orderId), before);
    }

    void historyFiltersByState_data()
    {
        QTest::addColumn<QString>("type");
        QTest::addColumn<int>("count");
        QTest::newRow("all") << "all" << 4;
        QTest::newRow("unpaid") << "in_checkout" << 1;
        QTest::newRow("completed") << "completed" << 1;
        QTest::newRow("canceled") << "canceled" << 1;
        QTest::newRow("pending") << "pending" << 1;
    }
    void historyFiltersByState()
    {
        QFETCH(QString, type);
        QFETCH(int, count);
        const Answer answer = m_phone->get(
                QStringLiteral("/orders.json"),
                {{QStringLiteral("type"), type}, {QStringLiteral("page"), QStringLiteral("1")}});
        QVERIFY(answer.ok());
        QCOMPARE(answer.array().size(), count);
        for (const QJsonValue &value : answer.array()) {
            const QJsonObject order = value.toObject();
            for (const char *key : {"id", "subtotal", "type", "state", "created_at", "order_games"})
                QVERIFY2(order.contains(QLatin1String(key)), key);
            if (type != QLatin1String("all"))
                QCOMPARE(order.value("state").toString(), type);
            const QJsonObject game = order.value("order_games").toArray().first().toObject();
            QVERIFY(game.contains("name") && game.contains("tag") && game.contains("price"));
            QVERIFY(game.value("product_image")
                            .toString()
                            .endsWith(QStringLiteral("/pictures/covers/%1.jpg")
                                              .arg(game.value("id").toInteger())));
        }
    }

    void historyIsPagedNewestFirst()
    {
        for (int i = 0; i < 8; ++i)
            QVERIFY(!oneKeyOrder(*m_phone, buyableGame(1, 1000, i)).isEmpty());
        auto page = [&](int number) {
            return m_phone
                    ->get(QStringLiteral("/orders.json"),
                          {{QStringLiteral("type"), QStringLiteral("all")},
                           {QStringLiteral("page"), QString::number(number)}})
                    .array();
        };
        const QJsonArray first = page(1);
        QCOMPARE(first.size(), 10);
        QCOMPARE(page(2).size(), 2);
        QVERIFY(page(3).isEmpty());
        QVERIFY(first.first().toObject().value("id").toInteger()
                > first.last().toObject().value("id").toInteger());
        QCOMPARE(m_phone->get(QStringLiteral("/orders.json"),
                              {{QStringLiteral("type"), QStringLiteral("paid")}})
                         .envelopeStatus(),
                 QStringLiteral("fail"));
    }

    void onlyUnpaidOrdersCanBeCancelled()
    {
        const qint64 orderId = orderIdOf(oneKeyOrder(*m_phone, buyableGame(1, 1000)));
        const QString path = QStringLiteral("/orders/%1/cancel.json").arg(orderId);
        QVERIFY(m_phone->post(path, m_phone->withToken({})).ok());
        QCOMPARE(checkout(*m_phone, orderId).value("state").toString(), QStringLiteral("canceled"));
        QCOMPARE(m_phone->post(path, m_phone->withToken({})).status, 409);
        QCOMPARE(m_phone->post(QStringLiteral("/orders/1/cancel.json"), m_phone->withToken({}))
                         .status,
                 409);
        QCOMPARE(m_phone->post(path, {}).status, 403);
    }
};

TARVEL_TEST_MAIN(TestShop)
#include "tst_shop.moc"
