#pragma once

#include "models/JSONModel.h"

#include <QString>

// One game of the search results (an element of the "/store/search.json" answer).
struct Object_SearchGames : JSONModel
{
    Q_GADGET
    Q_PROPERTY(QString raw_summary MEMBER raw_summary)
    Q_PROPERTY(QString release_date MEMBER release_date)
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString sale_price MEMBER sale_price)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString type_name MEMBER type_name)
    Q_PROPERTY(QString available MEMBER available)
    Q_PROPERTY(QString install_type MEMBER install_type)
    Q_PROPERTY(QString list_price MEMBER list_price)
    Q_PROPERTY(QString game_status MEMBER game_status)
    Q_PROPERTY(QString code_type MEMBER code_type)
    Q_PROPERTY(QString product_image MEMBER product_image)
public:
    QString raw_summary;
    QString release_date;
    QString id;
    QString sale_price;
    QString title;
    QString type_name;
    QString available;
    QString install_type;
    QString list_price;
    QString game_status;
    QString code_type;
    QString product_image;

    bool operator==(const Object_SearchGames &) const = default;
};
