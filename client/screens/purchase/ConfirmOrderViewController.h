#pragma once

#include "app/Q9FatherViewController.h"
#include "models/Object_Coupon.h"
#include "models/Object_OrderDetail.h"
#include "models/Object_WeChatInfo.h"
#include "platform/ui/RowModel.h"
#include "screens/purchase/ConfirmBottomView.h"
#include "screens/purchase/ConfirmOrderBottomView.h"

#include <QPointer>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

#include <optional>

class AppDelegate;

// Checkout: makes the order (from cart lines or for one game) or opens an unpaid one, shows its
// games and amounts, attaches and detaches a coupon code, fetches the WeChat payment parameters
// for the application delegate to send, and when the payment answers asks the store whether the
// order is paid before showing the result.
class ConfirmOrderViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(platform::RowModel *tableMain READ tableMain CONSTANT)
    Q_PROPERTY(ConfirmOrderBottomView *footerView READ footerView CONSTANT)
    Q_PROPERTY(ConfirmBottomView *viewPay READ viewPay CONSTANT)
    Q_PROPERTY(bool orderLoaded READ isOrderLoaded NOTIFY orderLoadedChanged)
public:
    enum OrderType { FromCart = 0, BuyDirectly = 1, ExistingOrder = 2 };

    // `gamesID`: the cart lines' game ids (type 0), one game id (type 1) or one order id (type 2).
    ConfirmOrderViewController(const QStringList &gamesID, int type, QObject *parent = nullptr);

    QStringList gamesID() const { return m_arrayGamesID; }
    int type() const { return m_viewType; }
    const Object_OrderDetail &sourceModel() const { return m_sourceModel; }
    std::optional<Object_Coupon> modelCoupon() const { return m_modelCoupon; }
    std::optional<Object_WeChatInfo> modelWeChat() const { return m_modelWeChat; }
    QString openID() const { return m_openID; }
    platform::RowModel *tableMain() const { return m_tableMain; }
    ConfirmOrderBottomView *footerView() const { return m_footerView; }
    ConfirmBottomView *viewPay() const { return m_viewPay; }
    bool isOrderLoaded() const { return m_orderLoaded; }

    // Hands the payment parameters and this screen's WeChat id to the application delegate.
    void sendPay(const std::optional<Object_WeChatInfo> &parameters);
    // A row was tapped: it only deselects and closes the keyboard.
    Q_INVOKABLE void didSelectRowAtIndex(int row);

signals:
    void orderLoadedChanged();

protected:
    void viewDidLoad() override;
    void setLoadViewAction() override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

private:
    void loadOrder();
    void getOrderDetail(const QString &orderUrl);
    void showOrder(const QVariant &data);
    void clickFooterButton(int number);
    void useCoupon();
    void showAttachedCoupon(const QVariant &data);
    void deleteCoupon();
    void showDetachedCoupon(const QVariant &data);
    void pay();
    void getThirdPaymentData(const QString &paymentMethod);
    // What the application delegate reports once WeChat has answered.
    void afterPayment(bool mayHaveSucceeded);
    void showPaymentResult(const QVariant &data);
    // The order's games show as owned everywhere at once.
    void markGamesOwned();
    void reloadTable();

    QStringList m_arrayGamesID;
    int m_viewType = FromCart;
    Object_OrderDetail m_sourceModel;
    std::optional<Object_Coupon> m_modelCoupon;
    std::optional<Object_WeChatInfo> m_modelWeChat;
    QString m_openID;
    QPointer<AppDelegate> m_delegate;
    platform::RowModel *m_tableMain = nullptr;
    ConfirmOrderBottomView *m_footerView = nullptr;
    ConfirmBottomView *m_viewPay = nullptr;
    bool m_orderLoaded = false;
};
