#pragma once

#include <QString>
#include <QVariantMap>

// One entry of the library menu: its picture by type (coupons 0, games 1), the title and an arrow.
class LibraryViewCell
{
public:
    enum Type { Coupons = 0, Games = 1 };

    LibraryViewCell() = default;

    void setCellContentsWithType(int type, const QString &title);

    int type() const { return m_type; }
    QString labelTitle() const { return m_labelTitle; }
    QString imageIcon() const { return m_imageIcon; }

    // Display-ready values: identifier ("LibraryViewCell"), type, title, icon.
    QVariantMap toRow() const;

private:
    int m_type = Coupons;
    QString m_labelTitle;
    QString m_imageIcon;
};
