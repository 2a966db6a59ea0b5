#pragma once

#include <QString>
#include <QVariantMap>

// One game line of an order row: the game's cover, its name and its price.
class MyOrderCellSubView
{
public:
    MyOrderCellSubView() = default;

    void setViewContentWithName(const QString &name, const QString &price);
    // The cover's address as the store sent it (absolute or a path of the store); may be empty.
    void setCoverAddress(const QString &address) { m_coverAddress = address; }

    QString labelName() const { return m_labelName; }
    QString labelPrice() const { return m_labelPrice; }

    // Display-ready values: name, price ("¥38") and cover (the picture's address at the width the
    // row shows it, empty without one).
    QVariantMap toRow() const;

    // The width the row shows a cover at, in points.
    static constexpr qreal CoverWidth = 96;

private:
    QString m_labelName;
    QString m_labelPrice;
    QString m_coverAddress;
};
