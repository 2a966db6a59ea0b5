// The purchase road against tarvel-store on loopback, through the app's own controllers (headless,
// as the screens run them) and, in the same run and interleaved, the same requests sent back to
// back by a bare QNetworkAccessManager sharing the app's cookie store (the floor):
//  - submit: from the tap on the cart's submit button to the order screen holding its amounts
//    (POST /cart/submit.json, GET /orders/<id>.json);
//  - paid: from the confirmation in the WeChat sandbox to the purchase result on top of the stack
//    (POST /sandbox/wechat/confirm, the answer through the app's URL entry, GET
//    /orders/<id>/complete.json).
// Both sides are checked to have done the same work (an order of one game with its amounts; a
// completed order). Medians of 10 and the ratio to the floor are printed; nothing is asserted.
#include "InProcessStore.h"

#include "app/AppDelegate.h"
#include "platform/HTTPCookieStorage.h"
#include "platform/kits/WeChatPayPrompt.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/Window.h"
#include "screens/purchase/BuySuccessViewController.h"
#include "screens/purchase/ConfirmOrderViewController.h"
#include "screens/purchase/TabThreeViewController.h"
#include "service/NetWorkHelper.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QTemporaryDir>
#include <QTest>
#include <QUrlQuery>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

namespace {

constexpr int Runs = 10;
constexpr int TimeoutMs = 20000;

struct Answer
{
    bool ok = false;
    QVariant data;
};

// Runs one NetWorkHelper operation to its end.
template<class Operation>
Answer waitFor(Operation operation)
{
    auto answer = std::make_shared<std::optional<Answer>>();
    operation(
            [answer](const QVariant &data, const QVariant &) {
                *answer = Answer{true, data};
            },
            [answer](const QVariant &, const QString &, const QVariant &) {
                *answer = Answer{false, {}};
            });
    if (!QTest::qWaitFor([answer] { return answer->has_value(); }, TimeoutMs))
        return Answer{};
    return answer->value_or(Answer{});
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.empty() ? -1 : values[values.size() / 2];
}

// The floor: a bare QNetworkAccessManager on the app's cookie store.
class Floor
{
public:
    Floor(const QString &base, const QString &token)
        : m_base(base)
        , m_token(token)
    {
        platform::HTTPCookieStorage::attachTo(&m_network);
    }

    QVariantMap get(const QString &path, const QUrlQuery &query = {})
    {
        QUrl url(m_base + path);
        url.setQuery(query);
        return finish(m_network.get(QNetworkRequest(url)));
    }
    QVariantMap post(const QString &path, QUrlQuery form, bool withToken = true)
    {
        if (withToken)
            form.addQueryItem(QStringLiteral("authenticity_token"), m_token);
        QNetworkRequest request{QUrl(m_base + path)};
        request.setHeader(QNetworkRequest::ContentTypeHeader,
                          QByteArrayLiteral("application/x-www-form-urlencoded"));
        return finish(m_network.post(request, form.toString(QUrl::FullyEncoded).toUtf8()));
    }

private:
    QVariantMap finish(QNetworkReply *reply)
    {
        if (!QTest::qWaitFor([reply] { return reply->isFinished(); }, TimeoutMs))
            reply->abort();
        const QVariantMap envelope = QJsonDocument::fromJson(reply->readAll()).toVariant().toMap();
        reply->deleteLater();
        return envelope;
    }

    QString m_base;
    QString m_token;
    QNetworkAccessManager m_network;
};

QVariantMap dataOf(const QVariantMap &envelope)
{
    return envelope.value(QStringLiteral("data")).toMap();
}

class PurchaseBench
{
public:
    PurchaseBench(const QString &base, const QString &token)
        : m_floor(base, token)
    {
        m_navigation = new platform::NavigationController(new platform::ViewController);
        m_window.setRootViewController(m_navigation);
        m_window.makeKeyAndVisible();
    }

    // Ids the user may buy: not owned, not blocked, not bought by this run yet.
    QString nextGame()
    {
        for (; m_nextGame < 400; ++m_nextGame) {
            const QString id = QString::number(m_nextGame);
            const QVariantMap made
                    = m_floor.post(QStringLiteral("/orders.json"), QUrlQuery{{"game_id", id}});
            if (made.value(QStringLiteral("status")) != QLatin1String("success"))
                continue;
            // Only a probe: the order is cancelled at once.
            m_floor.post(QStringLiteral("/orders/%1/cancel.json")
                                 .arg(dataOf(made).value(QStringLiteral("order_id")).toString()),
                         {});
            ++m_nextGame;
            return id;
        }
        return {};
    }

    // App: cart with the game ticked, tap submit, until the order screen holds its amounts.
    std::optional<double> appSubmit(const QString &game)
    {
        waitFor([&](auto ok, auto failed) {
            NetWorkHelper::shareInstance()->addGoodsToCartWithGameIds(game, {}, {}, ok, failed);
        });
        auto *cart = new TabThreeViewController(TabThreeViewController::FatherPushed);
        m_navigation->pushViewController(cart, false);
        int row = -1;
        const bool listed = QTest::qWaitFor(
                [&] {
                    const QList<Object_CartList> lines = cart->arraySource();
                    for (int i = 0; i < lines.size(); ++i)
                        row = lines.at(i).id == game ? i : row;
                    return row >= 0;
                },
                TimeoutMs);
        if (!listed)
            return std::nullopt;
        cart->didSelectRowAtIndex(row);
        QElapsedTimer timer;
        timer.start();
        cart->bottomView()->buttonClearing()->tap();
        auto *order = qobject_cast<ConfirmOrderViewController *>(m_navigation->topViewController());
        const bool loaded
                = order && QTest::qWaitFor([order] { return order->isOrderLoaded(); }, TimeoutMs);
        const double ms = timer.nsecsElapsed() / 1e6;
        const bool same = loaded && order->sourceModel().order_games.size() == 1
                          && !order->footerView()->labelGoodsPrice()->text().isEmpty()
                          && !order->viewPay()->labelPrice()->text().isEmpty();
        m_navigation->popToRootViewController(false);
        if (!same)
            return std::nullopt;
        return ms;
    }

    // Floor: the same two requests, back to back.
    std::optional<double> floorSubmit(const QString &game)
    {
        m_floor.get(QStringLiteral("/cart/add.json"), QUrlQuery{{"game_id", game}});
        QElapsedTimer timer;
        timer.start();
        const QVariantMap made = m_floor.post(QStringLiteral("/cart/submit.json"),
                                              QUrlQuery{{"game_ids[]", game}});
        const QString url = dataOf(made).value(QStringLiteral("url")).toString();
        const QVariantMap order
                = dataOf(m_floor.get(url + QStringLiteral(".json"), QUrlQuery{{"from", "ios"}}));
        const double ms = timer.nsecsElapsed() / 1e6;
        if (order.value(QStringLiteral("order_games")).toList().size() != 1
            || order.value(QStringLiteral("order_subtotal")).toString().isEmpty())
            return std::nullopt;
        return ms;
    }

    // App: the order screen with its WeChat sheet up; from the confirmation to the result.
    std::optional<double> appPaid(const QString &game)
    {
        auto *order
                = new ConfirmOrderViewController({game}, ConfirmOrderViewController::BuyDirectly);
        m_navigation->pushViewController(order, false);
        if (!QTest::qWaitFor([order] { return order->isOrderLoaded(); }, TimeoutMs))
            return std::nullopt;
        order->viewPay()->buttonPay()->tap();
        auto &prompt = platform::WeChatPayPrompt::shared();
        if (!QTest::qWaitFor([&prompt] { return prompt.canConfirm(); }, TimeoutMs))
            return std::nullopt;
        QElapsedTimer timer;
        timer.start();
        prompt.confirm();
        BuySuccessViewController *result = nullptr;
        const bool shown = QTest::qWaitFor(
                [&] {
                    result = qobject_cast<BuySuccessViewController *>(
                            m_navigation->topViewController());
                    return result != nullptr;
                },
                TimeoutMs);
        const double ms = timer.nsecsElapsed() / 1e6;
        const bool same
                = shown && result->sourceModel().value(QStringLiteral("completed")).toInt() == 1;
        m_navigation->popToRootViewController(false);
        if (!same)
            return std::nullopt;
        return ms;
    }

    // Floor: an order with its prepay (untimed), then the confirmation and the completion check.
    std::optional<double> floorPaid(const QString &game)
    {
        const QString orderId
                = dataOf(m_floor.post(QStringLiteral("/orders.json"), QUrlQuery{{"game_id", game}}))
                          .value(QStringLiteral("order_id"))
                          .toString();
        const QString prepay = dataOf(m_floor.post(QStringLiteral("/orders/pay.json"),
                                                   QUrlQuery{{"from", "ios"},
                                                             {"payment_method", "wechat"},
                                                             {"order_id", orderId},
                                                             {"openID", "bench"}}))
                                       .value(QStringLiteral("params_info"))
                                       .toMap()
                                       .value(QStringLiteral("prepayid"))
                                       .toString();
        QElapsedTimer timer;
        timer.start();
        m_floor.post(QStringLiteral("/sandbox/wechat/confirm"),
                     QUrlQuery{{"prepayid", prepay}, {"result", "success"}}, false);
        const QVariantMap done
                = dataOf(m_floor.get(QStringLiteral("/orders/%1/complete.json").arg(orderId)));
        const double ms = timer.nsecsElapsed() / 1e6;
        if (done.value(QStringLiteral("completed")).toInt() != 1)
            return std::nullopt;
        return ms;
    }

private:
    Floor m_floor;
    platform::Window m_window;
    platform::NavigationController *m_navigation = nullptr;
    int m_nextGame = 2;
};

void report(const char *step, const std::vector<double> &app, const std::vector<double> &floor)
{
    const double a = median(app);
    const double f = median(floor);
    std::printf("%-10s app median %7.2f ms   floor median %7.2f ms   ratio %.2f   goal: within "
                "1.5x   (%zu / %zu runs)\n",
                step, a, f, f > 0 ? a / f : 0.0, app.size(), floor.size());
}

} // namespace

int main(int argc, char *argv[])
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QTemporaryDir home;
    qputenv("TARVEL_HOME", home.path().toUtf8());
    QGuiApplication application(argc, argv);
    StoreOptions options;
    options.requestLog = nullptr;
    options.outboxLog = nullptr;
    tarvel::test::InProcessStore store(options);
    if (!store.isRunning()) {
        std::printf("bench_purchase: tarvel-store did not start\n");
        return 1;
    }
    qputenv("TARVEL_API_BASE_URL", store.baseUrl().toUtf8());
    platform::Hud::shared().setAutoDismissInterval(60 * 60 * 1000);
    AppDelegate *app = AppDelegate::shared();
    app->initWithShareSDK();
    const Answer signedIn = waitFor([](auto ok, auto failed) {
        NetWorkHelper::shareInstance()->signInWithAccountEmail(
                QStringLiteral("13800138000"), QStringLiteral("tarvel2024"), {}, {}, ok, failed);
    });
    const auto user = JSONModel::initWithDictionary<Object_User>(signedIn.data);
    if (!signedIn.ok || !user) {
        std::printf("bench_purchase: sign-in failed\n");
        return 1;
    }
    app->setUserLogin(user);

    std::printf("purchase road against tarvel-store at %s, %d runs each, interleaved with the "
                "bare-QNetworkAccessManager floor\n",
                qPrintable(store.baseUrl()), Runs);
    PurchaseBench bench(store.baseUrl(), user->token);
    std::vector<double> appSubmit, floorSubmit, appPaid, floorPaid;
    for (int run = 0; run < Runs; ++run) {
        const QString game = bench.nextGame();
        if (const auto ms = bench.appSubmit(game))
            appSubmit.push_back(*ms);
        if (const auto ms = bench.floorSubmit(game))
            floorSubmit.push_back(*ms);
        if (const auto ms = bench.appPaid(bench.nextGame()))
            appPaid.push_back(*ms);
        if (const auto ms = bench.floorPaid(bench.nextGame()))
            floorPaid.push_back(*ms);
        std::printf("  run %2d: submit app %.2f / floor %.2f ms, paid app %.2f / floor %.2f ms\n",
                    run + 1, appSubmit.empty() ? -1 : appSubmit.back(),
                    floorSubmit.empty() ? -1 : floorSubmit.back(),
                    appPaid.empty() ? -1 : appPaid.back(),
                    floorPaid.empty() ? -1 : floorPaid.back());
        std::fflush(stdout);
    }
    report("submit", appSubmit, floorSubmit);
    report("paid", appPaid, floorPaid);
    if (appSubmit.size() != floorSubmit.size() || appPaid.size() != floorPaid.size())
        std::printf("note: some runs did not do the same work on both sides and were left out\n");
    return 0;
}
