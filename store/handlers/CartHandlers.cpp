#include "StoreContext.h"
#include "handlers/Handlers.h"
#include "handlers/ShopRules.h"
#include "http/ApiError.h"
#include "http/Exchange.h"
#include "shop/Cart.h"
#include "shop/Orders.h"

#include <QJsonArray>

// The cart and the owned games. Every answer that may change the cart refreshes "cart_num".
namespace {

QJsonArray cartLines(Exchange &exchange, const QList<qint64> &productIds)
{
    QJsonArray lines;
    for (qint64 id : productIds) {
        if (const Product *product = exchange.store().catalog().find(id))
            lines.append(exchange.store().catalog().cartLine(*product, exchange.baseUrl()));
    }
    return lines;
}

// GET /cart.json
void cart(Exchange &exchange)
{
    const Session &session = exchange.requireSignedIn();
    const QList<qint64> ids = exchange.store().database().read(
            [&](SQLite::Database &db) { return Cart::productIds(db, session.accountId); });
    exchange.refreshCartCookie(session.accountId);
    exchange.success(cartLines(exchange, ids));
}

// GET /cart/add.json?game_id=
void add(Exchange &exchange)
{
    const Session &session = exchange.requireSignedIn();
    const Product *product = ShopRules::productsOf(exchange, exchange.fieldList("game_id"),
                                                   QStringLiteral("game_id"))
                                     .first();
    exchange.store().database().write([&](SQLite::Database &db) {
        ShopRules::requirePurchasable(db, session.accountId, *product);
        Cart::add(db, session.accountId, product->id, exchange.now());
    });
    exchange.refreshCartCookie(session.accountId);
    exchange.success(exchange.store().catalog().cartLine(*product, exchange.baseUrl()));
}

// POST /cart/remove.json
void removeLines(Exchange &exchange)
{
    const Session &session = exchange.requireToken();
    QList<qint64> ids;
    for (const Product *product : ShopRules::productsOf(exchange, exchange.fieldList("game_ids"),
                                                        QStringLiteral("game_ids")))
        ids.append(product->id);
    exchange.store().database().write(
            [&](SQLite::Database &db) { Cart::remove(db, session.accountId, ids); });
    exchange.refreshCartCookie(session.accountId);
    exchange.success(QJsonObject{});
}

// POST /cart/submit.json: an order of the chosen cart lines, which leave the cart.
void submit(Exchange &exchange)
{
    const Session &session = exchange.requireToken();
    const QList<const Product *> products = ShopRules::productsOf(
            exchange, exchange.fieldList("game_ids"), QStringLiteral("game_ids"));
    const qint64 orderId = exchange.store().database().write([&](SQLite::Database &db) {
        QList<qint64> ids;
        for (const Product *product : products) {
            // Owned first: a game bought elsewhere has also left the cart, and the customer is
            // best told that it is theirs already.
            ShopRules::requirePurchasable(db, session.accountId, *product);
            if (!Cart::contains(db, session.accountId, product->id))
                throw ApiError::error(
                        409,
                        QStringLiteral("购物车中没有《%1》，请刷新购物车").arg(product->title));
            ids.append(product->id);
        }
        Cart::remove(db, session.accountId, ids);
        return Orders::create(db, session.accountId, products, QStringLiteral("cart"),
                              exchange.now());
    });
    exchange.refreshCartCookie(session.accountId);
    exchange.success(QJsonObject{{QStringLiteral("url"), QStringLiteral("/orders/%1").arg(orderId)},
                                 {QStringLiteral("order_id"), orderId}});
}

// GET /home/games.json
void ownedGames(Exchange &exchange)
{
    const Session &session = exchange.requireSignedIn();
    const QList<qint64> ids = exchange.store().database().read(
            [&](SQLite::Database &db) { return Library::owned(db, session.accountId); });
    QJsonArray games;
    for (qint64 id : ids) {
        const Product *product = exchange.store().catalog().find(id);
        if (!product)
            continue;
        games.append(QJsonObject{
                {QStringLiteral("gameId"), product->id},
                {QStringLiteral("gameIcon"), Catalog::iconUrl(exchange.baseUrl(), product->id)},
                {QStringLiteral("productImage"),
                 Catalog::coverUrl(exchange.baseUrl(), product->id)},
                {QStringLiteral("title"), product->title}});
    }
    exchange.success(QJsonObject{{QStringLiteral("games"), games}});
}

} // namespace

void Handlers::installCart(Router &router)
{
    router.add("GET", "/cart.json", cart);
    router.add("GET", "/cart/add.json", add);
    router.add("POST", "/cart/remove.json", removeLines);
    router.add("POST", "/cart/submit.json", submit);
    router.add("GET", "/home/games.json", ownedGames);
}
