#include "StoreContext.h"
#include "handlers/Handlers.h"
#include "http/ApiError.h"
#include "http/Exchange.h"
#include "http/Paging.h"

#include <QJsonArray>
#include <QJsonDocument>

namespace {

QByteArray successBody(const QJsonValue &data)
{
    const QJsonObject envelope{{QStringLiteral("status"), QStringLiteral("success")},
                               {QStringLiteral("data"), data},
                               {QStringLiteral("message"), QStringLiteral("")}};
    return QJsonDocument(envelope).toJson(QJsonDocument::Compact);
}

void sendCached(Exchange &exchange, const QString &key, const std::function<QJsonValue()> &data)
{
    const QByteArray body = exchange.store().catalog().cachedAnswer(
            (exchange.baseUrl() + QLatin1Char('|') + key).toStdString(), exchange.now(),
            [&] { return successBody(data()); });
    exchange.sendBody(200, body, "application/json; charset=utf-8");
}

QJsonArray entries(Exchange &exchange, const QList<const Product *> &products, bool withSummary)
{
    QJsonArray list;
    for (const Product *product : products)
        list.append(exchange.store().catalog().listEntry(*product, exchange.baseUrl(),
                                                         exchange.now(), withSummary));
    return list;
}

void home(Exchange &exchange)
{
    sendCached(exchange, QStringLiteral("store"), [&] {
        return QJsonObject{{QStringLiteral("focus_recs"),
                            exchange.store().catalog().focusRecs(exchange.baseUrl())}};
    });
}

void list(Exchange &exchange)
{
    const QString type
            = exchange.hasField("type") ? exchange.field("type") : QStringLiteral("latest");
    const auto sort = Catalog::sortNamed(type);
    if (!sort)
        throw ApiError::fail(QStringLiteral("type"), QStringLiteral("请选择正确的"),
                             QStringLiteral("排序方式"));
    const int page = Paging::page(exchange);
    sendCached(exchange, QStringLiteral("products|%1|%2").arg(type).arg(page), [&] {
        return entries(exchange, exchange.store().catalog().page(*sort, page), false);
    });
}

void detail(Exchange &exchange)
{
    const Product *product = exchange.store().catalog().find(exchange.routeId("id"));
    if (!product)
        throw ApiError::gameNotFound();
    const bool verbose = exchange.field("verbose") == QLatin1String("1");
    sendCached(exchange, QStringLiteral("product|%1|%2").arg(product->id).arg(verbose), [&] {
        Catalog &catalog = exchange.store().catalog();
        return verbose ? catalog.detail(*product, exchange.baseUrl(), exchange.now())
                       : catalog.listEntry(*product, exchange.baseUrl(), exchange.now(), true);
    });
}

void search(Exchange &exchange)
{
    const QString text = exchange.field("q").trimmed().left(100);
    const int page = Paging::page(exchange);
    sendCached(exchange, QStringLiteral("search|%1|%2").arg(page).arg(text), [&] {
        return entries(exchange, exchange.store().catalog().search(text, page), true);
    });
}

} // namespace

void Handlers::installCatalog(Router &router)
{
    router.add("GET", "/store.json", home);
    router.add("GET", "/products.json", list);
    router.add("GET", "/products/:id.json", detail);
    router.add("GET", "/store/search.json", search);
}
