#include "screens/purchase/MyOrderTableViewCell.h"

#include <QVariantList>

namespace {

const QString InCheckout = QStringLiteral("in_checkout");

} // namespace

void MyOrderTableViewCell::setCellContentWithOrderID(const QString &orderId, const QString &status,
                                                     const QString &allPrice,
                                                     const QString &couponPrice,
                                                     const QString &shouldPrice)
{
    m_labelOrderId = QStringLiteral("订单号:%1").arg(orderId);
    m_labelStatus = labelForState(status);
    m_labelAllPrice = QStringLiteral("商品金额:¥%1").arg(allPrice);
    m_labelCouponPrice = QStringLiteral("优惠券:-¥%1").arg(couponPrice);
    m_labelShouldPrice = QStringLiteral("¥%1").arg(shouldPrice);
    m_buttonsHidden = !showsButtonsForState(status);
}

QString MyOrderTableViewCell::labelForState(const QString &state)
{
    if (state == InCheckout)
        return QStringLiteral("未付款");
    if (state == QLatin1String("completed"))
        return QStringLiteral("已完成");
    if (state == QLatin1String("canceled"))
        return QStringLiteral("已取消");
    if (state == QLatin1String("pending"))
        return QStringLiteral("待定中");
    return state;
}

bool MyOrderTableViewCell::showsButtonsForState(const QString &state)
{
    return state == InCheckout;
}

qreal MyOrderTableViewCell::height() const
{
    return HeaderHeight + GameHeight * qreal(m_games.size()) + FooterHeight
           + (m_buttonsHidden ? 0 : ButtonsHeight) + Gap;
}

QVariantMap MyOrderTableViewCell::toRow() const
{
    QVariantList games;
    for (const MyOrderCellSubView &game : m_games)
        games.append(game.toRow());
    return {{QStringLiteral("orderId"), m_labelOrderId},
            {QStringLiteral("status"), m_labelStatus},
            {QStringLiteral("allPrice"), m_labelAllPrice},
            {QStringLiteral("couponPrice"), m_labelCouponPrice},
            {QStringLiteral("shouldPrice"), m_labelShouldPrice},
            {QStringLiteral("buttonsHidden"), m_buttonsHidden},
            {QStringLiteral("tag"), m_tag},
            {QStringLiteral("games"), games},
            {QStringLiteral("height"), height()}};
}
