#include "screens/store/GoodsDetailSections.h"

#include "models/JSONModel.h"
#include "util/NSDateTools.h"
#include "util/NSStringUtils.h"

namespace {

enum WarningTone { PreSaleTone = 1, AgeTone = 2 };

GoodsDetailCell warning(const QString &title, const QString &icon, int tone, bool shown)
{
    GoodsDetailCell cell(QStringLiteral("GoodsDetailCell2"));
    cell.setCellContentWithTitle(title, icon, tone);
    cell.setHidden(!shown);
    return cell;
}

GoodsDetailCell fact(const QString &tag, const QString &value)
{
    GoodsDetailCell cell(QStringLiteral("GoodsDetailCell3"));
    cell.setCellContentWithTag(tag, value);
    return cell;
}

GoodsDetailCell link(int type, const QString &title, const QString &emphasis, int lookTag,
                     bool shown)
{
    GoodsDetailCell cell(QStringLiteral("GoodsDetailCell4"));
    cell.setCellContentWithType(type, title, emphasis);
    cell.setButtonLookTag(lookTag);
    cell.setHidden(!shown);
    return cell;
}

QDateTime releaseTime(const QString &releaseDate)
{
    return QDateTime::fromSecsSinceEpoch(NSStringUtils::intValue(releaseDate));
}

QString releaseDay(const QString &releaseDate)
{
    if (releaseDate.isEmpty())
        return QString();
    return releaseTime(releaseDate).toLocalTime().toString(QStringLiteral("yyyy-MM-dd"));
}

QString firstName(const QVariantList &entries)
{
    if (entries.isEmpty())
        return QString();
    return JSONModel::textFromJSON(entries.constFirst().toMap().value(QStringLiteral("name")));
}

} // namespace

QList<GoodsDetailSections::Section> GoodsDetailSections::build(const Object_GameDetail &game,
                                                               const QString &isPresell,
                                                               const QDateTime &now)
{
    return {notices(game, isPresell, now), facts(game), relatedItems(game), description(game)};
}

QString GoodsDetailSections::headerTitle(int section)
{
    switch (section) {
    case 1:
        return QStringLiteral("游戏信息");
    case 3:
        return QStringLiteral("游戏介绍");
    default:
        return QString();
    }
}

QString GoodsDetailSections::joinedNames(const QVariantList &entries)
{
    QStringList names;
    for (const QVariant &entry : entries)
        names.append(JSONModel::textFromJSON(entry.toMap().value(QStringLiteral("name"))));
    return names.join(QLatin1Char('/'));
}

GoodsDetailSections::Section GoodsDetailSections::notices(const Object_GameDetail &game,
                                                          const QString &isPresell,
                                                          const QDateTime &now)
{
    GoodsDetailCell blocked(QStringLiteral("GoodsDetailCell1"));
    blocked.setCellContentWithContent(GoodsDetailCell::blockedNotice());
    blocked.setHidden(game.blocked != QLatin1String("1"));

    const int days = NSDateTools::getDaysToDate(now, releaseTime(game.release_date));
    const QString baseGame = game.baseGameTitle();
    return {
            blocked,
            warning(QStringLiteral("距离预购结束还有%1天!").arg(days),
                    QStringLiteral("goodsDetail_warming_2"), PreSaleTone,
                    isPresell == QLatin1String("1")),
            warning(QStringLiteral("本游戏仅限%1岁玩家购买和使用!").arg(game.min_age),
                    QStringLiteral("goodsDetail_warming_1"), AgeTone, !game.min_age.isEmpty()),
            link(GoodsDetailCell::BaseGameLink,
                 QStringLiteral("需要本体游戏%1才能使用该拓展包!").arg(baseGame), baseGame,
                 LookBaseGame, game.hasParent),
    };
}

GoodsDetailSections::Section GoodsDetailSections::facts(const Object_GameDetail &game)
{
    return {
            fact(QStringLiteral("发行商"), firstName(game.publishers)),
            // Inner spaces intended: two-character labels line up with three-character ones.
            fact(QStringLiteral("类   型"), joinedNames(game.tags)),
            fact(QStringLiteral("发售日"), releaseDay(game.release_date)),
            fact(QStringLiteral("载   体"), game.pubtype),
            fact(QStringLiteral("语   言"), joinedNames(game.languages)),
    };
}

GoodsDetailSections::Section GoodsDetailSections::relatedItems(const Object_GameDetail &game)
{
    const QString bundles = QStringLiteral("(%1)").arg(game.included_bundles.size());
    const QString dlcs = QStringLiteral("(%1)").arg(game.dlcs.size());
    return {
            link(GoodsDetailCell::BundlesLink, QStringLiteral("包含此游戏的捆绑包") + bundles,
                 bundles, LookBundles, !game.included_bundles.isEmpty()),
            link(GoodsDetailCell::DlcsLink, QStringLiteral("包含此游戏的DLC") + dlcs, dlcs,
                 LookDlcs, !game.dlcs.isEmpty()),
    };
}

GoodsDetailSections::Section GoodsDetailSections::description(const Object_GameDetail &game)
{
    GoodsDetailCell cell(QStringLiteral("GoodsDetailCell5"));
    cell.setCellContentWithContent(game.raw_summary);
    return {cell};
}
