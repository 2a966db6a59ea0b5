#include "StoreSeed.h"

#include "accounts/Accounts.h"
#include "catalog/Catalog.h"
#include "catalog/CatalogGenerator.h"
#include "catalog/CatalogSeed.h"
#include "core/Crypto.h"
#include "db/Database.h"
#include "shop/Cart.h"
#include "shop/Coupons.h"
#include "shop/Orders.h"

namespace StoreSeed {

namespace {

constexpr qint64 kDay = 24 * 3600;
constexpr qint64 kYuan = 100;

struct DemoAccount
{
    QString phoneNumber;
    QString email;
    QString nickName;
    int gender;
    QString couponPrefix;
    QList<qint64> owned;
    QList<qint64> cart;
    qint64 completedGame; // bought with a coupon
    qint64 unpaidGame;
    qint64 canceledGame;
    qint64 pendingGame;
};

bool seeded(SQLite::Database &db)
{
    SQLite::Statement query(db, "SELECT 1 FROM meta WHERE key = 'seeded_at'");
    return query.executeStep();
}

QList<const Product *> products(const Catalog &catalog, const QList<qint64> &ids)
{
    QList<const Product *> found;
    for (qint64 id : ids) {
        if (const Product *product = catalog.find(id))
            found.append(product);
    }
    return found;
}

void seedOrders(SQLite::Database &db, const Catalog &catalog, const DemoAccount &demo,
                qint64 accountId, qint64 now)
{
    const QString usedCode = demo.couponPrefix + QStringLiteral("WELCOME5");
    Coupons::create(db, usedCode, 5 * kYuan, 0, accountId, now + 365 * kDay);
    const qint64 completedId
            = Orders::create(db, accountId, products(catalog, {demo.completedGame}),
                             QStringLiteral("one_key"), now - 20 * kDay);
    Coupons::attach(db, *Orders::find(db, completedId), usedCode, now - 20 * kDay);
    Orders::complete(db, catalog, *Orders::find(db, completedId), QStringLiteral("wechat"),
                     now - 20 * kDay);

    Orders::create(db, accountId, products(catalog, {demo.unpaidGame}), QStringLiteral("cart"),
                   now - 2 * kDay);
    const qint64 canceledId = Orders::create(db, accountId, products(catalog, {demo.canceledGame}),
                                             QStringLiteral("one_key"), now - 9 * kDay);
    Orders::cancel(db, *Orders::find(db, canceledId));
    const qint64 pendingId = Orders::create(db, accountId, products(catalog, {demo.pendingGame}),
                                            QStringLiteral("one_key"), now - kDay);
    SQLite::Statement pending(db, "UPDATE orders SET state = 'pending' WHERE id = ?");
    pending.bind(1, static_cast<int64_t>(pendingId));
    pending.exec();
}

void seedAccount(SQLite::Database &db, const Catalog &catalog, const DemoAccount &demo, qint64 now)
{
    const qint64 accountId
            = Accounts::create(db, demo.phoneNumber, demo.email,
                               Crypto::hashPassword(QString::fromLatin1(kDemoPassword)),
                               demo.nickName, true, now - 60 * kDay);
    Accounts::setProfile(db, accountId, demo.nickName, demo.gender, Accounts::kDefaultAvatar);
    for (qint64 productId : demo.owned)
        Library::grant(db, accountId, productId, 0, now - 30 * kDay);
    for (qint64 productId : demo.cart)
        Cart::add(db, accountId, productId, now - kDay);
    Coupons::create(db, demo.couponPrefix + QStringLiteral("15"), 15 * kYuan, 50 * kYuan, accountId,
                    now + 365 * kDay);
    Coupons::create(db, demo.couponPrefix + QStringLiteral("30"), 30 * kYuan, 150 * kYuan,
                    accountId, now + 365 * kDay);
    seedOrders(db, catalog, demo, accountId, now);
}

void seedPublicCoupons(SQLite::Database &db, qint64 now)
{
    Coupons::create(db, QStringLiteral("WELCOME10"), 10 * kYuan, 30 * kYuan, 0, now + 365 * kDay);
    Coupons::create(db, QStringLiteral("SAVE20"), 20 * kYuan, 100 * kYuan, 0, now + 365 * kDay);
    Coupons::create(db, QStringLiteral("BIG50"), 50 * kYuan, 200 * kYuan, 0, now + 365 * kDay);
}

} // namespace

bool seedIfEmpty(Database &database, qint64 now)
{
    return database.write([&](SQLite::Database &db) {
        if (seeded(db))
            return false;
        const QList<Product> generated = CatalogGenerator::products(now);
        const QList<FocusRec> recs = CatalogGenerator::focusRecs(generated, now);
        CatalogSeed::write(db, generated, recs);
        Catalog catalog;
        catalog.assign(generated, recs);

        seedPublicCoupons(db, now);
        seedAccount(db, catalog,
                    DemoAccount{QString::fromLatin1(kDemoPhone),
                                QString(),
                                QStringLiteral("演示玩家"),
                                0,
                                QStringLiteral("PHONE"),
                                {3, 8, 15, 22, 101},
                                {5, 12},
                                31,
                                17,
                                26,
                                44},
                    now);
        seedAccount(db, catalog,
                    DemoAccount{QString(),
                                QString::fromLatin1(kDemoEmail),
                                QStringLiteral("邮箱玩家"),
                                1,
                                QStringLiteral("MAIL"),
                                {2, 9, 14, 102, 146},
                                {7, 20, 103},
                                33,
                                18,
                                27,
                                45},
                    now);

        SQLite::Statement mark(db, "INSERT INTO meta (key, value) VALUES ('seeded_at', ?)");
        mark.bind(1, static_cast<int64_t>(now));
        mark.exec();
        return true;
    });
}

} // namespace StoreSeed
