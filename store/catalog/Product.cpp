#include "catalog/Product.h"

QString Product::typeName() const
{
    if (kind == QLatin1String("dlc"))
        return QStringLiteral("DLC");
    if (kind == QLatin1String("bundle"))
        return QStringLiteral("捆绑包");
    return QStringLiteral("游戏本体");
}

QString Product::gameStatus(qint64 now) const
{
    if (blocked)
        return QStringLiteral("blocked");
    return isPresale(now) ? QStringLiteral("pre_sale") : QStringLiteral("on_sale");
}
