#pragma once

#include "models/JSONModel.h"

#include <QString>

// A downloadable content or a bundle listed on a game's detail page.
struct Object_DLCOrBind : JSONModel
{
    Q_GADGET
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString list_price MEMBER list_price)
    Q_PROPERTY(QString sale_price MEMBER sale_price)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString type_name MEMBER type_name)
public:
    QString id;
    QString list_price;
    QString sale_price;
    QString title;
    QString type_name;

    bool operator==(const Object_DLCOrBind &) const = default;
};
