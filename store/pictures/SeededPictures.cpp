#include "pictures/SeededPictures.h"

#include "catalog/Catalog.h"

namespace SeededPictures {

namespace {

template<size_t N>
QList<ImageView> views(const int (&widths)[N])
{
    QList<ImageView> result;
    for (int width : widths)
        result.append(ImageView{width, 0, kQuality});
    return result;
}

} // namespace

QList<PictureStore::Request> requests(const Catalog &catalog)
{
    QList<PictureStore::Request> result;
    for (int position = 1; position <= catalog.focusRecList().size(); ++position)
        result.append({Catalog::bannerUrl(QString(), position), views(kFullWidths)});
    const QList<ImageView> coverViews = views(kGridCellWidths) + views(kFullWidths);
    for (const Product &product : catalog.products())
        result.append({Catalog::coverUrl(QString(), product.id), coverViews});
    return result;
}

} // namespace SeededPictures
