#include "handlers/ShopRules.h"

#include "StoreContext.h"
#include "http/ApiError.h"
#include "http/Exchange.h"
#include "shop/Cart.h"

namespace ShopRules {

QList<const Product *> productsOf(Exchange &exchange, const QStringList &ids, const QString &field)
{
    if (ids.isEmpty())
        throw ApiError::fail(field, QStringLiteral("请选择"), QStringLiteral("游戏"));
    QList<const Product *> products;
    for (const QString &text : ids) {
        bool ok = false;
        const qint64 id = text.toLongLong(&ok);
        if (!ok || id <= 0 || !text.at(0).isDigit())
            throw ApiError::fail(field, QStringLiteral("请选择有效的"), QStringLiteral("游戏"));
        const Product *product = exchange.store().catalog().find(id);
        if (!product)
            throw ApiError::gameNotFound();
        if (!products.contains(product))
            products.append(product);
    }
    return products;
}

void requirePurchasable(SQLite::Database &db, qint64 accountId, const Product &product)
{
    if (product.blocked)
        throw ApiError::error(409, QStringLiteral("《%1》暂时无法购买").arg(product.title));
    if (Library::owns(db, accountId, product.id))
        throw ApiError::error(409,
                              QStringLiteral("您已拥有《%1》，无需重复购买").arg(product.title));
}

} // namespace ShopRules
