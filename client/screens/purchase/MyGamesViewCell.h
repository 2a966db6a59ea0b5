#pragma once

#include <QString>
#include <QVariantMap>

// One owned game in the grid: its cover, sized for the cell.
class MyGamesViewCell
{
public:
    // `cellWidth` in points (the grid's two columns, as the store grids lay them out).
    MyGamesViewCell(qreal cellWidth, qreal scale);

    void setCellContentWithImage(const QString &productImage);
    QString imageGoods() const { return m_imageGoods; }

    // What the grid binds: imageUrl.
    QVariantMap toRow() const;

private:
    qreal m_cellWidth;
    qreal m_scale;
    QString m_imageGoods;
};
