#pragma once

#include "screens/purchase/ComingSoonViewController.h"

// The user's coupons (opened from the library).
class MyCouponViewController : public ComingSoonViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("View controllers are created by C++")
public:
    explicit MyCouponViewController(QObject *parent = nullptr);
};
