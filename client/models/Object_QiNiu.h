#pragma once

#include "models/JSONModel.h"

#include <QHash>
#include <QString>

// One-time credentials for the avatar upload, from the user-info answer's "qiniu_params".
struct Object_QiNiu : JSONModel
{
    Q_GADGET
    Q_PROPERTY(QString token MEMBER token)
    Q_PROPERTY(QString account_id MEMBER account_id)
    Q_PROPERTY(QString timestamp MEMBER timestamp)
    Q_PROPERTY(QString tarvel_token MEMBER tarvel_token)
    Q_PROPERTY(QString bucket_name MEMBER bucket_name)
public:
    QString token;
    QString account_id;
    QString timestamp;
    QString tarvel_token;
    QString bucket_name;

    bool operator==(const Object_QiNiu &) const = default;

    static QHash<QString, QString> keyMapper()
    {
        return {{QStringLiteral("token"), QStringLiteral("token")},
                {QStringLiteral("x:account_id"), QStringLiteral("account_id")},
                {QStringLiteral("x:timestamp"), QStringLiteral("timestamp")},
                {QStringLiteral("x:tarvel_token"), QStringLiteral("tarvel_token")},
                {QStringLiteral("x:bucket_name"), QStringLiteral("bucket_name")}};
    }
};
