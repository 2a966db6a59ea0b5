#pragma once

#include "platform/ui/Button.h"
#include "platform/ui/Label.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>

// The fixed bar under a game's page: the cart button with its count badge, the price, "加入购物车"
// and "立即购买". Each button hands its index to `buttonCartBlock`: cart 0, buy now 1, add 2.
class GoodsDetailBottomView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by GoodsDetailViewController")
    Q_PROPERTY(platform::Button *buttonCart READ buttonCart CONSTANT)
    Q_PROPERTY(platform::Button *buttonOneKeyBuy READ buttonOneKeyBuy CONSTANT)
    Q_PROPERTY(platform::Button *buttonAddToCart READ buttonAddToCart CONSTANT)
    Q_PROPERTY(platform::Label *labelRedDot READ labelRedDot CONSTANT)
    Q_PROPERTY(platform::Label *labelPrice READ labelPrice CONSTANT)
public:
    enum ButtonIndex { CartButton = 0, OneKeyBuyButton = 1, AddToCartButton = 2 };
    using ButtonBlock = std::function<void(int index)>;

    explicit GoodsDetailBottomView(QObject *parent = nullptr);

    platform::Button *buttonCart() const { return m_buttonCart; }
    platform::Button *buttonOneKeyBuy() const { return m_buttonOneKeyBuy; }
    platform::Button *buttonAddToCart() const { return m_buttonAddToCart; }
    platform::Label *labelRedDot() const { return m_labelRedDot; }
    platform::Label *labelPrice() const { return m_labelPrice; }

    void setButtonCartBlock(ButtonBlock block) { m_buttonCartBlock = std::move(block); }

    // The badge shows the cart count; it hides when the count is empty or "0".
    void setCartNum(const QString &cartNum);
    // The price beside the buttons, "¥%@"; empty before the game is known.
    void setPrice(const QString &salePrice);

private:
    platform::Button *makeButton(ButtonIndex index, const QString &title);

    platform::Button *m_buttonCart = nullptr;
    platform::Button *m_buttonOneKeyBuy = nullptr;
    platform::Button *m_buttonAddToCart = nullptr;
    platform::Label *m_labelRedDot = nullptr;
    platform::Label *m_labelPrice = nullptr;
    ButtonBlock m_buttonCartBlock;
};
