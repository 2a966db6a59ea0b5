#include "screens/purchase/ConfirmOrderViewController.h"

ConfirmOrderViewController::ConfirmOrderViewController(const QStringList &gamesID, int type,
                                                       QObject *parent)
    : ComingSoonViewController(QStringLiteral("确认订单"),
                               QStringLiteral("订单确认与微信支付即将开放，敬请期待"), parent)
    , m_gamesID(gamesID)
    , m_type(type)
{ }
