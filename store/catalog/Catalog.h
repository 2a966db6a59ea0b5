#pragma once

#include "catalog/Product.h"

#include <QByteArray>
#include <QHash>
#include <QJsonArray>
#include <QJsonObject>

#include <functional>
#include <optional>
#include <shared_mutex>
#include <string>
#include <unordered_map>
#include <vector>

class Database;

// The catalogue as the service answers it. Products do not change while the service runs, so
// they are read once into memory, and finished answers are kept for a minute (their pre-sale
// state depends on the time).
class Catalog
{
public:
    enum class Sort { Latest, Rec, OnSale, Top };
    static constexpr int kPageSize = 20;

    void load(Database &database);
    void assign(const QList<Product> &products, const QList<FocusRec> &focusRecs);

    const Product *find(qint64 id) const;
    int size() const { return int(m_products.size()); }
    const std::vector<Product> &products() const { return m_products; }

    static std::optional<Sort> sortNamed(const QString &name);
    // One page (1-based); an empty list after the end.
    QList<const Product *> page(Sort sort, int page) const;
    QList<const Product *> search(const QString &text, int page) const;

    QJsonArray focusRecs(const QString &baseUrl) const;
    QList<FocusRec> focusRecList() const { return m_focusRecs; }
    QJsonObject listEntry(const Product &product, const QString &baseUrl, qint64 now,
                          bool withSummary) const;
    QJsonObject detail(const Product &product, const QString &baseUrl, qint64 now) const;
    QJsonObject related(const Product &product, const QString &baseUrl) const;
    QJsonObject cartLine(const Product &product, const QString &baseUrl) const;

    static QString coverUrl(const QString &baseUrl, qint64 id);
    static QString iconUrl(const QString &baseUrl, qint64 id);
    static QString bannerUrl(const QString &baseUrl, int position);

    // A finished answer for `key`, built by `build` when missing or older than a minute.
    QByteArray cachedAnswer(const std::string &key, qint64 now,
                            const std::function<QByteArray()> &build);

private:
    QJsonArray relatedList(const QList<qint64> &ids, const QString &baseUrl) const;
    static QList<const Product *> slice(const QList<const Product *> &all, int page);

    std::vector<Product> m_products;
    QHash<qint64, size_t> m_index;
    QHash<qint64, QList<qint64>> m_dlcsOf;
    QHash<qint64, QList<qint64>> m_bundlesWith;
    QList<FocusRec> m_focusRecs;
    QHash<int, QList<const Product *>> m_sorted;

    struct CachedAnswer
    {
        QByteArray body;
        qint64 expiresAt = 0;
    };
    std::shared_mutex m_cacheMutex;
    std::unordered_map<std::string, CachedAnswer> m_cache;
};
