#pragma once

#include "models/Object_GameDetail.h"
#include "screens/store/GoodsDetailCell.h"

#include <QDateTime>
#include <QList>
#include <QString>
#include <QVariantList>

// The grouped table of a loaded game: always four sections of 4, 5, 2 and 1 rows (notices, facts,
// related items, description). Rows that do not apply are hidden, never removed.
class GoodsDetailSections
{
public:
    GoodsDetailSections() = delete;

    using Section = QList<GoodsDetailCell>;

    // See-button tags of the link rows.
    enum LookTag { LookBaseGame = 0, LookBundles = 1, LookDlcs = 2 };

    static QList<Section> build(const Object_GameDetail &game, const QString &isPresell,
                                const QDateTime &now);
    // "游戏信息" over section 1, "游戏介绍" over section 3, nothing over the others.
    static QString headerTitle(int section);
    // The "name" values of `entries` joined by "/".
    static QString joinedNames(const QVariantList &entries);

private:
    static Section notices(const Object_GameDetail &game, const QString &isPresell,
                           const QDateTime &now);
    static Section facts(const Object_GameDetail &game);
    static Section relatedItems(const Object_GameDetail &game);
    static Section description(const Object_GameDetail &game);
};
