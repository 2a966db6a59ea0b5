#include "pictures/PictureShelf.h"

#include "core/Crypto.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <filesystem>
#include <vector>

namespace {

const QByteArray kMagic = QByteArrayLiteral("TPS1");
constexpr qsizetype kChecksumSize = 64; // hex of a 256-bit hash
const QString kSuffix = QStringLiteral(".pic");

std::filesystem::path nativePath(const QString &path)
{
    return std::filesystem::path(path.toStdString());
}

} // namespace

PictureShelf::PictureShelf(QString directory, qint64 byteLimit)
    : m_directory(std::move(directory))
    , m_byteLimit(byteLimit)
{
    QDir().mkpath(m_directory);
    scan();
}

QByteArray PictureShelf::wrap(const QByteArray &bytes)
{
    return kMagic + Crypto::lookupHash(bytes) + bytes;
}

std::optional<QByteArray> PictureShelf::unwrap(const QByteArray &contents)
{
    const qsizetype header = kMagic.size() + kChecksumSize;
    if (contents.size() <= header || !contents.startsWith(kMagic))
        return std::nullopt;
    QByteArray bytes = contents.mid(header);
    if (Crypto::lookupHash(bytes) != contents.mid(kMagic.size(), kChecksumSize))
        return std::nullopt;
    return bytes;
}

QString PictureShelf::fileName(const QString &key)
{
    return QString::fromLatin1(Crypto::lookupHash(key.toUtf8()).left(40)) + kSuffix;
}

QString PictureShelf::filePath(const QString &key) const
{
    return QDir(m_directory).filePath(fileName(key));
}

std::optional<QByteArray> PictureShelf::read(const QString &key)
{
    const QString name = fileName(key);
    QFile file(QDir(m_directory).filePath(name));
    if (!file.open(QIODevice::ReadOnly)) {
        std::lock_guard lock(m_mutex);
        forget(name);
        return std::nullopt;
    }
    auto bytes = unwrap(file.readAll());
    file.close();
    std::lock_guard lock(m_mutex);
    if (!bytes) {
        forget(name);
        QFile::remove(file.fileName());
        return std::nullopt;
    }
    touch(name);
    return bytes;
}

void PictureShelf::keep(const QString &key, const QByteArray &bytes)
{
    const QByteArray contents = wrap(bytes);
    if (contents.size() > m_byteLimit)
        return;
    const QString name = fileName(key);
    const QString path = QDir(m_directory).filePath(name);
    const QString temporary = path + QLatin1Char('.') + QString::fromLatin1(Crypto::randomToken(6));
    QFile file(temporary);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size()) {
        file.remove();
        return;
    }
    file.close();
    std::lock_guard lock(m_mutex);
    evictDownTo(m_byteLimit - contents.size()
                + (m_entries.contains(name) ? m_entries[name].size : 0));
    std::error_code failure;
    std::filesystem::rename(nativePath(temporary), nativePath(path), failure);
    if (failure) {
        QFile::remove(temporary);
        return;
    }
    forget(name);
    m_uses.push_back(name);
    m_entries.insert(name, Entry{contents.size(), std::prev(m_uses.end())});
    m_bytes += contents.size();
}

bool PictureShelf::holds(const QString &key) const
{
    std::lock_guard lock(m_mutex);
    return m_entries.contains(fileName(key));
}

qint64 PictureShelf::bytesKept() const
{
    std::lock_guard lock(m_mutex);
    return m_bytes;
}

void PictureShelf::scan()
{
    struct Found
    {
        std::filesystem::file_time_type used;
        QString name;
        qint64 size;
    };
    std::vector<Found> found;
    std::error_code failure;
    for (const auto &entry :
         std::filesystem::directory_iterator(nativePath(m_directory), failure)) {
        if (!entry.is_regular_file(failure))
            continue;
        const QString name = QString::fromStdString(entry.path().filename().string());
        if (!name.endsWith(kSuffix)) {
            // left over from a write cut off by a stop
            std::filesystem::remove(entry.path(), failure);
            continue;
        }
        found.push_back({entry.last_write_time(failure), name, qint64(entry.file_size(failure))});
    }
    std::sort(found.begin(), found.end(),
              [](const Found &a, const Found &b) { return a.used < b.used; });
    std::lock_guard lock(m_mutex);
    for (const Found &file : found) {
        m_uses.push_back(file.name);
        m_entries.insert(file.name, Entry{file.size, std::prev(m_uses.end())});
        m_bytes += file.size;
    }
    evictDownTo(m_byteLimit);
}

void PictureShelf::touch(const QString &name)
{
    const auto found = m_entries.find(name);
    if (found == m_entries.end())
        return;
    m_uses.splice(m_uses.end(), m_uses, found->use);
    // The order of use outlives the process in the files' times.
    std::error_code ignored;
    std::filesystem::last_write_time(nativePath(QDir(m_directory).filePath(name)),
                                     std::filesystem::file_time_type::clock::now(), ignored);
}

void PictureShelf::forget(const QString &name)
{
    const auto found = m_entries.find(name);
    if (found == m_entries.end())
        return;
    m_bytes -= found->size;
    m_uses.erase(found->use);
    m_entries.erase(found);
}

void PictureShelf::evictDownTo(qint64 limit)
{
    while (m_bytes > limit && !m_uses.empty()) {
        const QString oldest = m_uses.front();
        forget(oldest);
        QFile::remove(QDir(m_directory).filePath(oldest));
    }
}
