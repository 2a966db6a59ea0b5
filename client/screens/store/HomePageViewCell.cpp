#include "screens/store/HomePageViewCell.h"

#include "screens/store/OwnedMarks.h"
#include "service/NetWorkHelper.h"
#include "util/AppConfig.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <cmath>

const QString HomePageViewCell::Identifier = QStringLiteral("HomePageViewCell");

qreal HomePageViewCell::itemWidthForScreenWidth(qreal screenWidth)
{
    return std::max<qreal>(0, (screenWidth - 3 * GridSpacing) / 2);
}

qreal HomePageViewCell::coverHeightForItemWidth(qreal itemWidth)
{
    return std::round(itemWidth * 9 / 16);
}

QString HomePageViewCell::imageUrlWithWidth(const QString &storedUrl, qreal widthInPoints,
                                            qreal screenScale)
{
    QString address = storedUrl;
    if (!address.startsWith(QLatin1String("http")))
        address.prepend(ApiBaseUrl());
    return QString::asprintf("%s?imageView2/2/w/%.0f/q/85",
                             qUtf8Printable(NetWorkHelper::encodingString(address)),
                             std::round(widthInPoints * screenScale));
}

qreal HomePageViewCell::screenScale()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->devicePixelRatio() : 1;
}

QString HomePageViewCell::discountText(const QString &listPrice, const QString &salePrice)
{
    const float list = listPrice.toFloat();
    const float sale = salePrice.toFloat();
    const float percent = (list - sale) / list * 100;
    if (!std::isfinite(percent))
        return {};
    // The trailing space is intended.
    return QString::asprintf("%.0f%%OFF ", double(percent));
}

HomePageViewCell::HomePageViewCell(qreal coverWidth, qreal scale)
    : m_coverWidth(coverWidth)
    , m_scale(scale)
{ }

void HomePageViewCell::setCellContentsWithImage(const QString &image, const QString &oldPrice,
                                                const QString &newPrice, const QString &isPresell,
                                                Block block)
{
    m_myBlock = std::move(block);
    m_imageGoods = imageUrlWithWidth(image, m_coverWidth, m_scale);
    m_newPrice = QStringLiteral("¥") + newPrice;
    m_salePrice = newPrice;
    if (oldPrice == newPrice) {
        m_oldPrice.clear();
        m_listPriceShown.clear();
        m_discount.clear();
        m_discountHidden = true;
    } else {
        m_oldPrice = QStringLiteral("¥") + oldPrice;
        m_listPriceShown = oldPrice;
        m_discount = discountText(oldPrice, newPrice);
        m_discountHidden = m_discount.isEmpty();
    }
    m_presellText = QStringLiteral("预售");
    m_presellHidden = isPresell == QLatin1String("0");
}

void HomePageViewCell::gotoProductDetialBtnClicked() const
{
    if (m_myBlock)
        m_myBlock();
}

QVariantMap HomePageViewCell::row() const
{
    return {
            {QStringLiteral("imageUrl"), m_imageGoods},
            {QStringLiteral("title"), m_title},
            {QStringLiteral("oldPrice"), m_oldPrice},
            {QStringLiteral("newPrice"), m_newPrice},
            {QStringLiteral("salePrice"), m_salePrice},
            {QStringLiteral("listPrice"), m_listPriceShown},
            {QStringLiteral("discount"), m_discount},
            {QStringLiteral("discountHidden"), m_discountHidden},
            {QStringLiteral("presell"), m_presellText},
            {QStringLiteral("presellHidden"), m_presellHidden},
            {OwnedMarks::GameIdKey, m_gameId},
            {OwnedMarks::OwnedKey, OwnedMarks::isOwned(m_gameId)},
    };
}

QList<QVariantMap> HomePageViewCell::rowsOf(const QList<HomePageViewCell> &cells)
{
    QList<QVariantMap> rows;
    rows.reserve(cells.size());
    for (const HomePageViewCell &cell : cells)
        rows.append(cell.row());
    return rows;
}
