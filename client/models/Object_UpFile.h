#pragma once

#include "models/JSONModel.h"

#include <QByteArray>
#include <QString>

// One file part of a multipart upload; built in code, never mapped from JSON.
struct Object_UpFile : JSONModel
{
    Q_GADGET
    Q_PROPERTY(QByteArray uploadFile MEMBER uploadFile)
    Q_PROPERTY(QString uploadName MEMBER uploadName)
    Q_PROPERTY(QString fileName MEMBER fileName)
    Q_PROPERTY(QString mimeType MEMBER mimeType)
public:
    QByteArray uploadFile;
    QString uploadName;
    QString fileName;
    QString mimeType;

    bool operator==(const Object_UpFile &) const = default;
};
