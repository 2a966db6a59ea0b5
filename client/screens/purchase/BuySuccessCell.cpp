#include "screens/purchase/BuySuccessCell.h"

void BuySuccessCell::setCellContentWithTitle(const QString &title, bool separatorHidden)
{
    m_labelTitle = title;
    m_separatorHidden = separatorHidden;
}

QVariantMap BuySuccessCell::toRow() const
{
    return {{QStringLiteral("title"), m_labelTitle},
            {QStringLiteral("separatorHidden"), m_separatorHidden}};
}
