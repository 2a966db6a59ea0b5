#pragma once

#include "screens/account/ComingSoonViewController.h"

// The user's coupons (opened from the library).
class MyCouponViewController : public ComingSoonViewController
{
    Q_OBJECT
public:
    explicit MyCouponViewController(QObject *parent = nullptr);

protected:
    void setRefleshDataAction() override { hideTabBar(true); }
    QString screenTitle() const override { return QStringLiteral("我的优惠券"); }
    QString screenNote() const override { return QStringLiteral("优惠券列表即将开放，敬请期待"); }
};
