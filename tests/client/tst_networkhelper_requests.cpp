// What each NetWorkHelper operation puts on the wire: verb, path, query, form fields in order,
// the token rule and the cookies of the shared store.
#include "tst_networkhelper_support.h"

#include "TestEnvironment.h"
#include "platform/UserDefaults.h"

using namespace tarvel::test;

namespace {

// The dictionary StartFn should see for the fields sent ("game_ids[]" pairs form one list).
QVariantMap expectedStartParams(const QStringList &fields)
{
    QVariantMap params;
    for (const QString &field : fields) {
        const qsizetype equals = field.indexOf(QLatin1Char('='));
        QString key = field.left(equals);
        const QString value = field.mid(equals + 1);
        if (key.endsWith(QLatin1String("[]"))) {
            key.chop(2);
            params.insert(key, params.value(key).toStringList() << value);
        } else {
            params.insert(key, value);
        }
    }
    return params;
}

const QString Tricky = QStringLiteral("a+b&c=d%41 中文#?/[x]");

} // namespace

class TestNetWorkHelperRequests : public QObject
{
    Q_OBJECT

private:
    PlainApplicationState state;

private slots:
    void initTestCase()
    {
        ApplicationState::install(&state);
        platform::UserDefaults::standard().setObject(false, QStringLiteral("isCountdown"));
    }
    void init()
    {
        clearSharedCookies();
        state.setUserLogin(userWithToken(QStringLiteral("tok")));
    }
    void cleanupTestCase() { ApplicationState::install(nullptr); }

    void sendsTheRequestOfEachOperation_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QByteArray>("method");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QStringList>("query");
        QTest::addColumn<QStringList>("fields");

        const QStringList none;
        // Account and profile
        QTest::newRow("sign in") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->signInWithAccountEmail("13800138000", Tricky, r.start(), r.end(), r.success(),
                                      r.failure());
        }) << QByteArray("POST") << "/sign_in.json"
                                 << none
                                 << QStringList{"account[login_name]=13800138000",
                                                "account[password]=" + Tricky};
        QTest::newRow("sign in without password")
                << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
                       h->signInWithAccountEmail("a@b.cn", QString(), r.start(), r.end(),
                                                 r.success(), r.failure());
                   })
                << QByteArray("POST") << "/sign_in.json" << none
                << QStringList{"account[login_name]=a@b.cn"};
        QTest::newRow("register by e-mail ignores the phone token")
                << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
                       h->registerWithLogin_name("a.b-c@mail.example.cn", "pending", "pw1", "pw2",
                                                 "cap", r.start(), r.end(), r.success(),
                                                 r.failure());
                   })
                << QByteArray("POST") << "/sign_up.json" << none
                << QStringList{"account[email]=a.b-c@mail.example.cn", "account[captcha]=cap",
                               "account[password]=pw1", "account[password_confirmation]=pw2"};
        QTest::newRow("register by phone")
                << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
                       h->registerWithLogin_name("13800138000", "pending", "pw1", "pw2", "cap",
                                                 r.start(), r.end(), r.success(), r.failure());
                   })
                << QByteArray("POST") << "/sign_up.json" << none
                << QStringList{"account[phone_number]=13800138000",
                               "account[pending_phone_number_token]=pending",
                               "account[captcha]=cap", "account[password]=pw1",
                               "account[password_confirmation]=pw2"};
        QTest::newRow("sms code") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->getAuthCodeWithPhone_number("13800138000", "cap", r.start(), r.end(), r.success(),
                                           r.failure());
        }) << QByteArray("POST") << "/phone_number_tokens.json"
                                  << none
                                  << QStringList{"authenticity_token=tok",
                                                 "phone_number=13800138000", "captcha=cap"};
        QTest::newRow("sms code without captcha")
                << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
                       h->getAuthCodeWithPhone_number("13800138000", QString(), r.start(), r.end(),
                                                      r.success(), r.failure());
                   })
                << QByteArray("POST") << "/phone_number_tokens.json" << none
                << QStringList{"authenticity_token=tok", "phone_number=13800138000", "captcha="};
        const auto forgotCode = [](const char *isUnlock) {
            return Operation([isUnlock](NetWorkHelper *h, CallbackRecorder &r) {
                h->getAuthCodeForForgetPasswordWithPhone_number(
                        "13800138000", "", isUnlock, r.start(), r.end(), r.success(), r.failure());
            });
        };
        const QStringList forgotFields{"authenticity_token=tok", "phone_number=13800138000",
                                       "captcha="};
        QTest::newRow("password sms code") << forgotCode("0") << QByteArray("POST")
                                           << "/password/token.json" << none << forgotFields;
        QTest::newRow("unlock sms code") << forgotCode("1") << QByteArray("POST")
                                         << "/unlock/token.json" << none << forgotFields;
        QTest::newRow("any other isUnlock unlocks") << forgotCode("yes") << QByteArray("POST")
                                                    << "/unlock/token.json" << none << forgotFields;
        QTest::newRow("new password by phone")
                << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
                       h->findPswWithphone_number("13800138000", "cap", "pending", "pw1", "pw2",
                                                  r.start(), r.end(), r.success(), r.failure());
                   })
                << QByteArray("POST") << "/password.json" << none
                << QStringList{"account[phone_number]=13800138000", "account[captcha]=cap",
                               "account[pending_phone_number_token]=pending",
                               "account[password]=pw1", "account[password_confirmation]=pw2"};
        QTest::newRow("unlock by phone")
                << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
                       h->unlockPswWithphone_number("13800138000", "cap", "pending", r.start(),
                                                    r.end(), r.success(), r.failure());
                   })
                << QByteArray("POST") << "/unlock.json" << none
                << QStringList{"account[phone_number]=13800138000", "account[captcha]=cap",
                               "account[pending_phone_number_token]="
                               "pending"};
        const auto byEmail = [](const char *isUnlock) {
            return Operation([isUnlock](NetWorkHelper *h, CallbackRecorder &r) {
                h->findPswWithemail("a@b.cn", "cap", isUnlock, r.start(), r.end(), r.success(),
                                    r.failure());
            });
        };
        const QStringList emailFields{"account[email]=a@b.cn", "account[captcha]=cap"};
        QTest::newRow("password by e-mail")
                << byEmail("0") << QByteArray("POST") << "/password.json" << none << emailFields;
        QTest::newRow("unlock by e-mail")
                << byEmail("1") << QByteArray("POST") << "/unlock.json" << none << emailFields;
        const QStringList mobileFields{
                "authenticity_token=tok", "account[phone_number]=13800138000",
                "account[pending_phone_number_token]=pending", "account[current_password]=old"};
        QTest::newRow("check phone") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->checkingMobileWithPhone_number("13800138000", "pending", "old", r.start(), r.end(),
                                              r.success(), r.failure());
        }) << QByteArray("POST") << "/setting/check_phone_number.json"
                                     << none << mobileFields;
        QTest::newRow("bind phone") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->bindingMobileWithPhone_number("13800138000", "pending", "old", r.start(), r.end(),
                                             r.success(), r.failure());
        }) << QByteArray("PUT") << "/setting/phone_number.json"
                                    << none << mobileFields;
        QTest::newRow("bind e-mail") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->bindingEmailWithEmail("a@b.cn", "old", r.start(), r.end(), r.success(), r.failure());
        }) << QByteArray("PUT") << "/setting/email.json"
                                     << none
                                     << QStringList{"authenticity_token=tok",
                                                    "account[email]=a@b.cn",
                                                    "account[current_password]=old"};
        QTest::newRow("change password")
                << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
                       h->modifyPasswordWithOldPass("old", "new", "new2", r.start(), r.end(),
                                                    r.success(), r.failure());
                   })
                << QByteArray("PUT") << "/setting/password.json" << none
                << QStringList{"authenticity_token=tok", "account[current_password]=old",
                               "account[password]=new", "account[password_confirmation]=new2"};
        QTest::newRow("user info") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->getUserInfoWithStartFn(r.start(), r.end(), r.success(), r.failure());
        }) << QByteArray("GET") << "/setting/info.json"
                                   << none << none;
        QTest::newRow("change profile")
                << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
                       h->modifyUserInfoWithNick_name("小明", "1", "http://img/a.jpg", r.start(),
                                                      r.end(), r.success(), r.failure());
                   })
                << QByteArray("PUT") << "/setting/info.json" << none
                << QStringList{"authenticity_token=tok", "account[nick_name]=小明",
                               "account[gender]=1", "account[avatar]=http://img/a.jpg"};

        // Catalogue
        QTest::newRow("home page") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->getHomepageDataWithStartFn(r.start(), r.end(), r.success(), r.failure());
        }) << QByteArray("GET") << "/store.json"
                                   << none << none;
        QTest::newRow("game list") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->getGameListWithType("latest", "2", r.start(), r.end(), r.success(), r.failure());
        }) << QByteArray("GET") << "/products.json"
                                   << QStringList{"type=latest", "page=2"} << none;
        QTest::newRow("game list without type") << Operation([](NetWorkHelper *h,
                                                                CallbackRecorder &r) {
            h->getGameListWithType(QString(), "1", r.start(), r.end(), r.success(), r.failure());
        }) << QByteArray("GET") << "/products.json"
                                                << QStringList{"page=1"} << none;
        QTest::newRow("game detail") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->getGameDetailWithGameId("42", "1", r.start(), r.end(), r.success(), r.failure());
        }) << QByteArray("GET") << "/products/42.json"
                                     << QStringList{"verbose=1"} << none;
        QTest::newRow("game id inserted as it stands")
                << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
                       h->getGameDetailWithGameId("半条命 2", "1", r.start(), r.end(), r.success(),
                                                  r.failure());
                   })
                << QByteArray("GET") << "/products/半条命 2.json" << QStringList{"verbose=1"}
                << none;
        QTest::newRow("search") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->searchGameWithQ(Tricky, "3", r.start(), r.end(), r.success(), r.failure());
        }) << QByteArray("GET") << "/store/search.json"
                                << QStringList{"q=" + Tricky, "page=3"} << none;

        // Cart, order and payment
        QTest::newRow("cart") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->getCartDataWithStartFn(r.start(), r.end(), r.success(), r.failure());
        }) << QByteArray("GET")
                              << "/cart.json" << none << none;
        QTest::newRow("remove from cart") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->removeGoodsFromCartWithGameIds("7", r.start(), r.end(), r.success(), r.failure());
        }) << QByteArray("POST") << "/cart/remove.json"
                                          << none
                                          << QStringList{"authenticity_token=tok", "game_ids=7"};
        QTest::newRow("add to cart") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->addGoodsToCartWithGameIds("7", r.start(), r.end(), r.success(), r.failure());
        }) << QByteArray("GET") << "/cart/add.json"
                                     << QStringList{"game_id=7"} << none;
        QTest::newRow("submit cart")
                << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
                       h->createOrderFromCartWithGameids({"7", "9"}, r.start(), r.end(),
                                                         r.success(), r.failure());
                   })
                << QByteArray("POST") << "/cart/submit.json" << none
                << QStringList{"authenticity_token=tok", "game_ids[]=7", "game_ids[]=9"};
        QTest::newRow("order one game") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->createOrderOneKeyWithGameId("7", r.start(), r.end(), r.success(), r.failure());
        }) << QByteArray("POST") << "/orders.json"
                                        << none
                                        << QStringList{"authenticity_token=tok", "game_id=7"};
        QTest::newRow("order detail") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->getOrderDetailWithOrderUrl("/orders/12", r.start(), r.end(), r.success(),
                                          r.failure());
        }) << QByteArray("GET") << "/orders/12.json"
                                      << QStringList{"from=ios"} << none;
        QTest::newRow("order checkout") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->getOrderDetailWithOrderUrl("/orders/12/checkout", r.start(), r.end(), r.success(),
                                          r.failure());
        }) << QByteArray("GET") << "/orders/12/checkout.json"
                                        << QStringList{"from=ios"} << none;
        QTest::newRow("payment parameters")
                << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
                       h->getThirdPaymentDataWithPaymentMethod("wxpay", "12", "oX9", r.start(),
                                                               r.end(), r.success(), r.failure());
                   })
                << QByteArray("POST") << "/orders/pay.json" << none
                << QStringList{"authenticity_token=tok", "from=ios", "payment_method=wxpay",
                               "order_id=12", "openID=oX9"};
        QTest::newRow("attach coupon")
                << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
                       h->useCouponWithItem_type("coupon", "ABC-1", "12", r.start(), r.end(),
                                                 r.success(), r.failure());
                   })
                << QByteArray("POST") << "/orders/12/line_items.json" << none
                << QStringList{"authenticity_token=tok", "item_type=coupon", "code=ABC-1"};
        QTest::newRow("detach coupon is a POST")
                << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
                       h->deleteCouponWithOrder_id("12", "5", "delete", r.start(), r.end(),
                                                   r.success(), r.failure());
                   })
                << QByteArray("POST") << "/orders/12/line_items/5.json" << none
                << QStringList{"authenticity_token=tok", "_method=delete"};
        QTest::newRow("order paid?") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->queryOrderWithOrder_id("12", r.start(), r.end(), r.success(), r.failure());
        }) << QByteArray("GET") << "/orders/12/complete.json"
                                     << none << none;
        QTest::newRow("order history") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->getMyOrderListWithType("completed", "1", r.start(), r.end(), r.success(),
                                      r.failure());
        }) << QByteArray("GET") << "/orders.json"
                                       << QStringList{"type=completed", "page=1"} << none;
        QTest::newRow("cancel order") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->cancleMyOrderListWithOrderID("12", r.start(), r.end(), r.success(), r.failure());
        }) << QByteArray("POST") << "/orders/12/cancel.json"
                                      << none << QStringList{"authenticity_token=tok"};
        QTest::newRow("my games") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->getMyGamesWithStartFn(r.start(), r.end(), r.success(), r.failure());
        }) << QByteArray("GET") << "/home/games.json"
                                  << none << none;
    }

    void sendsTheRequestOfEachOperation()
    {
        QFETCH(Operation, operation);
        QFETCH(QByteArray, method);
        QFETCH(QString, path);
        QFETCH(QStringList, query);
        QFETCH(QStringList, fields);
        ScriptedStore store;
        QVERIFY(store.isListening());
        store.server.setFallback(ScriptedResponse::json("{\"status\":\"success\",\"data\":{}}"));

        CallbackRecorder recorder(&store.server);
        callWith(operation, recorder);
        QVERIFY(recorder.waitForEnd());
        QCOMPARE(recorder.order, (QStringList{"start", "end", "success"}));
        QCOMPARE(store.server.requestCount(), 1);

        const RecordedRequest request = store.server.lastRequest();
        QCOMPARE(request.method, method);
        QCOMPARE(request.path, path);
        QCOMPARE(queryTexts(request), query);
        QCOMPARE(formTexts(request), fields);
        if (method != "GET")
            QVERIFY(request.header("Content-Type").startsWith("application/x-www-form-urlencoded"));
        QCOMPARE(recorder.startParams, expectedStartParams(method == "GET" ? query : fields));
    }

    // The catalogue's list, detail and search operations send the dictionary StartFn was given,
    // with whatever StartFn added or changed in it.
    void sendsWhatStartFnAdds_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QStringList>("query");

        const MutableStartFn addChannel = [](QVariantMap &params) {
            params.insert(QStringLiteral("channel"), QStringLiteral("app"));
        };
        QTest::newRow("game list") << Operation([addChannel](NetWorkHelper *h,
                                                             CallbackRecorder &r) {
            h->getGameListWithType("latest", "2", addChannel, r.end(), r.success(), r.failure());
        }) << "/products.json" << QStringList{"type=latest", "page=2", "channel=app"};
        QTest::newRow("game detail") << Operation([addChannel](NetWorkHelper *h,
                                                               CallbackRecorder &r) {
            h->getGameDetailWithGameId("42", "1", addChannel, r.end(), r.success(), r.failure());
        }) << "/products/42.json" << QStringList{"verbose=1", "channel=app"};
        QTest::newRow("search") << Operation([addChannel](NetWorkHelper *h, CallbackRecorder &r) {
            h->searchGameWithQ("星露谷", "3", addChannel, r.end(), r.success(), r.failure());
        }) << "/store/search.json"
                                << QStringList{"q=星露谷", "page=3", "channel=app"};
        QTest::newRow("a changed value stays in its place") << Operation([](NetWorkHelper *h,
                                                                            CallbackRecorder &r) {
            h->searchGameWithQ(
                    "星露谷", "3", [](QVariantMap &params) { params[QStringLiteral("page")] = 5; },
                    r.end(), r.success(), r.failure());
        }) << "/store/search.json" << QStringList{"q=星露谷", "page=5"};
    }

    void sendsWhatStartFnAdds()
    {
        QFETCH(Operation, operation);
        QFETCH(QString, path);
        QFETCH(QStringList, query);
        ScriptedStore store;
        QVERIFY(store.isListening());
        store.server.setFallback(ScriptedResponse::json("{\"status\":\"success\",\"data\":{}}"));

        CallbackRecorder recorder(&store.server);
        callWith(operation, recorder);
        QVERIFY(recorder.waitForEnd());
        QCOMPARE(store.server.requestCount(), 1);
        QCOMPARE(store.server.lastRequest().path, path);
        QCOMPARE(queryTexts(store.server.lastRequest()), query);
    }

    void sendsTheTokenByItsRule_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QString>("rule"); // "always", "if set" or "no"

        QTest::newRow("sign in") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->signInWithAccountEmail("a@b.cn", "pw", r.start(), r.end(), r.success(), r.failure());
        }) << "no";
        QTest::newRow("register") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->registerWithLogin_name("a@b.cn", "", "pw", "pw", "c", r.start(), r.end(),
                                      r.success(), r.failure());
        }) << "no";
        QTest::newRow("sms code") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->getAuthCodeWithPhone_number("13800138000", "", r.start(), r.end(), r.success(),
                                           r.failure());
        }) << "if set";
        QTest::newRow("recovery sms code") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->getAuthCodeForForgetPasswordWithPhone_number("13800138000", "", "0", r.start(),
                                                            r.end(), r.success(), r.failure());
        }) << "if set";
        QTest::newRow("new password by phone")
                << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
                       h->findPswWithphone_number("1", "c", "p", "pw", "pw", r.start(), r.end(),
                                                  r.success(), r.failure());
                   })
                << "no";
        QTest::newRow("password by e-mail") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->findPswWithemail("a@b.cn", "c", "0", r.start(), r.end(), r.success(), r.failure());
        }) << "no";
        QTest::newRow("bind phone (PUT)") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->bindingMobileWithPhone_number("1", "p", "pw", r.start(), r.end(), r.success(),
                                             r.failure());
        }) << "always";
        QTest::newRow("change profile (PUT)")
                << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
                       h->modifyUserInfoWithNick_name("n", "0", "a", r.start(), r.end(),
                                                      r.success(), r.failure());
                   })
                << "always";
        QTest::newRow("remove from cart") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->removeGoodsFromCartWithGameIds("7", r.start(), r.end(), r.success(), r.failure());
        }) << "always";
        QTest::newRow("cancel order") << Operation([](NetWorkHelper *h, CallbackRecorder &r) {
            h->cancleMyOrderListWithOrderID("12", r.start(), r.end(), r.success(), r.failure());
        }) << "always";
    }

    // Signed in with a token, signed in with an empty token, signed out.
    void sendsTheTokenByItsRule()
    {
        QFETCH(Operation, operation);
        QFETCH(QString, rule);
        ScriptedStore store;
        QVERIFY(store.isListening());
        store.server.setFallback(ScriptedResponse::json("{\"status\":\"success\"}"));

        const QList<std::optional<Object_User>> users{userWithToken("t+k/="), userWithToken(""),
                                                      std::nullopt};
        const QStringList expectedTokens{
                rule == "no" ? QString() : "t+k/=", rule == "always" ? "" : QString(), QString()};
        for (qsizetype i = 0; i < users.size(); ++i) {
            state.setUserLogin(users[i]);
            CallbackRecorder recorder;
            callWith(operation, recorder);
            QVERIFY(recorder.waitForEnd());
            bool sent = false;
            QString token;
            for (const auto &[key, value] : store.server.lastRequest().formFields()) {
                if (key == QLatin1String("authenticity_token")) {
                    sent = true;
                    token = value;
                }
            }
            QCOMPARE(sent, !expectedTokens[i].isNull());
            if (sent)
                QCOMPARE(token, expectedTokens[i]);
        }
    }

    // The token is read when the request is built, not remembered from an earlier one.
    void readsTheTokenAtEachRequest()
    {
        ScriptedStore store;
        QVERIFY(store.isListening());
        store.server.setFallback(ScriptedResponse::json("{\"status\":\"success\"}"));
        for (const char *token : {"first", "second"}) {
            state.setUserLogin(userWithToken(token));
            CallbackRecorder recorder;
            NetWorkHelper::shareInstance()->cancleMyOrderListWithOrderID("1", {}, recorder.end(),
                                                                         {}, recorder.failure());
            QVERIFY(recorder.waitForEnd());
            QCOMPARE(store.server.lastRequest().formValue("authenticity_token"), token);
        }
    }

    void keepsCookiesInTheSharedStore()
    {
        ScriptedStore store;
        QVERIFY(store.isListening());
        store.server.enqueue(ScriptedResponse::json("{\"status\":\"success\",\"data\":{}}")
                                     .withHeader("Set-Cookie", "_session=abc; path=/; HttpOnly")
                                     .withHeader("Set-Cookie", "cart_num=3; path=/"));
        store.server.setFallback(ScriptedResponse::json("{\"status\":\"success\",\"data\":[]}"));
        auto *helper = NetWorkHelper::shareInstance();

        CallbackRecorder signIn;
        helper->signInWithAccountEmail("a@b.cn", "pw", {}, signIn.end(), {}, signIn.failure());
        QVERIFY(signIn.waitForEnd());
        const auto stored = platform::HTTPCookieStorage::shared()->cookiesForURL(
                QUrl(store.server.baseUrl() + "/cart/add.json"));
        QStringList names;
        for (const QNetworkCookie &cookie : stored)
            names.append(QString::fromLatin1(cookie.name() + '=' + cookie.value()));
        names.sort();
        QCOMPARE(names, (QStringList{"_session=abc", "cart_num=3"}));

        CallbackRecorder cart;
        helper->getCartDataWithStartFn({}, cart.end(), {}, cart.failure());
        QVERIFY(cart.waitForEnd());
        auto sent = store.server.lastRequest().cookies();
        std::sort(sent.begin(), sent.end());
        QCOMPARE(sent, (QList<std::pair<QByteArray, QByteArray>>{{"_session", "abc"},
                                                                 {"cart_num", "3"}}));
    }
};

TARVEL_TEST_MAIN(TestNetWorkHelperRequests)
#include "tst_networkhelper_requests.moc"
