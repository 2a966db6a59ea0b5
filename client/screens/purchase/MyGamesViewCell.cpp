#include "screens/purchase/MyGamesViewCell.h"

#include "screens/store/HomePageViewCell.h"

MyGamesViewCell::MyGamesViewCell(qreal cellWidth, qreal scale)
    : m_cellWidth(cellWidth)
    , m_scale(scale)
{ }

void MyGamesViewCell::setCellContentWithImage(const QString &productImage)
{
    m_imageGoods
            = productImage.isEmpty()
                      ? QString()
                      : HomePageViewCell::imageUrlWithWidth(productImage, m_cellWidth, m_scale);
}

QVariantMap MyGamesViewCell::toRow() const
{
    return {{QStringLiteral("imageUrl"), m_imageGoods}};
}
