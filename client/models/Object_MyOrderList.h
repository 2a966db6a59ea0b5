#pragma once

#include "models/JSONModel.h"

#include <QList>
#include <QString>

// One game of an order in the order history.
struct Object_MyOrderGames : JSONModel
{
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString tag MEMBER tag)
    Q_PROPERTY(QString price MEMBER price)
    Q_PROPERTY(QString product_image MEMBER product_image)
public:
    QString name;
    QString tag;
    QString price;
    // The game's cover, which the order history shows beside its name.
    QString product_image;

    bool operator==(const Object_MyOrderGames &) const = default;
};

// One order of the order history; `state` "in_checkout" marks an order not paid yet.
struct Object_MyOrderList : JSONModel
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString subtotal MEMBER subtotal)
    Q_PROPERTY(QString type MEMBER type)
    Q_PROPERTY(QString state MEMBER state)
    Q_PROPERTY(QString created_at MEMBER created_at)
    Q_PROPERTY(QList<Object_MyOrderGames> order_games MEMBER order_games)
public:
    QString id;
    QString subtotal;
    QString type;
    QString state;
    QString created_at;
    QList<Object_MyOrderGames> order_games;

    bool operator==(const Object_MyOrderList &) const = default;

    static ElementTypes arrayElementTypes()
    {
        return {{QStringLiteral("order_games"), elementType<Object_MyOrderGames>()}};
    }
};
