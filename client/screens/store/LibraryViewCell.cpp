#include "screens/store/LibraryViewCell.h"

void LibraryViewCell::setCellContentsWithType(int type, const QString &title)
{
    m_type = type;
    m_labelTitle = title;
    m_imageIcon
            = type == Games ? QStringLiteral("library_games") : QStringLiteral("library_coupon");
}

QVariantMap LibraryViewCell::toRow() const
{
    return {
            {QStringLiteral("identifier"), QStringLiteral("LibraryViewCell")},
            {QStringLiteral("type"), m_type},
            {QStringLiteral("title"), m_labelTitle},
            {QStringLiteral("icon"), m_imageIcon},
    };
}
