#include "screens/purchase/MyOrderCellSubView.h"

#include "screens/store/HomePageViewCell.h"

void MyOrderCellSubView::setViewContentWithName(const QString &name, const QString &price)
{
    m_labelName = name;
    m_labelPrice = QStringLiteral("¥%1").arg(price);
}

QVariantMap MyOrderCellSubView::toRow() const
{
    const QString cover
            = m_coverAddress.isEmpty()
                      ? QString()
                      : HomePageViewCell::imageUrlWithWidth(m_coverAddress, CoverWidth,
                                                            HomePageViewCell::screenScale());
    return {{QStringLiteral("name"), m_labelName},
            {QStringLiteral("price"), m_labelPrice},
            {QStringLiteral("cover"), cover}};
}
