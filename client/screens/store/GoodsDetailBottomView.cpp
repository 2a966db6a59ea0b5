#include "screens/store/GoodsDetailBottomView.h"

GoodsDetailBottomView::GoodsDetailBottomView(QObject *parent)
    : QObject(parent)
    , m_labelRedDot(new platform::Label(this))
    , m_labelPrice(new platform::Label(this))
{
    m_buttonCart = makeButton(CartButton, QString());
    m_buttonCart->setImageName(QStringLiteral("goodsDetail_cart"));
    m_buttonOneKeyBuy = makeButton(OneKeyBuyButton, QStringLiteral("立即购买"));
    m_buttonAddToCart = makeButton(AddToCartButton, QStringLiteral("加入购物车"));

    m_labelRedDot->setHidden(true);
}

platform::Button *GoodsDetailBottomView::makeButton(ButtonIndex index, const QString &title)
{
    auto *button = new platform::Button(this);
    button->setTag(index);
    button->setTitle(title);
    connect(button, &platform::Button::clicked, this, [this, index] {
        if (m_buttonCartBlock)
            m_buttonCartBlock(index);
    });
    return button;
}

void GoodsDetailBottomView::setCartNum(const QString &cartNum)
{
    m_labelRedDot->setText(cartNum);
    m_labelRedDot->setHidden(cartNum.isEmpty() || cartNum == QLatin1String("0"));
}

void GoodsDetailBottomView::setPrice(const QString &salePrice)
{
    m_labelPrice->setText(salePrice.isEmpty() ? QString() : QStringLiteral("¥%1").arg(salePrice));
}
