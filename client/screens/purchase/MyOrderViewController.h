#pragma once

#include "app/Q9FatherViewController.h"
#include "models/Object_MyOrderList.h"
#include "platform/ui/Button.h"
#include "platform/ui/RefreshFooter.h"
#include "platform/ui/RefreshHeader.h"
#include "platform/ui/RowModel.h"
#include "screens/purchase/MyOrderTableViewCell.h"

#include <QList>
#include <QString>
#include <QtQml/qqmlregistration.h>

// The order history: the user's orders page by page, filtered by the tabs "全部", "未付款" and
// "已完成". Unpaid orders can be cancelled at once or paid on the order screen.
class MyOrderViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are created by C++")
    Q_PROPERTY(platform::Button *buttonAll READ buttonAll CONSTANT)
    Q_PROPERTY(platform::Button *buttonNoPay READ buttonNoPay CONSTANT)
    Q_PROPERTY(platform::Button *buttonFinish READ buttonFinish CONSTANT)
    Q_PROPERTY(platform::RowModel *tableMain READ tableMain CONSTANT)
    Q_PROPERTY(platform::RefreshHeader *refreshHeader READ refreshHeader CONSTANT)
    Q_PROPERTY(platform::RefreshFooter *refreshFooter READ refreshFooter CONSTANT)
    Q_PROPERTY(QString viewType READ viewType NOTIFY viewTypeChanged)
public:
    enum Tab { All = 0, NoPay = 1, Finish = 2 };
    Q_ENUM(Tab)

    // `fatherView` tells where the screen was opened from; the user's page opens it with 0.
    explicit MyOrderViewController(int fatherView = 0, QObject *parent = nullptr);
    static MyOrderViewController *initWithFatherView(int fatherView);

    int fatherView() const { return m_fatherView; }
    QString viewType() const { return m_viewType; }
    int pageMain() const { return m_pageMain; }
    QList<Object_MyOrderList> arraySource() const { return m_arraySource; }

    platform::Button *buttonAll() const { return m_buttonAll; }
    platform::Button *buttonNoPay() const { return m_buttonNoPay; }
    platform::Button *buttonFinish() const { return m_buttonFinish; }
    platform::RowModel *tableMain() const { return m_tableMain; }
    platform::RefreshHeader *refreshHeader() const { return m_header; }
    platform::RefreshFooter *refreshFooter() const { return m_footer; }

    // The state filter a tab sends: "all", "in_checkout" or "completed".
    static QString viewTypeForTab(int tab);
    // What a row shows of an order (amounts worked out from its games and subtotal).
    static MyOrderTableViewCell cellForOrder(const Object_MyOrderList &order, int row);
    // The coupon deduction: goods amount minus the amount due, "%.1f", or "0" when there is none.
    static QString couponAmountText(double goodsAmount, double subtotal);

    // A tab was pressed (0 to 2); other numbers are ignored.
    Q_INVOKABLE void clickButtonTab(int tab);
    // The cancel and pay buttons of the row whose index is `tag`.
    Q_INVOKABLE void clickButtonCancle(int tag);
    Q_INVOKABLE void clickButtonPay(int tag);

signals:
    void viewTypeChanged();

protected:
    void viewDidLoad() override;
    void setLoadViewAction() override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

private:
    void refreshData();
    void loadMoreData();
    void reloadTable();
    const Object_MyOrderList *orderAt(int tag) const;
    platform::Button *makeTab(const QString &title, int tab);

    int m_fatherView = 0;
    QString m_viewType = QStringLiteral("all");
    int m_pageMain = 1;
    // Counts reloads, so that a page asked for before the latest reload is dropped.
    int m_generation = 0;
    QList<Object_MyOrderList> m_arraySource;
    platform::Button *m_buttonAll;
    platform::Button *m_buttonNoPay;
    platform::Button *m_buttonFinish;
    platform::RowModel *m_tableMain;
    platform::RefreshHeader *m_header;
    platform::RefreshFooter *m_footer;
};
