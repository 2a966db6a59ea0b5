#pragma once

#include <QString>
#include <QVariantMap>

// One game of the order at checkout: its name and its price through "¥%@".
class ConfirmOrderCell
{
public:
    void setCellContentWithName(const QString &name, const QString &price);

    QString labelName() const { return m_labelName; }
    QString labelPrice() const { return m_labelPrice; }

    // What the list binds: name, price.
    QVariantMap toRow() const;

private:
    QString m_labelName;
    QString m_labelPrice;
};
