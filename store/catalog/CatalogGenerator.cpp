#include "catalog/CatalogGenerator.h"

#include "catalog/CatalogNames.h"

#include <algorithm>

using namespace CatalogNames;

namespace CatalogGenerator {

namespace {

constexpr qint64 kDay = 24 * 3600;
constexpr qint64 kFirstRelease = 1451613600; // 2016-01-01 10:00 in China

// SplitMix64: the same sequence everywhere, unlike the standard library's distributions.
class Dice
{
public:
    explicit Dice(quint64 seed)
        : m_state(seed)
    { }
    quint64 next()
    {
        quint64 z = (m_state += 0x9E3779B97F4A7C15ull);
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
        return z ^ (z >> 31);
    }
    int below(int bound) { return int(next() % quint64(bound)); }

private:
    quint64 m_state;
};

qint64 roundToTenFen(qint64 fen)
{
    return (fen + 5) / 10 * 10;
}

template<size_t N>
QStringList pickDistinct(Dice &dice, const std::array<const char16_t *, N> &words, int count)
{
    QStringList picked;
    while (picked.size() < count) {
        const QString word = text(words[size_t(dice.below(int(N)))]);
        if (!picked.contains(word))
            picked.append(word);
    }
    return picked;
}

QString summary(const Product &product, Dice &dice)
{
    return QStringLiteral("<p><strong>%1</strong>（%2）是一款%3游戏。</p><p>%4</p>"
                          "<ul><li>%5</li><li>%6</li></ul>")
            .arg(product.title.toHtmlEscaped(), product.aliasName.toHtmlEscaped(),
                 product.tags.join(QStringLiteral("、")),
                 text(kSentences[size_t(dice.below(int(kSentences.size())))]),
                 text(kFeatures[size_t(dice.below(3))]),
                 text(kFeatures[size_t(3 + dice.below(3))]));
}

void setCarrier(Product &product, Dice &dice)
{
    const Carrier &carrier = kCarriers[size_t(dice.below(int(kCarriers.size())))];
    product.pubtype = text(carrier.pubtype);
    product.installType = QString::fromLatin1(carrier.installType);
    product.codeType = QStringLiteral("cdkey");
    product.manual = QStringLiteral("在%1中选择“激活产品”，输入购买后获得的激活码即可下载游戏。")
                             .arg(text(carrier.client));
}

void discount(Product &product, Dice &dice, int chanceInTen)
{
    product.salePrice = product.listPrice;
    if (dice.below(10) < chanceInTen) {
        const int percent = 10 + dice.below(14) * 5;
        product.salePrice = roundToTenFen(product.listPrice * (100 - percent) / 100);
    }
}

Product game(int index, qint64 now)
{
    Dice dice(quint64(index) * 7919u + 17u);
    const Pair &prefix = kPrefixes[size_t(index % 12)];
    const Pair &suffix = kSuffixes[size_t((index / 12 + (index % 12) * 3) % 10)];
    Product product;
    product.id = index + 1;
    product.kind = QStringLiteral("game");
    product.title = text(prefix.chinese) + text(suffix.chinese);
    product.aliasName = QString::fromLatin1(prefix.english) + QLatin1Char(' ')
                        + QString::fromLatin1(suffix.english);
    product.listPrice = kGamePrices[size_t(dice.below(int(kGamePrices.size())))] * 100;
    discount(product, dice, 4);
    product.releaseDate = index % 13 == 5 ? now + (10 + index) * kDay
                                          : kFirstRelease + dice.below(365 * 8) * kDay;
    product.minAge = index % 6 == 0   ? QStringLiteral("18")
                     : index % 6 == 3 ? QStringLiteral("12")
                                      : QStringLiteral("");
    product.blocked = index == 41;
    setCarrier(product, dice);
    product.tags = pickDistinct(dice, kTags, 2 + dice.below(2));
    product.os = {QStringLiteral("Win")};
    if (dice.below(3) == 0)
        product.os.append(QStringLiteral("Linux"));
    if (dice.below(4) == 0)
        product.os.append(QStringLiteral("Mac"));
    product.languages = QStringList{QStringLiteral("简体中文")}
                        + pickDistinct(dice, kLanguages, 1 + dice.below(3));
    product.publishers = pickDistinct(dice, kPublishers, 1);
    product.developers = pickDistinct(dice, kDevelopers, 1 + dice.below(2));
    product.filesize
            = QString::number((dice.below(795) + 5) / 10.0, 'f', 1) + QStringLiteral(" GB");
    product.recRank = index % 3 == 0 ? (index / 3 * 7) % 34 + 1 : 0;
    product.sales = dice.below(50000);
    product.rawSummary = summary(product, dice);
    return product;
}

Product dlc(int index, const Product &parent)
{
    Dice dice(quint64(index) * 104729u + 3u);
    const int round = index / 25;
    const Pair &name = kDlcNames[size_t((index % 25 + round * 3) % int(kDlcNames.size()))];
    Product product = parent;
    product.id = 101 + index;
    product.kind = QStringLiteral("dlc");
    product.title = parent.title + QStringLiteral("：") + text(name.chinese);
    product.aliasName = parent.aliasName + QStringLiteral(": ") + QString::fromLatin1(name.english);
    product.listPrice = kDlcPrices[size_t(dice.below(int(kDlcPrices.size())))] * 100;
    discount(product, dice, 3);
    product.releaseDate = parent.releaseDate + (round + 1) * 30 * kDay;
    product.blocked = false;
    product.parentId = parent.id;
    product.filesize = QString::number(50 + dice.below(2950)) + QStringLiteral(" MB");
    product.recRank = 0;
    product.sales = dice.below(8000);
    product.bundleItems.clear();
    product.rawSummary
            = QStringLiteral(
                      "<p>《%1》的扩展内容：<strong>%2</strong>。</p><p>需要本体游戏才能使用。</p>")
                      .arg(parent.title.toHtmlEscaped(), text(name.chinese));
    return product;
}

Product bundle(qint64 id, const QString &title, const QString &alias, const QList<Product> &items,
               int percentOfList)
{
    Product product = items.first();
    product.id = id;
    product.kind = QStringLiteral("bundle");
    product.title = title;
    product.aliasName = alias;
    product.parentId = 0;
    product.blocked = false;
    product.listPrice = 0;
    product.releaseDate = 0;
    product.bundleItems.clear();
    for (const Product &item : items) {
        product.listPrice += item.listPrice;
        product.releaseDate = std::max(product.releaseDate, item.releaseDate);
        product.minAge = std::max(product.minAge, item.minAge);
        product.bundleItems.append(item.id);
    }
    product.salePrice = roundToTenFen(product.listPrice * percentOfList / 100);
    product.tags = QStringList{QStringLiteral("合集"), items.first().tags.first()};
    product.os = {QStringLiteral("Win")};
    product.recRank = 0;
    product.sales = int(id % 7) * 311;
    QStringList names;
    for (const Product &item : items)
        names.append(QStringLiteral("<li>%1</li>").arg(item.title.toHtmlEscaped()));
    product.rawSummary = QStringLiteral("<p><strong>%1</strong>包含以下%2款内容：</p><ul>%3</ul>")
                                 .arg(title.toHtmlEscaped())
                                 .arg(items.size())
                                 .arg(names.join(QString()));
    return product;
}

QList<Product> collection(const QList<Product> &games, const QString &tag)
{
    QList<Product> picked;
    for (const Product &game : games) {
        if (picked.size() == 4)
            break;
        if (!game.blocked && game.tags.contains(tag))
            picked.append(game);
    }
    return picked;
}

} // namespace

QList<Product> products(qint64 now)
{
    QList<Product> games;
    for (int i = 0; i < kGames; ++i)
        games.append(game(i, now));

    QList<Product> dlcs;
    for (int j = 0; j < kDlcs; ++j)
        dlcs.append(dlc(j, games.at((j % 25) * 4)));

    QList<Product> bundles;
    qint64 nextId = 101 + kDlcs;
    for (int b = 0; b < 10; ++b) {
        const Product &base = games.at(b * 8);
        QList<Product> items{base};
        for (const Product &extra : dlcs) {
            if (extra.parentId == base.id)
                items.append(extra);
        }
        bundles.append(bundle(nextId++, base.title + QStringLiteral("完整版"),
                              base.aliasName + QStringLiteral(" Complete Edition"), items, 70));
    }
    const int themeTags[] = {0, 7, 3, 8, 2};
    for (int c = 0; c < 5; ++c) {
        QList<Product> items = collection(games, text(kTags[size_t(themeTags[c])]));
        for (int fill = 0; items.size() < 3; ++fill)
            items.append(games.at(c * 10 + fill));
        bundles.append(bundle(nextId++, text(kCollections[size_t(c)].chinese),
                              QString::fromLatin1(kCollections[size_t(c)].english), items, 60));
    }
    return games + dlcs + bundles;
}

QList<FocusRec> focusRecs(const QList<Product> &products, qint64 now)
{
    qint64 presale = 0;
    qint64 bargain = 0;
    qint64 bestDiscount = 0;
    qint64 firstBundle = 0;
    for (const Product &product : products) {
        if (!presale && product.kind == QLatin1String("game") && product.isPresale(now))
            presale = product.id;
        const qint64 off = product.listPrice - product.salePrice;
        if (product.kind == QLatin1String("game") && !product.blocked
            && off * 100 > bestDiscount * product.listPrice) {
            bestDiscount = off * 100 / std::max<qint64>(product.listPrice, 1);
            bargain = product.id;
        }
        if (!firstBundle && product.kind == QLatin1String("bundle"))
            firstBundle = product.id;
    }
    return {
            {1, QStringLiteral("新作预售"), QStringLiteral("/products/%1").arg(presale)},
            {2, QStringLiteral("限时特惠"), QStringLiteral("/products/%1").arg(bargain)},
            {3, QStringLiteral("超值合集"), QStringLiteral("/products/%1").arg(firstBundle)},
            {4, QStringLiteral("夏日游戏节"),
             QStringLiteral("https://www.example.com/tarvel/summer-sale")},
            {5, QStringLiteral("玩家社区"),
             QStringLiteral("https://www.example.com/tarvel/community")},
    };
}

} // namespace CatalogGenerator
