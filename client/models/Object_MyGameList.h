#pragma once

#include "models/JSONModel.h"

#include <QString>

// One game the user owns; the service sends these keys in camel case.
struct Object_MyGameList : JSONModel
{
    Q_GADGET
    Q_PROPERTY(QString gameId MEMBER gameId)
    Q_PROPERTY(QString gameIcon MEMBER gameIcon)
    Q_PROPERTY(QString productImage MEMBER productImage)
public:
    QString gameId;
    QString gameIcon;
    QString productImage;

    bool operator==(const Object_MyGameList &) const = default;
};
