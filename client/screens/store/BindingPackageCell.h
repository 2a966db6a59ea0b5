#pragma once

#include "models/Object_DLCOrBind.h"

#include <QString>
#include <QVariantMap>

// One DLC or bundle in a related-items list: name, current price and, in the discounted layout
// ("BindingPackageCell1"), the struck list price and the discount badge. "BindingPackageCell2" is
// the plain layout for items whose list and sale price texts are equal.
class BindingPackageCell
{
public:
    explicit BindingPackageCell(const QString &identifier);

    // The layout an item takes.
    static QString identifierForItem(const Object_DLCOrBind &item);
    // The cell of `item` in its layout.
    static BindingPackageCell cellForItem(const Object_DLCOrBind &item);

    // Prices are shown as "¥%@"; the discounted layout works out the discount itself when `OFF` is
    // empty.
    void setCellContentWithName(const QString &name, const QString &OFF, const QString &oldPrice,
                                const QString &nowPrice);

    QString identifier() const { return m_identifier; }
    bool isDiscounted() const;
    QString labelName() const { return m_labelName; }
    QString labelOFF() const { return m_labelOFF; }
    QString labelOldPrice() const { return m_labelOldPrice; }
    QString labelNowPrice() const { return m_labelNowPrice; }
    // The kind of item under its name ("DLC", "捆绑包").
    QString labelType() const { return m_labelType; }
    void setTypeName(const QString &typeName) { m_labelType = typeName; }
    // The item's id, whose "已拥有" mark follows the owned games.
    void setGameId(const QString &gameId) { m_gameId = gameId; }
    QString gameId() const { return m_gameId; }

    // Display-ready values: identifier, discounted, name, typeName, off, oldPrice, nowPrice,
    // gameId and owned.
    QVariantMap toRow() const;

private:
    QString m_identifier;
    QString m_labelName;
    QString m_labelOFF;
    QString m_labelOldPrice;
    QString m_labelNowPrice;
    QString m_labelType;
    QString m_gameId;
};
