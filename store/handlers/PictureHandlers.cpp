#include "StoreContext.h"
#include "handlers/Handlers.h"
#include "http/ApiError.h"
#include "http/Exchange.h"

#include <httplib.h>

#include <QUrl>

// Pictures with the image-service suffix: "?imageView2/2/w/<N>/q/<Q>" gives a JPEG of width N,
// the plain address the original.
namespace {

QString queryOf(const std::string &target)
{
    const size_t mark = target.find('?');
    if (mark == std::string::npos)
        return {};
    return QUrl::fromPercentEncoding(QByteArray::fromStdString(target.substr(mark + 1)));
}

void picture(Exchange &exchange)
{
    const QString path = QString::fromStdString(exchange.request().path);
    const QString query = queryOf(exchange.request().target);
    PictureStore &pictures = exchange.store().pictures();
    std::optional<PictureStore::Picture> found;
    if (query.startsWith(QLatin1String("imageView2"))) {
        const auto view = ImageView::parse(query);
        if (!view)
            throw ApiError::error(400, QStringLiteral("图片处理参数无效：%1").arg(query.left(100)));
        found = pictures.scaled(path, *view);
    } else {
        found = pictures.original(path);
    }
    if (!found)
        throw ApiError::error(404, QStringLiteral("RecordNotFound: 图片不存在"));
    exchange.response().set_header("Cache-Control", "public, max-age=86400");
    exchange.sendBody(200, found->bytes, found->contentType.constData());
}

} // namespace

void Handlers::installPicture(Router &router)
{
    router.add("GET", "/pictures/:kind/:file", picture);
    router.add("GET", "/uploads/:name", picture);
}
