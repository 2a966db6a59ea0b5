#pragma once

#include "models/JSONModel.h"

#include <QList>
#include <QString>
#include <QVariantList>

// One game of an order at checkout.
struct Object_OrderDetailGames : JSONModel
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString type_name MEMBER type_name)
    Q_PROPERTY(QString price MEMBER price)
public:
    QString id;
    QString title;
    QString type_name;
    QString price;

    bool operator==(const Object_OrderDetailGames &) const = default;
};

// An order at checkout. `payment_methods` and `order_line_items` stay raw dictionaries: each
// payment method's "name" is what is sent as "payment_method"; each line item is an attached coupon
// with "type_value" (the code), "amount" and "id" (used to detach it).
struct Object_OrderDetail : JSONModel
{
    Q_GADGET
    Q_PROPERTY(QList<Object_OrderDetailGames> order_games MEMBER order_games)
    Q_PROPERTY(QString order_subtotal MEMBER order_subtotal)
    Q_PROPERTY(QVariantList payment_methods MEMBER payment_methods)
    Q_PROPERTY(QString order_id MEMBER order_id)
    Q_PROPERTY(QVariantList order_line_items MEMBER order_line_items)
public:
    QList<Object_OrderDetailGames> order_games;
    QString order_subtotal;
    QVariantList payment_methods;
    QString order_id;
    QVariantList order_line_items;

    bool operator==(const Object_OrderDetail &) const = default;

    static ElementTypes arrayElementTypes()
    {
        return {{QStringLiteral("order_games"), elementType<Object_OrderDetailGames>()}};
    }
};
