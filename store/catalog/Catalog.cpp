#include "catalog/Catalog.h"

#include "catalog/CatalogSeed.h"
#include "core/Money.h"
#include "db/Database.h"

#include <algorithm>
#include <mutex>

namespace {

constexpr qint64 kAnswerLifetime = 60;
constexpr size_t kMaxCachedAnswers = 4096;

QJsonArray names(const QStringList &list)
{
    QJsonArray array;
    for (const QString &name : list)
        array.append(QJsonObject{{QStringLiteral("name"), name}});
    return array;
}

QString flag(bool value)
{
    return value ? QStringLiteral("1") : QStringLiteral("0");
}

} // namespace

void Catalog::load(Database &database)
{
    const QList<Product> products
            = database.read([](SQLite::Database &db) { return CatalogSeed::readProducts(db); });
    assign(products,
           database.read([](SQLite::Database &db) { return CatalogSeed::readFocusRecs(db); }));
}

void Catalog::assign(const QList<Product> &products, const QList<FocusRec> &focusRecs)
{
    m_focusRecs = focusRecs;
    m_products.assign(products.begin(), products.end());
    m_index.clear();
    m_dlcsOf.clear();
    m_bundlesWith.clear();
    for (size_t i = 0; i < m_products.size(); ++i) {
        const Product &product = m_products[i];
        m_index.insert(product.id, i);
        if (product.parentId > 0)
            m_dlcsOf[product.parentId].append(product.id);
        for (qint64 item : product.bundleItems)
            m_bundlesWith[item].append(product.id);
    }

    QList<const Product *> all;
    for (const Product &product : m_products)
        all.append(&product);
    auto sorted = [&](auto keep, auto before) {
        QList<const Product *> list;
        std::copy_if(all.begin(), all.end(), std::back_inserter(list), keep);
        std::stable_sort(list.begin(), list.end(), before);
        return list;
    };
    auto everything = [](const Product *) { return true; };
    m_sorted[int(Sort::Latest)] = sorted(everything, [](const Product *a, const Product *b) {
        return a->releaseDate != b->releaseDate ? a->releaseDate > b->releaseDate : a->id < b->id;
    });
    m_sorted[int(Sort::Rec)]
            = sorted([](const Product *p) { return p->recRank > 0; },
                     [](const Product *a, const Product *b) { return a->recRank < b->recRank; });
    m_sorted[int(Sort::OnSale)]
            = sorted([](const Product *p) { return p->salePrice < p->listPrice; },
                     [](const Product *a, const Product *b) {
                         // larger share off first: (list - sale) / list, compared without division
                         return (a->listPrice - a->salePrice) * b->listPrice
                                > (b->listPrice - b->salePrice) * a->listPrice;
                     });
    m_sorted[int(Sort::Top)] = sorted(
            everything, [](const Product *a, const Product *b) { return a->sales > b->sales; });
    std::unique_lock lock(m_cacheMutex);
    m_cache.clear();
}

const Product *Catalog::find(qint64 id) const
{
    const auto found = m_index.find(id);
    return found == m_index.end() ? nullptr : &m_products[*found];
}

std::optional<Catalog::Sort> Catalog::sortNamed(const QString &name)
{
    if (name == QLatin1String("latest"))
        return Sort::Latest;
    if (name == QLatin1String("rec"))
        return Sort::Rec;
    if (name == QLatin1String("onsale"))
        return Sort::OnSale;
    if (name == QLatin1String("top"))
        return Sort::Top;
    return std::nullopt;
}

QList<const Product *> Catalog::slice(const QList<const Product *> &all, int page)
{
    const qsizetype start = qsizetype(page - 1) * kPageSize;
    if (page < 1 || start >= all.size())
        return {};
    return all.mid(start, kPageSize);
}

QList<const Product *> Catalog::page(Sort sort, int page) const
{
    return slice(m_sorted.value(int(sort)), page);
}

QList<const Product *> Catalog::search(const QString &text, int page) const
{
    const QString needle = text.trimmed();
    QList<const Product *> titleHits;
    QList<const Product *> otherHits;
    for (const Product *product : m_sorted.value(int(Sort::Top))) {
        if (product->title.contains(needle, Qt::CaseInsensitive))
            titleHits.append(product);
        else if (product->aliasName.contains(needle, Qt::CaseInsensitive))
            otherHits.append(product);
    }
    return slice(titleHits + otherHits, page);
}

QString Catalog::coverUrl(const QString &baseUrl, qint64 id)
{
    return baseUrl + QStringLiteral("/pictures/covers/%1.jpg").arg(id);
}

QString Catalog::iconUrl(const QString &baseUrl, qint64 id)
{
    return baseUrl + QStringLiteral("/pictures/icons/%1.png").arg(id);
}

QString Catalog::bannerUrl(const QString &baseUrl, int position)
{
    return baseUrl + QStringLiteral("/pictures/banners/%1.jpg").arg(position);
}

QJsonArray Catalog::focusRecs(const QString &baseUrl) const
{
    QJsonArray recs;
    for (const FocusRec &rec : m_focusRecs) {
        recs.append(QJsonObject{{QStringLiteral("img"), bannerUrl(baseUrl, rec.position)},
                                {QStringLiteral("url"), rec.url},
                                {QStringLiteral("title"), rec.title}});
    }
    return recs;
}

QJsonObject Catalog::listEntry(const Product &p, const QString &baseUrl, qint64 now,
                               bool withSummary) const
{
    QJsonObject entry{
            {QStringLiteral("id"), p.id},
            {QStringLiteral("title"), p.title},
            {QStringLiteral("alias_name"), p.aliasName},
            {QStringLiteral("type"), p.kind},
            {QStringLiteral("type_name"), p.typeName()},
            {QStringLiteral("list_price"), Money::text(p.listPrice)},
            {QStringLiteral("sale_price"), Money::text(p.salePrice)},
            {QStringLiteral("install_type"), p.installType},
            {QStringLiteral("code_type"), p.codeType},
            {QStringLiteral("game_status"), p.gameStatus(now)},
            {QStringLiteral("available"), flag(!p.blocked)},
            {QStringLiteral("product_image"), coverUrl(baseUrl, p.id)},
            {QStringLiteral("icon_image"), iconUrl(baseUrl, p.id)},
            {QStringLiteral("release_date"), QString::number(p.releaseDate)},
    };
    if (withSummary)
        entry.insert(QStringLiteral("raw_summary"), p.rawSummary);
    return entry;
}

QJsonObject Catalog::related(const Product &p, const QString &baseUrl) const
{
    return QJsonObject{{QStringLiteral("id"), p.id},
                       {QStringLiteral("title"), p.title},
                       {QStringLiteral("type_name"), p.typeName()},
                       {QStringLiteral("list_price"), Money::text(p.listPrice)},
                       {QStringLiteral("sale_price"), Money::text(p.salePrice)},
                       {QStringLiteral("product_image"), coverUrl(baseUrl, p.id)}};
}

QJsonArray Catalog::relatedList(const QList<qint64> &ids, const QString &baseUrl) const
{
    QJsonArray list;
    for (qint64 id : ids) {
        if (const Product *product = find(id))
            list.append(related(*product, baseUrl));
    }
    return list;
}

QJsonObject Catalog::detail(const Product &p, const QString &baseUrl, qint64 now) const
{
    QJsonObject detail = listEntry(p, baseUrl, now, true);
    detail.insert(QStringLiteral("filesize"), p.filesize);
    detail.insert(QStringLiteral("tags"), names(p.tags));
    detail.insert(QStringLiteral("os"), names(p.os));
    detail.insert(QStringLiteral("languages"), names(p.languages));
    detail.insert(QStringLiteral("developers"), names(p.developers));
    detail.insert(QStringLiteral("publishers"), names(p.publishers));
    detail.insert(QStringLiteral("pubtype"), p.pubtype);
    detail.insert(QStringLiteral("manual"), p.manual);
    detail.insert(QStringLiteral("min_age"), p.minAge);
    detail.insert(QStringLiteral("blocked"), flag(p.blocked));
    detail.insert(QStringLiteral("dlcs"), relatedList(m_dlcsOf.value(p.id), baseUrl));
    detail.insert(QStringLiteral("included_bundles"),
                  relatedList(m_bundlesWith.value(p.id), baseUrl));
    if (p.kind == QLatin1String("bundle"))
        detail.insert(QStringLiteral("included_games"), relatedList(p.bundleItems, baseUrl));
    if (const Product *parent = p.parentId > 0 ? find(p.parentId) : nullptr) {
        const QJsonObject base{{QStringLiteral("id"), parent->id},
                               {QStringLiteral("title"), parent->title}};
        detail.insert(QStringLiteral("parent"), QJsonObject{{QStringLiteral("parent"), base}});
    }
    return detail;
}

QJsonObject Catalog::cartLine(const Product &p, const QString &baseUrl) const
{
    return QJsonObject{{QStringLiteral("id"), p.id},
                       {QStringLiteral("title"), p.title},
                       {QStringLiteral("type"), p.kind},
                       {QStringLiteral("type_name"), p.typeName()},
                       {QStringLiteral("list_price"), Money::text(p.listPrice)},
                       {QStringLiteral("sale_price"), Money::text(p.salePrice)},
                       {QStringLiteral("product_image"), coverUrl(baseUrl, p.id)}};
}

QByteArray Catalog::cachedAnswer(const std::string &key, qint64 now,
                                 const std::function<QByteArray()> &build)
{
    {
        std::shared_lock lock(m_cacheMutex);
        const auto found = m_cache.find(key);
        if (found != m_cache.end() && found->second.expiresAt > now)
            return found->second.body;
    }
    QByteArray body = build();
    std::unique_lock lock(m_cacheMutex);
    if (m_cache.size() >= kMaxCachedAnswers)
        m_cache.clear();
    m_cache[key] = CachedAnswer{body, now + kAnswerLifetime};
    return body;
}
