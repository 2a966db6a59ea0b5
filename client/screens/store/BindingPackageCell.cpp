#include "screens/store/BindingPackageCell.h"

#include "screens/store/GoodsDetailHeaderView.h"
#include "screens/store/OwnedMarks.h"

namespace {
const QString DiscountedLayout = QStringLiteral("BindingPackageCell1");
const QString PlainLayout = QStringLiteral("BindingPackageCell2");
} // namespace

BindingPackageCell::BindingPackageCell(const QString &identifier)
    : m_identifier(identifier)
{ }

QString BindingPackageCell::identifierForItem(const Object_DLCOrBind &item)
{
    return item.list_price == item.sale_price ? PlainLayout : DiscountedLayout;
}

BindingPackageCell BindingPackageCell::cellForItem(const Object_DLCOrBind &item)
{
    BindingPackageCell cell(identifierForItem(item));
    cell.setCellContentWithName(item.title, QString(), item.list_price, item.sale_price);
    cell.setTypeName(item.type_name);
    cell.setGameId(item.id);
    return cell;
}

bool BindingPackageCell::isDiscounted() const
{
    return m_identifier == DiscountedLayout;
}

void BindingPackageCell::setCellContentWithName(const QString &name, const QString &OFF,
                                                const QString &oldPrice, const QString &nowPrice)
{
    m_labelName = name;
    m_labelNowPrice = QStringLiteral("¥%1").arg(nowPrice);
    if (!isDiscounted()) {
        m_labelOldPrice.clear();
        m_labelOFF.clear();
        return;
    }
    m_labelOldPrice = QStringLiteral("¥%1").arg(oldPrice);
    m_labelOFF = OFF.isEmpty() ? GoodsDetailHeaderView::discountText(oldPrice, nowPrice) : OFF;
}

QVariantMap BindingPackageCell::toRow() const
{
    return {
            {QStringLiteral("identifier"), m_identifier},
            {QStringLiteral("discounted"), isDiscounted()},
            {QStringLiteral("name"), m_labelName},
            {QStringLiteral("typeName"), m_labelType},
            {QStringLiteral("off"), m_labelOFF},
            {QStringLiteral("oldPrice"), m_labelOldPrice},
            {QStringLiteral("nowPrice"), m_labelNowPrice},
            {OwnedMarks::GameIdKey, m_gameId},
            {OwnedMarks::OwnedKey, OwnedMarks::isOwned(m_gameId)},
    };
}
