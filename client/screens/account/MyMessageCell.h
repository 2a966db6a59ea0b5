#pragma once

#include <QString>
#include <QVariantMap>

// One row of the message list: the read-state picture, the message's title and its time. The
// list's view draws `row()` with MyMessageCell.qml.
class MyMessageCell
{
public:
    enum Type { NotRead = 0, Read = 1 };

    static const QString noReadImage; // "mes_noRead"
    static const QString readImage; // "mes_read"

    // `type` picks the picture: 0 not read, anything else read.
    void setCellContentWithType(int type, const QString &message, const QString &time);

    QString imageName() const { return m_imageName; }
    QString message() const { return m_message; }
    QString time() const { return m_time; }
    // The display values under the roles "imageName", "title" and "time".
    QVariantMap row() const;

private:
    QString m_imageName;
    QString m_message;
    QString m_time;
};
