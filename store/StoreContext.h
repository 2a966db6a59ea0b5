#pragma once

#include "StoreOptions.h"
#include "catalog/Catalog.h"
#include "core/Clock.h"
#include "db/Database.h"
#include "pictures/PictureStore.h"
#include "sandbox/Outbox.h"
#include "sandbox/PushBell.h"

// What every request handler may reach: options, clock, database, catalogue, pictures, outbox,
// the push channel's bell.
class StoreContext
{
public:
    // Opens the database, seeds it on first start and loads the catalogue; throws on failure.
    explicit StoreContext(StoreOptions options);

    const StoreOptions &options() const { return m_options; }
    Clock &clock() { return m_clock; }
    qint64 now() const { return m_clock.now(); }
    Database &database() { return m_database; }
    Catalog &catalog() { return m_catalog; }
    PictureStore &pictures() { return m_pictures; }
    Outbox &outbox() { return m_outbox; }
    PushBell &pushBell() { return m_pushBell; }
    QString uploadsDirectory() const { return m_uploadsDirectory; }
    // Whether this start seeded an empty database.
    bool seededNow() const { return m_seededNow; }

private:
    StoreOptions m_options;
    Clock m_clock;
    Database m_database;
    Catalog m_catalog;
    QString m_uploadsDirectory;
    PictureStore m_pictures;
    Outbox m_outbox;
    PushBell m_pushBell;
    bool m_seededNow = false;
};
