#pragma once

#include "models/JSONModel.h"

#include <QString>

// The signed-in user, built from the sign-in answer's "data" or the stored User.plist.
struct Object_User : JSONModel
{
    Q_GADGET
    Q_PROPERTY(QString nick_name MEMBER nick_name)
    Q_PROPERTY(QString email MEMBER email)
    Q_PROPERTY(QString account_id MEMBER account_id)
    Q_PROPERTY(QString token MEMBER token)
    Q_PROPERTY(QString avatar MEMBER avatar)
    Q_PROPERTY(QString phone_number MEMBER phone_number)
public:
    QString nick_name;
    QString email;
    QString account_id;
    QString token;
    QString avatar;
    QString phone_number;

    bool operator==(const Object_User &) const = default;
};
