#include "screens/purchase/ConfirmOrderBottomView.h"

ConfirmOrderBottomView::ConfirmOrderBottomView(QObject *parent)
    : QObject(parent)
    , m_labelGoodsPrice(new platform::Label(this))
    , m_labelCouponPrice(new platform::Label(this))
    , m_labelCouponNum(new platform::Label(this))
    , m_fieldCoupon(new platform::TextField(this))
{
    m_fieldCoupon->setPlaceholder(QStringLiteral("请输入优惠码"));
    m_fieldCoupon->setClearButtonShown(true);
    m_buttonZFB = makeButton(ZFB, QStringLiteral("支付宝支付"));
    m_buttonZFB->setImageName(QStringLiteral("confirmOrder_zfb"));
    m_buttonWX = makeButton(WX, QStringLiteral("微信支付"));
    m_buttonWX->setImageName(QStringLiteral("wechatPayLogo"));
    m_buttonSelectCoupon = makeButton(SelectCoupon, QStringLiteral("选择优惠券"));
    m_buttonSure = makeButton(Sure, QStringLiteral("使用"));
    m_buttonCancel = makeButton(Cancel, QStringLiteral("取消"));
    m_buttonWX->setSelected(true);
}

platform::Button *ConfirmOrderBottomView::makeButton(ButtonNumber number, const QString &title)
{
    auto *button = new platform::Button(this);
    button->setTag(number);
    button->setTitle(title);
    connect(button, &platform::Button::clicked, this, [this, button, number] {
        // The payment choices only move the highlight: the order is always paid the one way.
        if (number == ZFB || number == WX)
            highlightPayment(button);
        if (m_myClickButton)
            m_myClickButton(number);
    });
    return button;
}

void ConfirmOrderBottomView::highlightPayment(platform::Button *chosen)
{
    m_buttonZFB->setSelected(chosen == m_buttonZFB);
    m_buttonWX->setSelected(chosen == m_buttonWX);
}

void ConfirmOrderBottomView::setOrderContentWithGoodsPrice(const QString &goodsPrice,
                                                           const QString &couponPrice,
                                                           const QString &couponNum,
                                                           ClickButton clickButton)
{
    setOrderContentWithGoodsPrice(goodsPrice, couponPrice, couponNum);
    m_myClickButton = std::move(clickButton);
}

void ConfirmOrderBottomView::setOrderContentWithGoodsPrice(const QString &goodsPrice,
                                                           const QString &couponPrice,
                                                           const QString &couponNum)
{
    m_labelGoodsPrice->setText(goodsPrice);
    m_labelCouponPrice->setText(couponPrice);
    m_labelCouponNum->setText(QStringLiteral("优惠券:可用优惠券(%1)").arg(couponNum));
}

void ConfirmOrderBottomView::setCouponCode(const QString &code)
{
    m_fieldCoupon->setText(code);
    m_fieldCoupon->setEnabled(code.isEmpty());
}
