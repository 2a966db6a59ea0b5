#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <optional>

// Answers of catalogue reads kept on disk, one file per request, so the catalogue still shows what
// was last seen when the store cannot be reached. The folder holds at most maximumSize() bytes;
// storing beyond it removes the entries stored longest ago first. A folder that cannot be written
// keeps nothing, silently.
class AnswerCache
{
public:
    static constexpr qint64 DefaultMaximumSize = 8 * 1024 * 1024;

    explicit AnswerCache(const QString &directory, qint64 maximumSize = DefaultMaximumSize);

    QString directory() const { return m_directory; }
    qint64 maximumSize() const { return m_maximumSize; }
    // Lowering the limit evicts at once.
    void setMaximumSize(qint64 bytes);

    // Keeps `body` as the answer to `key`, replacing an older one; the entry counts as the newest.
    void store(const QString &key, const QByteArray &body);
    // The kept answer to `key`, if there is one.
    std::optional<QByteArray> lookup(const QString &key) const;
    bool contains(const QString &key) const;

    int count() const;
    qint64 totalSize() const; // bytes on disk
    void clear();

private:
    struct Entry
    {
        QString fileName;
        qint64 size = 0;
        qint64 sequence = 0; // larger is newer
    };

    void loadIndex() const;
    void remove(const QString &key);
    void evictDownTo(qint64 bytes);
    QString filePath(const QString &fileName) const;
    static QString fileNameFor(const QString &key);

    QString m_directory;
    qint64 m_maximumSize;
    // Read from the folder on first use.
    mutable bool m_loaded = false;
    mutable QHash<QString, Entry> m_entries;
    mutable qint64 m_nextSequence = 1;
    mutable qint64 m_totalSize = 0;
};
