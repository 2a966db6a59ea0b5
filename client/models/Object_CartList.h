#pragma once

#include "models/JSONModel.h"

#include <QString>

// One line (one game) of the shopping cart.
struct Object_CartList : JSONModel
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString type MEMBER type)
    Q_PROPERTY(QString list_price MEMBER list_price)
    Q_PROPERTY(QString sale_price MEMBER sale_price)
    Q_PROPERTY(QString product_image MEMBER product_image)
public:
    QString id;
    QString title;
    QString type;
    QString list_price;
    QString sale_price;
    QString product_image;

    bool operator==(const Object_CartList &) const = default;
};
