#pragma once

#include "models/JSONModel.h"

#include <QString>

// The parameters of a WeChat payment request, from the payment-data answer's "params_info".
struct Object_WeChatInfo : JSONModel
{
    Q_GADGET
    Q_PROPERTY(QString appid MEMBER appid)
    Q_PROPERTY(QString noncestr MEMBER noncestr)
    Q_PROPERTY(QString package MEMBER package)
    Q_PROPERTY(QString partnerid MEMBER partnerid)
    Q_PROPERTY(QString prepayid MEMBER prepayid)
    Q_PROPERTY(QString sign MEMBER sign)
    Q_PROPERTY(QString timestamp MEMBER timestamp)
public:
    QString appid;
    QString noncestr;
    QString package;
    QString partnerid;
    QString prepayid;
    QString sign;
    QString timestamp;

    bool operator==(const Object_WeChatInfo &) const = default;
};
