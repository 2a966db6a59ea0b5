#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

#include <list>
#include <mutex>
#include <optional>

// Scaled pictures kept on disk, one file each, up to a size limit; when a new one would pass it,
// the pictures used longest ago go first (a read counts as a use, and the order survives a
// restart through the files' modification times). Each file carries a checksum of its picture,
// so a torn or damaged file is dropped and made again, never served. A file is written under a
// temporary name and renamed into place, so a reader sees either no file or a whole one, also
// while other requests write the same picture.
class PictureShelf
{
public:
    PictureShelf(QString directory, qint64 byteLimit);

    // The picture kept under `key`; nullopt when there is none or its file is damaged (which is
    // then removed).
    std::optional<QByteArray> read(const QString &key);
    // Keeps `bytes` under `key`, replacing what was there. A picture larger than the whole limit
    // is not kept.
    void keep(const QString &key, const QByteArray &bytes);
    bool holds(const QString &key) const;

    QString directory() const { return m_directory; }
    qint64 byteLimit() const { return m_byteLimit; }
    // Bytes of all kept files, headers included.
    qint64 bytesKept() const;
    // The file that holds `key`, present or not.
    QString filePath(const QString &key) const;

    static QByteArray wrap(const QByteArray &bytes);
    // The picture inside a file's contents; nullopt when the contents are not a whole, intact file.
    static std::optional<QByteArray> unwrap(const QByteArray &contents);

private:
    struct Entry
    {
        qint64 size = 0;
        std::list<QString>::iterator use;
    };

    static QString fileName(const QString &key);
    void scan();
    void touch(const QString &name);
    void forget(const QString &name);
    void evictDownTo(qint64 limit);

    QString m_directory;
    qint64 m_byteLimit;
    mutable std::mutex m_mutex;
    std::list<QString> m_uses; // file names, used longest ago first
    QHash<QString, Entry> m_entries;
    qint64 m_bytes = 0;
};
