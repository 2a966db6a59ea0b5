#include "service/AnswerCache.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>

namespace {

constexpr quint32 EntryMagic = 0x54414331; // "TAC1"
const QString EntrySuffix = QStringLiteral(".answer");

struct StoredEntry
{
    qint64 sequence = 0;
    QString key;
    QByteArray body;
};

std::optional<StoredEntry> readEntry(const QString &path, bool withBody)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QDataStream in(&file);
    in.setVersion(QDataStream::Qt_6_0);
    quint32 magic = 0;
    StoredEntry entry;
    in >> magic >> entry.sequence >> entry.key;
    if (withBody)
        in >> entry.body;
    if (magic != EntryMagic || in.status() != QDataStream::Ok)
        return std::nullopt;
    return entry;
}

} // namespace

AnswerCache::AnswerCache(const QString &directory, qint64 maximumSize)
    : m_directory(directory)
    , m_maximumSize(maximumSize)
{ }

void AnswerCache::setMaximumSize(qint64 bytes)
{
    m_maximumSize = bytes;
    evictDownTo(m_maximumSize);
}

QString AnswerCache::fileNameFor(const QString &key)
{
    return QString::fromLatin1(
                   QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha1).toHex())
           + EntrySuffix;
}

QString AnswerCache::filePath(const QString &fileName) const
{
    return QDir(m_directory).filePath(fileName);
}

void AnswerCache::loadIndex() const
{
    if (m_loaded)
        return;
    m_loaded = true;
    if (m_directory.isEmpty())
        return;
    const QDir folder(m_directory);
    const QStringList names = folder.entryList({QStringLiteral("*") + EntrySuffix}, QDir::Files);
    for (const QString &name : names) {
        const std::optional<StoredEntry> stored = readEntry(folder.filePath(name), false);
        if (!stored || fileNameFor(stored->key) != name) {
            QFile::remove(folder.filePath(name)); // unreadable: nothing is kept there
            continue;
        }
        const Entry entry{name, QFileInfo(folder.filePath(name)).size(), stored->sequence};
        m_entries.insert(stored->key, entry);
        m_totalSize += entry.size;
        m_nextSequence = std::max(m_nextSequence, stored->sequence + 1);
    }
}

void AnswerCache::store(const QString &key, const QByteArray &body)
{
    loadIndex();
    if (m_directory.isEmpty() || !QDir().mkpath(m_directory))
        return;
    remove(key);
    const QString name = fileNameFor(key);
    const qint64 sequence = m_nextSequence++;
    QSaveFile file(filePath(name));
    if (!file.open(QIODevice::WriteOnly))
        return;
    QDataStream out(&file);
    out.setVersion(QDataStream::Qt_6_0);
    out << EntryMagic << sequence << key << body;
    const qint64 size = file.size();
    // An answer larger than the whole cache is not kept at all.
    if (out.status() != QDataStream::Ok || size > m_maximumSize) {
        file.cancelWriting();
        return;
    }
    if (!file.commit())
        return;
    m_entries.insert(key, Entry{name, size, sequence});
    m_totalSize += size;
    evictDownTo(m_maximumSize);
}

std::optional<QByteArray> AnswerCache::lookup(const QString &key) const
{
    loadIndex();
    const auto found = m_entries.constFind(key);
    if (found == m_entries.constEnd())
        return std::nullopt;
    const std::optional<StoredEntry> stored = readEntry(filePath(found->fileName), true);
    if (!stored || stored->key != key)
        return std::nullopt;
    return stored->body;
}

bool AnswerCache::contains(const QString &key) const
{
    loadIndex();
    return m_entries.contains(key);
}

int AnswerCache::count() const
{
    loadIndex();
    return int(m_entries.size());
}

qint64 AnswerCache::totalSize() const
{
    loadIndex();
    return m_totalSize;
}

void AnswerCache::clear()
{
    loadIndex();
    for (const Entry &entry : std::as_const(m_entries))
        QFile::remove(filePath(entry.fileName));
    m_entries.clear();
    m_totalSize = 0;
}

void AnswerCache::remove(const QString &key)
{
    const auto found = m_entries.find(key);
    if (found == m_entries.end())
        return;
    QFile::remove(filePath(found->fileName));
    m_totalSize -= found->size;
    m_entries.erase(found);
}

void AnswerCache::evictDownTo(qint64 bytes)
{
    loadIndex();
    while (m_totalSize > bytes && !m_entries.isEmpty()) {
        auto oldest = std::min_element(
                m_entries.begin(), m_entries.end(),
                [](const Entry &a, const Entry &b) { return a.sequence < b.sequence; });
        remove(oldest.key());
    }
}
