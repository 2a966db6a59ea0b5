#pragma once

#include "models/JSONModel.h"

#include <QString>

// One game of the home-page grid (an element of the "/products.json" answer).
struct Object_HomeGames : JSONModel
{
    Q_GADGET
    Q_PROPERTY(QString game_status MEMBER game_status)
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString list_price MEMBER list_price)
    Q_PROPERTY(QString sale_price MEMBER sale_price)
    Q_PROPERTY(QString install_type MEMBER install_type)
    Q_PROPERTY(QString code_type MEMBER code_type)
    Q_PROPERTY(QString product_image MEMBER product_image)
    Q_PROPERTY(QString release_date MEMBER release_date)
public:
    QString game_status;
    QString id;
    QString title;
    QString list_price;
    QString sale_price;
    QString install_type;
    QString code_type;
    QString product_image;
    QString release_date;

    bool operator==(const Object_HomeGames &) const = default;
};
