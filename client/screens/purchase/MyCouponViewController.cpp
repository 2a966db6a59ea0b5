#include "screens/purchase/MyCouponViewController.h"

MyCouponViewController::MyCouponViewController(QObject *parent)
    : ComingSoonViewController(QStringLiteral("我的优惠券"),
                               QStringLiteral("优惠券列表即将开放，敬请期待"), parent)
{ }
