#include "StoreContext.h"

#include "StoreSeed.h"
#include "sandbox/PushChannel.h"

#include <QDir>
#include <QFileInfo>

namespace {

QString uploadsDirectoryFor(const StoreOptions &options)
{
    const QString chosen = options.uploadsDirectory.isEmpty()
                                   ? QFileInfo(options.databasePath).absoluteFilePath()
                                             + QStringLiteral(".uploads")
                                   : QFileInfo(options.uploadsDirectory).absoluteFilePath();
    QDir().mkpath(chosen);
    return chosen;
}

} // namespace

StoreContext::StoreContext(StoreOptions options)
    : m_options(std::move(options))
    , m_database(m_options.databasePath)
    , m_uploadsDirectory(uploadsDirectoryFor(m_options))
    , m_pictures(m_catalog, m_uploadsDirectory)
    , m_outbox(m_options.sandbox ? m_options.outboxLog : nullptr)
    , m_pushBell([this] { return m_database.read(PushChannel::newestMessageId); })
{
    m_seededNow = StoreSeed::seedIfEmpty(m_database, m_clock.now());
    m_catalog.load(m_database);
}
