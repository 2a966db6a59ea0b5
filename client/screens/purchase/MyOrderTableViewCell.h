#pragma once

#include "screens/purchase/MyOrderCellSubView.h"

#include <QList>
#include <QString>
#include <QVariantMap>

// One order of the order history: its number and state, one line per game, the goods amount, the
// coupon deduction and the amount due, and for an unpaid order the cancel and pay buttons, which
// carry the row's index as their tag.
class MyOrderTableViewCell
{
public:
    MyOrderTableViewCell() = default;

    void setCellContentWithOrderID(const QString &orderId, const QString &status,
                                   const QString &allPrice, const QString &couponPrice,
                                   const QString &shouldPrice);
    void setGames(const QList<MyOrderCellSubView> &games) { m_games = games; }
    void setTag(int tag) { m_tag = tag; }

    // The label of a state the service names: "未付款", "已完成", "已取消", "待定中"; other states
    // show as they come.
    static QString labelForState(const QString &state);
    // Only unpaid orders can be cancelled or paid.
    static bool showsButtonsForState(const QString &state);

    QString labelOrderId() const { return m_labelOrderId; }
    QString labelStatus() const { return m_labelStatus; }
    QString labelAllPrice() const { return m_labelAllPrice; }
    QString labelCouponPrice() const { return m_labelCouponPrice; }
    QString labelShouldPrice() const { return m_labelShouldPrice; }
    bool buttonsHidden() const { return m_buttonsHidden; }
    int tag() const { return m_tag; }
    // Grows with the games of the order.
    qreal height() const;

    // Display-ready values: orderId, status, allPrice, couponPrice, shouldPrice, buttonsHidden,
    // tag, games (a list of the games' rows) and height.
    QVariantMap toRow() const;

    static constexpr qreal HeaderHeight = 44;
    static constexpr qreal GameHeight = 70;
    static constexpr qreal FooterHeight = 64;
    static constexpr qreal ButtonsHeight = 48;
    static constexpr qreal Gap = 10;

private:
    QString m_labelOrderId;
    QString m_labelStatus;
    QString m_labelAllPrice;
    QString m_labelCouponPrice;
    QString m_labelShouldPrice;
    bool m_buttonsHidden = true;
    int m_tag = 0;
    QList<MyOrderCellSubView> m_games;
};
