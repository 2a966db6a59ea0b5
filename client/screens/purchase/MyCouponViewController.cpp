#include "screens/purchase/MyCouponViewController.h"

MyCouponViewController::MyCouponViewController(QObject *parent)
    : ComingSoonViewController(parent)
{ }
