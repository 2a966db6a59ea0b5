#pragma once

#include "models/JSONModel.h"

#include <QString>

// The answer to attaching a coupon code to an order.
struct Object_Coupon : JSONModel
{
    Q_GADGET
    Q_PROPERTY(QString amount MEMBER amount)
    Q_PROPERTY(QString code MEMBER code)
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString line_item_id MEMBER line_item_id)
    Q_PROPERTY(QString subtotal MEMBER subtotal)
public:
    QString amount;
    QString code;
    QString id;
    QString line_item_id;
    QString subtotal;

    bool operator==(const Object_Coupon &) const = default;
};
