#include "screens/purchase/ConfirmOrderCell.h"

void ConfirmOrderCell::setCellContentWithName(const QString &name, const QString &price)
{
    m_labelName = name;
    m_labelPrice = QStringLiteral("¥") + price;
}

QVariantMap ConfirmOrderCell::toRow() const
{
    return {{QStringLiteral("name"), m_labelName}, {QStringLiteral("price"), m_labelPrice}};
}
