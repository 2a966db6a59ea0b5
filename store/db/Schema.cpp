#include "db/Schema.h"

#include <SQLiteCpp/Database.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

#include <stdexcept>
#include <string>

namespace Schema {

namespace {

const char *const kVersion1 = R"sql(
CREATE TABLE meta (key TEXT PRIMARY KEY, value TEXT NOT NULL);

CREATE TABLE products (
    id INTEGER PRIMARY KEY,
    kind TEXT NOT NULL CHECK (kind IN ('game', 'dlc', 'bundle')),
    title TEXT NOT NULL,
    alias_name TEXT NOT NULL,
    raw_summary TEXT NOT NULL,
    list_price INTEGER NOT NULL,
    sale_price INTEGER NOT NULL,
    release_date INTEGER NOT NULL,
    min_age TEXT NOT NULL DEFAULT '',
    blocked INTEGER NOT NULL DEFAULT 0,
    parent_id INTEGER REFERENCES products(id),
    filesize TEXT NOT NULL,
    pubtype TEXT NOT NULL,
    install_type TEXT NOT NULL,
    code_type TEXT NOT NULL,
    manual TEXT NOT NULL,
    rec_rank INTEGER NOT NULL DEFAULT 0,
    sales INTEGER NOT NULL DEFAULT 0
);
CREATE INDEX products_parent ON products(parent_id);

-- tags, os, languages, publishers, developers: one row per name, in display order
CREATE TABLE product_attributes (
    product_id INTEGER NOT NULL REFERENCES products(id),
    attribute TEXT NOT NULL,
    position INTEGER NOT NULL,
    name TEXT NOT NULL,
    PRIMARY KEY (product_id, attribute, position)
);

CREATE TABLE bundle_items (
    bundle_id INTEGER NOT NULL REFERENCES products(id),
    product_id INTEGER NOT NULL REFERENCES products(id),
    PRIMARY KEY (bundle_id, product_id)
);
CREATE INDEX bundle_items_product ON bundle_items(product_id);

CREATE TABLE focus_recs (
    position INTEGER PRIMARY KEY,
    title TEXT NOT NULL,
    url TEXT NOT NULL
);

CREATE TABLE accounts (
    id INTEGER PRIMARY KEY,
    phone_number TEXT UNIQUE,
    email TEXT UNIQUE COLLATE NOCASE,
    password_hash TEXT NOT NULL,
    nick_name TEXT NOT NULL,
    gender INTEGER NOT NULL DEFAULT 2,
    avatar TEXT NOT NULL DEFAULT '',
    confirmed INTEGER NOT NULL DEFAULT 0,
    failed_sign_ins INTEGER NOT NULL DEFAULT 0,
    locked_at INTEGER,
    created_at INTEGER NOT NULL
);

-- session ids and mail tokens are kept as hashes only
CREATE TABLE sessions (
    id_hash TEXT PRIMARY KEY,
    account_id INTEGER REFERENCES accounts(id),
    token TEXT,
    captcha TEXT,
    captcha_at INTEGER,
    captcha_tries INTEGER NOT NULL DEFAULT 0,
    phone_checked_at INTEGER,
    created_at INTEGER NOT NULL,
    expires_at INTEGER NOT NULL
);
CREATE INDEX sessions_account ON sessions(account_id);

CREATE TABLE sms_codes (
    id INTEGER PRIMARY KEY,
    phone_number TEXT NOT NULL,
    purpose TEXT NOT NULL,
    code TEXT NOT NULL,
    created_at INTEGER NOT NULL,
    expires_at INTEGER NOT NULL,
    attempts INTEGER NOT NULL DEFAULT 0,
    used_at INTEGER
);
CREATE INDEX sms_codes_phone ON sms_codes(phone_number, created_at);

CREATE TABLE mail_tokens (
    token_hash TEXT PRIMARY KEY,
    account_id INTEGER NOT NULL REFERENCES accounts(id),
    purpose TEXT NOT NULL,
    expires_at INTEGER NOT NULL,
    used_at INTEGER
);

CREATE TABLE outbox (
    id INTEGER PRIMARY KEY,
    channel TEXT NOT NULL CHECK (channel IN ('sms', 'mail')),
    recipient TEXT NOT NULL,
    subject TEXT NOT NULL,
    body TEXT NOT NULL,
    code TEXT NOT NULL DEFAULT '',
    link TEXT NOT NULL DEFAULT '',
    created_at INTEGER NOT NULL
);
CREATE INDEX outbox_recipient ON outbox(recipient, id);

CREATE TABLE cart_items (
    account_id INTEGER NOT NULL REFERENCES accounts(id),
    product_id INTEGER NOT NULL REFERENCES products(id),
    added_at INTEGER NOT NULL,
    PRIMARY KEY (account_id, product_id)
);

CREATE TABLE orders (
    id INTEGER PRIMARY KEY,
    account_id INTEGER NOT NULL REFERENCES accounts(id),
    state TEXT NOT NULL CHECK (state IN ('in_checkout', 'completed', 'canceled', 'pending')),
    source TEXT NOT NULL,
    payment_method TEXT NOT NULL DEFAULT '',
    created_at INTEGER NOT NULL,
    completed_at INTEGER
);
CREATE INDEX orders_account ON orders(account_id, state, id);

CREATE TABLE order_games (
    order_id INTEGER NOT NULL REFERENCES orders(id),
    product_id INTEGER NOT NULL REFERENCES products(id),
    title TEXT NOT NULL,
    type_name TEXT NOT NULL,
    price INTEGER NOT NULL,
    PRIMARY KEY (order_id, product_id)
);

CREATE TABLE coupons (
    id INTEGER PRIMARY KEY,
    code TEXT NOT NULL UNIQUE COLLATE NOCASE,
    amount INTEGER NOT NULL,
    minimum INTEGER NOT NULL,
    account_id INTEGER REFERENCES accounts(id),
    expires_at INTEGER NOT NULL,
    used_order_id INTEGER REFERENCES orders(id),
    used_at INTEGER
);

-- ids are never reused: a client may still hold the id of a removed line
CREATE TABLE order_line_items (
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    order_id INTEGER NOT NULL REFERENCES orders(id),
    item_type TEXT NOT NULL,
    coupon_id INTEGER NOT NULL REFERENCES coupons(id),
    type_value TEXT NOT NULL,
    amount INTEGER NOT NULL
);
CREATE INDEX order_line_items_order ON order_line_items(order_id);
CREATE INDEX order_line_items_coupon ON order_line_items(coupon_id);

CREATE TABLE owned_games (
    account_id INTEGER NOT NULL REFERENCES accounts(id),
    product_id INTEGER NOT NULL REFERENCES products(id),
    order_id INTEGER REFERENCES orders(id),
    acquired_at INTEGER NOT NULL,
    PRIMARY KEY (account_id, product_id)
);

CREATE TABLE upload_credentials (
    token_hash TEXT PRIMARY KEY,
    account_id INTEGER NOT NULL REFERENCES accounts(id),
    timestamp TEXT NOT NULL,
    tarvel_token TEXT NOT NULL,
    bucket_name TEXT NOT NULL,
    expires_at INTEGER NOT NULL,
    used_at INTEGER
);

CREATE TABLE uploads (
    name TEXT PRIMARY KEY,
    account_id INTEGER NOT NULL REFERENCES accounts(id),
    content_type TEXT NOT NULL,
    size INTEGER NOT NULL,
    created_at INTEGER NOT NULL
);

CREATE TABLE prepays (
    prepay_id TEXT PRIMARY KEY,
    order_id INTEGER NOT NULL REFERENCES orders(id),
    account_id INTEGER NOT NULL REFERENCES accounts(id),
    open_id TEXT NOT NULL,
    amount INTEGER NOT NULL,
    state TEXT NOT NULL CHECK (state IN ('pending', 'success', 'cancel')),
    created_at INTEGER NOT NULL,
    settled_at INTEGER
);

CREATE TABLE push_clients (
    client_id TEXT PRIMARY KEY,
    device_token TEXT NOT NULL UNIQUE,
    first_message_id INTEGER NOT NULL,
    created_at INTEGER NOT NULL
);

CREATE TABLE push_messages (
    id INTEGER PRIMARY KEY,
    client_id TEXT REFERENCES push_clients(client_id),
    title TEXT NOT NULL,
    content TEXT NOT NULL,
    date TEXT NOT NULL,
    url TEXT NOT NULL,
    created_at INTEGER NOT NULL
);
)sql";

// An e-mail address waits in pending_email until the link mailed to it is followed; a captcha
// answer, once accepted, holds only for the number or address it was first given for.
const char *const kVersion2 = R"sql(
ALTER TABLE accounts ADD COLUMN pending_email TEXT;
ALTER TABLE sessions ADD COLUMN captcha_subject TEXT;
CREATE INDEX sessions_expiry ON sessions(expires_at);
)sql";

struct Step
{
    int version;
    const char *sql;
};

const Step kSteps[] = {{1, kVersion1}, {2, kVersion2}};

int currentVersion(SQLite::Database &db)
{
    SQLite::Statement query(db, "PRAGMA user_version");
    query.executeStep();
    return query.getColumn(0).getInt();
}

} // namespace

void migrate(SQLite::Database &db)
{
    const int found = currentVersion(db);
    if (found > kCurrentVersion)
        throw std::runtime_error("the database has schema version " + std::to_string(found)
                                 + ", newer than this tarvel-store understands ("
                                 + std::to_string(kCurrentVersion) + ")");
    for (const Step &step : kSteps) {
        if (step.version <= found)
            continue;
        SQLite::Transaction transaction(db, SQLite::TransactionBehavior::IMMEDIATE);
        if (currentVersion(db) >= step.version)
            continue; // another process got there first
        db.exec(step.sql);
        db.exec("PRAGMA user_version = " + std::to_string(step.version));
        transaction.commit();
    }
}

} // namespace Schema
