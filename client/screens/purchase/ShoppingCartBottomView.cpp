#include "screens/purchase/ShoppingCartBottomView.h"

ShoppingCartBottomView::ShoppingCartBottomView(QObject *parent)
    : QObject(parent)
    , m_buttonSelectAll(new platform::Button(this))
    , m_labelPrice(new platform::Label(this))
    , m_buttonClearing(new platform::Button(this))
{
    m_buttonSelectAll->setTitle(QStringLiteral("全选"));
    m_buttonSelectAll->setImageName(QStringLiteral("shoppingcar_unselect"));
    m_buttonSelectAll->setSelectedImageName(QStringLiteral("shoppingcar_select"));
    m_buttonClearing->setTitle(QStringLiteral("去结算"));
    connect(m_buttonSelectAll, &platform::Button::clicked, this, [this] {
        m_buttonSelectAll->setSelected(!m_buttonSelectAll->isSelected());
        if (m_clickSelectBt)
            m_clickSelectBt(m_buttonSelectAll->isSelected());
    });
    connect(m_buttonClearing, &platform::Button::clicked, this, [this] {
        if (m_clickClearingBt)
            m_clickClearingBt();
    });
}

void ShoppingCartBottomView::setViewContentWithAllPrice(const QString &allPrice)
{
    m_labelPrice->setText(QStringLiteral("¥") + allPrice);
}

void ShoppingCartBottomView::setSelectButton(bool selected)
{
    m_buttonSelectAll->setSelected(selected);
}
