#include "StoreContext.h"

#include "StoreSeed.h"
#include "pictures/SeededPictures.h"
#include "sandbox/PushChannel.h"

#include <QDir>
#include <QFileInfo>
#include <QThread>

#include <algorithm>

namespace {

QString directoryFor(const StoreOptions &options, const QString &chosen, const char *suffix)
{
    const QString path = chosen.isEmpty() ? QFileInfo(options.databasePath).absoluteFilePath()
                                                    + QLatin1String(suffix)
                                          : QFileInfo(chosen).absoluteFilePath();
    QDir().mkpath(path);
    return path;
}

} // namespace

StoreContext::StoreContext(StoreOptions options)
    : m_options(std::move(options))
    , m_database(m_options.databasePath)
    , m_uploadsDirectory(directoryFor(m_options, m_options.uploadsDirectory, ".uploads"))
    , m_pictures(m_catalog, m_uploadsDirectory,
                 directoryFor(m_options, m_options.picturesDirectory, ".pictures"),
                 m_options.picturesBytes)
    , m_outbox(m_options.sandbox ? m_options.outboxLog : nullptr)
    , m_pushBell([this] { return m_database.read(PushChannel::newestMessageId); })
{
    m_seededNow = StoreSeed::seedIfEmpty(m_database, m_clock.now());
    m_catalog.load(m_database);
    if (m_options.scalePicturesAhead)
        m_pictures.scaleAhead(SeededPictures::requests(m_catalog),
                              std::clamp(QThread::idealThreadCount(), 1, 4));
}
