#include "catalog/CatalogSeed.h"

#include "db/Database.h"

#include <QHash>

namespace CatalogSeed {

namespace {

const char *const kAttributes[] = {"tags", "os", "languages", "publishers", "developers"};

QStringList *attributeList(Product &product, const std::string &attribute)
{
    if (attribute == "tags")
        return &product.tags;
    if (attribute == "os")
        return &product.os;
    if (attribute == "languages")
        return &product.languages;
    if (attribute == "publishers")
        return &product.publishers;
    if (attribute == "developers")
        return &product.developers;
    return nullptr;
}

void writeProduct(SQLite::Database &db, const Product &p)
{
    SQLite::Statement insert(
            db, "INSERT INTO products (id, kind, title, alias_name, raw_summary, list_price, "
                "sale_price, release_date, min_age, blocked, parent_id, filesize, pubtype, "
                "install_type, code_type, manual, rec_rank, sales) "
                "VALUES (?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)");
    insert.bind(1, static_cast<int64_t>(p.id));
    Sql::bind(insert, 2, p.kind);
    Sql::bind(insert, 3, p.title);
    Sql::bind(insert, 4, p.aliasName);
    Sql::bind(insert, 5, p.rawSummary);
    insert.bind(6, static_cast<int64_t>(p.listPrice));
    insert.bind(7, static_cast<int64_t>(p.salePrice));
    insert.bind(8, static_cast<int64_t>(p.releaseDate));
    Sql::bind(insert, 9, p.minAge);
    insert.bind(10, p.blocked ? 1 : 0);
    if (p.parentId > 0)
        insert.bind(11, static_cast<int64_t>(p.parentId));
    else
        insert.bind(11);
    Sql::bind(insert, 12, p.filesize);
    Sql::bind(insert, 13, p.pubtype);
    Sql::bind(insert, 14, p.installType);
    Sql::bind(insert, 15, p.codeType);
    Sql::bind(insert, 16, p.manual);
    insert.bind(17, p.recRank);
    insert.bind(18, p.sales);
    insert.exec();

    Product copy = p;
    for (const char *attribute : kAttributes) {
        const QStringList &names = *attributeList(copy, attribute);
        for (int position = 0; position < names.size(); ++position) {
            SQLite::Statement row(db, "INSERT INTO product_attributes (product_id, attribute, "
                                      "position, name) VALUES (?, ?, ?, ?)");
            row.bind(1, static_cast<int64_t>(p.id));
            row.bind(2, attribute);
            row.bind(3, position);
            Sql::bind(row, 4, names.at(position));
            row.exec();
        }
    }
}

} // namespace

void write(SQLite::Database &db, const QList<Product> &products, const QList<FocusRec> &recs)
{
    for (const Product &product : products)
        writeProduct(db, product);
    for (const Product &product : products) {
        for (qint64 item : product.bundleItems) {
            SQLite::Statement row(db,
                                  "INSERT INTO bundle_items (bundle_id, product_id) VALUES (?, ?)");
            row.bind(1, static_cast<int64_t>(product.id));
            row.bind(2, static_cast<int64_t>(item));
            row.exec();
        }
    }
    for (const FocusRec &rec : recs) {
        SQLite::Statement row(db, "INSERT INTO focus_recs (position, title, url) VALUES (?, ?, ?)");
        row.bind(1, rec.position);
        Sql::bind(row, 2, rec.title);
        Sql::bind(row, 3, rec.url);
        row.exec();
    }
}

QList<Product> readProducts(SQLite::Database &db)
{
    QList<Product> products;
    QHash<qint64, qsizetype> index;
    SQLite::Statement query(
            db, "SELECT id, kind, title, alias_name, raw_summary, list_price, sale_price, "
                "release_date, min_age, blocked, parent_id, filesize, pubtype, install_type, "
                "code_type, manual, rec_rank, sales FROM products ORDER BY id");
    while (query.executeStep()) {
        Product p;
        p.id = query.getColumn(0).getInt64();
        p.kind = Sql::text(query.getColumn(1));
        p.title = Sql::text(query.getColumn(2));
        p.aliasName = Sql::text(query.getColumn(3));
        p.rawSummary = Sql::text(query.getColumn(4));
        p.listPrice = query.getColumn(5).getInt64();
        p.salePrice = query.getColumn(6).getInt64();
        p.releaseDate = query.getColumn(7).getInt64();
        p.minAge = Sql::text(query.getColumn(8));
        p.blocked = query.getColumn(9).getInt() != 0;
        p.parentId = query.getColumn(10).getInt64();
        p.filesize = Sql::text(query.getColumn(11));
        p.pubtype = Sql::text(query.getColumn(12));
        p.installType = Sql::text(query.getColumn(13));
        p.codeType = Sql::text(query.getColumn(14));
        p.manual = Sql::text(query.getColumn(15));
        p.recRank = query.getColumn(16).getInt();
        p.sales = query.getColumn(17).getInt();
        index.insert(p.id, products.size());
        products.append(p);
    }
    SQLite::Statement attributes(db, "SELECT product_id, attribute, name FROM product_attributes "
                                     "ORDER BY product_id, attribute, position");
    while (attributes.executeStep()) {
        const auto found = index.find(attributes.getColumn(0).getInt64());
        if (found == index.end())
            continue;
        if (QStringList *list
            = attributeList(products[*found], attributes.getColumn(1).getString()))
            list->append(Sql::text(attributes.getColumn(2)));
    }
    SQLite::Statement items(
            db, "SELECT bundle_id, product_id FROM bundle_items ORDER BY bundle_id, product_id");
    while (items.executeStep()) {
        const auto found = index.find(items.getColumn(0).getInt64());
        if (found != index.end())
            products[*found].bundleItems.append(items.getColumn(1).getInt64());
    }
    return products;
}

QList<FocusRec> readFocusRecs(SQLite::Database &db)
{
    QList<FocusRec> recs;
    SQLite::Statement query(db, "SELECT position, title, url FROM focus_recs ORDER BY position");
    while (query.executeStep())
        recs.append({query.getColumn(0).getInt(), Sql::text(query.getColumn(1)),
                     Sql::text(query.getColumn(2))});
    return recs;
}

} // namespace CatalogSeed
