#include "screens/store/GoodsDetailHeaderView.h"

#include "service/NetWorkHelper.h"
#include "util/AppConfig.h"
#include "util/NSStringUtils.h"

#include <QGuiApplication>
#include <QScreen>

#include <cmath>

GoodsDetailHeaderView::GoodsDetailHeaderView(QObject *parent)
    : QObject(parent)
{ }

void GoodsDetailHeaderView::setViewContentWithImage(const QString &image, const QString &nameCn,
                                                    const QString &nameEn, const QString &oldPrice,
                                                    const QString &newPrice,
                                                    const QString &isPresell,
                                                    const QVariantList &OSs)
{
    m_imageUrl = imageUrlWithWidth(image, CoverWidth, screenScale());
    m_nameCn = nameCn;
    m_nameEn = nameEn;
    m_newPrice = QStringLiteral("¥%1").arg(newPrice);
    const bool samePrice = oldPrice == newPrice;
    m_oldPrice = samePrice ? QString() : QStringLiteral("¥%1").arg(oldPrice);
    m_discount = samePrice ? QString() : discountText(oldPrice, newPrice);
    m_discountHidden = m_discount.isEmpty();
    m_presellHidden = isPresell == QLatin1String("0");
    m_osIcons.clear();
    for (const QVariant &system : OSs) {
        const QString icon = iconForSystem(system.toMap().value(QStringLiteral("name")).toString());
        if (!icon.isEmpty())
            m_osIcons.append(icon);
    }
    emit changed();
}

QString GoodsDetailHeaderView::imageUrlWithWidth(const QString &image, double pointWidth,
                                                 double scale)
{
    if (image.isEmpty())
        return QString();
    const QString absolute = image.startsWith(QLatin1String("http")) ? image : ApiBaseUrl() + image;
    return QString::asprintf("%s?imageView2/2/w/%.0f/q/85",
                             NetWorkHelper::encodingString(absolute).toUtf8().constData(),
                             std::round(pointWidth * scale));
}

double GoodsDetailHeaderView::screenScale()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->devicePixelRatio() : 1.0;
}

QString GoodsDetailHeaderView::discountText(const QString &listPrice, const QString &salePrice)
{
    const float list = float(NSStringUtils::doubleValue(listPrice));
    const float sale = float(NSStringUtils::doubleValue(salePrice));
    const float percent = (list - sale) / list * 100;
    if (!std::isfinite(percent))
        return QString();
    // A space on each side here, unlike the grid's format: intended.
    return QString::asprintf(" %.0f%%OFF ", double(percent));
}

QString GoodsDetailHeaderView::iconForSystem(const QString &name)
{
    if (name == QLatin1String("Win"))
        return QStringLiteral("goodsDetail_windows");
    if (name == QLatin1String("Linux"))
        return QStringLiteral("goodsDetail_linux");
    if (name == QLatin1String("Mac"))
        return QStringLiteral("goodsDetail_mac");
    return QString();
}
