#include "screens/store/NewsTableViewCell.h"

const QString NewsTableViewCell::Identifier = QStringLiteral("NewsTableViewCell");

QString NewsTableViewCell::tag() const
{
    return QStringLiteral("公告");
}

QString NewsTableViewCell::title() const
{
    return QStringLiteral("Tarvel 游戏商城资讯与活动公告");
}

QVariantMap NewsTableViewCell::row() const
{
    return {{QStringLiteral("identifier"), Identifier},
            {QStringLiteral("tag"), tag()},
            {QStringLiteral("title"), title()},
            {QStringLiteral("height"), Height}};
}
