#pragma once

#include "app/Q9FatherViewController.h"
#include "models/Object_CartList.h"
#include "screens/purchase/ShoppingCartBottomView.h"
#include "screens/purchase/ShoppingCartCell.h"

#include <QList>
#include <QStringList>
#include <QtQml/qqmlregistration.h>

// The cart: the second tab (viewFather other than 1), or pushed from another screen (viewFather
// 1) with a back button and without the tab strip. The lines and their ticks are two parallel
// arrays, fetched afresh (all unticked) each time the screen is about to show.
class TabThreeViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
    Q_PROPERTY(int viewFather READ viewFather CONSTANT)
    Q_PROPERTY(QList<QObject *> cells READ cellObjects NOTIFY reloadData)
    Q_PROPERTY(ShoppingCartBottomView *bottomView READ bottomView CONSTANT)
    Q_PROPERTY(bool emptyViewHidden READ isEmptyViewHidden NOTIFY emptyViewHiddenChanged)
    Q_PROPERTY(bool bottomViewShown READ isBottomViewShown NOTIFY bottomViewShownChanged)
public:
    static constexpr int FatherPushed = 1;

    explicit TabThreeViewController(int viewFather = 0, QObject *parent = nullptr);

    int viewFather() const { return m_viewFather; }
    bool isPushed() const { return m_viewFather == FatherPushed; }

    QList<Object_CartList> arraySource() const { return m_arraySource; }
    QStringList arraySelect() const { return m_arraySelect; }
    QList<ShoppingCartCell *> cells() const { return m_cells; }
    QList<QObject *> cellObjects() const;
    ShoppingCartBottomView *bottomView() const { return m_bottomView; }
    bool isEmptyViewHidden() const { return m_emptyViewHidden; }
    bool isBottomViewShown() const { return m_bottomViewShown; }

    // Tapping a line ticks or unticks it.
    Q_INVOKABLE void didSelectRowAtIndex(int row);
    // "去逛逛" under the empty cart.
    Q_INVOKABLE void clickGoShopping();

signals:
    void reloadData();
    void emptyViewHiddenChanged();
    void bottomViewShownChanged();

protected:
    void viewDidLoad() override;
    void viewDidAppear(bool animated) override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

private:
    void loadCart();
    void showCart(const QVariant &data);
    void deleteLine(const QString &gameId);
    void removeLine(const QString &gameId);
    void selectAll(bool selected);
    void submit();
    double selectedTotal() const;
    // The total as ticking shows it: "%.1f", or "0" when nothing is ticked.
    void showTickedTotal();
    void rebuildCells();
    void setEmptyViewHidden(bool hidden);

    int m_viewFather = 0;
    QList<Object_CartList> m_arraySource;
    QStringList m_arraySelect;
    QList<ShoppingCartCell *> m_cells;
    ShoppingCartBottomView *m_bottomView = nullptr;
    bool m_emptyViewHidden = true;
    bool m_bottomViewShown = false;
};
