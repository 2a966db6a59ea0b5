#include "http/Paging.h"

#include "http/ApiError.h"
#include "http/Exchange.h"

namespace Paging {

int page(Exchange &exchange)
{
    const QString text = exchange.field("page").trimmed();
    if (text.isEmpty())
        return 1;
    bool ok = false;
    const int page = text.toInt(&ok);
    if (!ok || page < 1 || page > 100000)
        throw ApiError::fail(QStringLiteral("page"), QStringLiteral("请输入正确的"),
                             QStringLiteral("页码"));
    return page;
}

} // namespace Paging
