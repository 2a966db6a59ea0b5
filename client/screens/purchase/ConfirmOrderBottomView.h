#pragma once

#include "platform/ui/Button.h"
#include "platform/ui/Label.h"
#include "platform/ui/TextField.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

#include <functional>

// The panel under the order's games: goods and coupon amounts, the coupon code field with its
// use and detach buttons, the way to the coupon list, and the Alipay and WeChat choices. Every
// button hands its number to `myClickButton`.
class ConfirmOrderBottomView : public QObject
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Made by ConfirmOrderViewController")
    Q_PROPERTY(platform::Label *labelGoodsPrice READ labelGoodsPrice CONSTANT)
    Q_PROPERTY(platform::Label *labelCouponPrice READ labelCouponPrice CONSTANT)
    Q_PROPERTY(platform::Label *labelCouponNum READ labelCouponNum CONSTANT)
    Q_PROPERTY(platform::TextField *fieldCoupon READ fieldCoupon CONSTANT)
    Q_PROPERTY(platform::Button *buttonZFB READ buttonZFB CONSTANT)
    Q_PROPERTY(platform::Button *buttonWX READ buttonWX CONSTANT)
    Q_PROPERTY(platform::Button *buttonSelectCoupon READ buttonSelectCoupon CONSTANT)
    Q_PROPERTY(platform::Button *buttonSure READ buttonSure CONSTANT)
    Q_PROPERTY(platform::Button *buttonCancel READ buttonCancel CONSTANT)
public:
    enum ButtonNumber { ZFB = 0, WX = 1, SelectCoupon = 2, Sure = 3, Cancel = 4 };
    using ClickButton = std::function<void(int number)>;

    explicit ConfirmOrderBottomView(QObject *parent = nullptr);

    platform::Label *labelGoodsPrice() const { return m_labelGoodsPrice; }
    platform::Label *labelCouponPrice() const { return m_labelCouponPrice; }
    platform::Label *labelCouponNum() const { return m_labelCouponNum; }
    platform::TextField *fieldCoupon() const { return m_fieldCoupon; }
    platform::Button *buttonZFB() const { return m_buttonZFB; }
    platform::Button *buttonWX() const { return m_buttonWX; }
    platform::Button *buttonSelectCoupon() const { return m_buttonSelectCoupon; }
    platform::Button *buttonSure() const { return m_buttonSure; }
    platform::Button *buttonCancel() const { return m_buttonCancel; }

    // The amount texts as given and the count through "优惠券:可用优惠券(%@)".
    void setOrderContentWithGoodsPrice(const QString &goodsPrice, const QString &couponPrice,
                                       const QString &couponNum, ClickButton clickButton);
    void setOrderContentWithGoodsPrice(const QString &goodsPrice, const QString &couponPrice,
                                       const QString &couponNum);
    QString getCouponCode() const { return m_fieldCoupon->text(); }
    // The field is editable only while it is empty.
    void setCouponCode(const QString &code);

private:
    platform::Button *makeButton(ButtonNumber number, const QString &title);
    void highlightPayment(platform::Button *chosen);

    platform::Label *m_labelGoodsPrice = nullptr;
    platform::Label *m_labelCouponPrice = nullptr;
    platform::Label *m_labelCouponNum = nullptr;
    platform::TextField *m_fieldCoupon = nullptr;
    platform::Button *m_buttonZFB = nullptr;
    platform::Button *m_buttonWX = nullptr;
    platform::Button *m_buttonSelectCoupon = nullptr;
    platform::Button *m_buttonSure = nullptr;
    platform::Button *m_buttonCancel = nullptr;
    ClickButton m_myClickButton;
};
