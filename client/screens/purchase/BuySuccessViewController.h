#pragma once

#include "app/Q9FatherViewController.h"
#include "platform/ui/Button.h"
#include "platform/ui/RowModel.h"

#include <QVariantMap>
#include <QtQml/qqmlregistration.h>

// The purchase result, shown once the store has confirmed the payment: the amount, the order
// number and how it was paid, then "我的订单" and "继续购物".
class BuySuccessViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(platform::RowModel *tableMain READ tableMain CONSTANT)
    Q_PROPERTY(platform::Button *buttonMyOrder READ buttonMyOrder CONSTANT)
    Q_PROPERTY(platform::Button *buttonContinue READ buttonContinue CONSTANT)
public:
    enum ButtonNumber { MyOrder = 0, ContinueShopping = 1 };

    // `sourceModel`: the store's answer about the paid order ("subtotal", "id",
    // "payment_method").
    explicit BuySuccessViewController(const QVariantMap &sourceModel, QObject *parent = nullptr);

    QVariantMap sourceModel() const { return m_sourceModel; }
    platform::RowModel *tableMain() const { return m_tableMain; }
    platform::Button *buttonMyOrder() const { return m_buttonMyOrder; }
    platform::Button *buttonContinue() const { return m_buttonContinue; }

    void clickButton(int number);

protected:
    void viewDidLoad() override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

private:
    // The order history, opened with viewFather 1.
    void openOrderHistory();

    QVariantMap m_sourceModel;
    platform::RowModel *m_tableMain = nullptr;
    platform::Button *m_buttonMyOrder = nullptr;
    platform::Button *m_buttonContinue = nullptr;
};
