#include "screens/purchase/ConfirmOrderViewController.h"

ConfirmOrderViewController::ConfirmOrderViewController(const QStringList &gamesID, int type,
                                                       QObject *parent)
    : ComingSoonViewController(parent)
    , m_gamesID(gamesID)
    , m_type(type)
{ }

QString ConfirmOrderViewController::screenTitle() const
{
    return QStringLiteral("确认订单");
}

QString ConfirmOrderViewController::screenNote() const
{
    return QStringLiteral("订单确认与微信支付即将开放，敬请期待");
}
