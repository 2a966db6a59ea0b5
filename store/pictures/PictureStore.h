#pragma once

#include "pictures/ImageView.h"
#include "pictures/PictureShelf.h"

#include <QByteArray>
#include <QCache>
#include <QImage>
#include <QString>

#include <atomic>
#include <mutex>
#include <optional>

class Catalog;

// Serves pictures by path: the generated catalogue pictures under /pictures/ and the uploaded
// ones under /uploads/. Originals are kept in memory up to a budget, scaled copies on disk (see
// PictureShelf), so a copy is made once, not once per start.
class PictureStore
{
public:
    struct Picture
    {
        QByteArray bytes;
        QByteArray contentType;
    };

    // Asks for one picture at several sizes.
    struct Request
    {
        QString path;
        QList<ImageView> views;
    };

    PictureStore(const Catalog &catalog, QString uploadsDirectory, QString shelfDirectory,
                 qint64 shelfBytes);

    // nullopt when there is no such picture.
    std::optional<Picture> original(const QString &path);
    // The picture scaled to the view's width (height kept in proportion), as a JPEG. Throws
    // ApiError (422) when the picture or the copy would be larger than PictureLimits allow.
    std::optional<Picture> scaled(const QString &path, const ImageView &view);

    // Makes and keeps the scaled copies not kept yet, on `threads` threads at once.
    void scaleAhead(const QList<Request> &requests, int threads);
    // How many copies this store has scaled (rather than read from disk).
    qint64 scaledCount() const { return m_scaledCount; }
    PictureShelf &shelf() { return m_shelf; }

    static QByteArray encode(const QImage &image, const char *format, int quality);

private:
    static QString keyFor(const QString &path, const ImageView &view);
    // False when the picture's header declares no size; throws ApiError (422) over the limits.
    static bool checkLimits(const QByteArray &source, const ImageView &view);
    static QByteArray scaledCopy(const QImage &image, const ImageView &view);
    void scaleAhead(const Request &request);
    std::optional<Picture> load(const QString &path) const;
    std::optional<Picture> generated(const QString &kind, const QString &file) const;
    std::optional<Picture> uploaded(const QString &name) const;
    std::optional<Picture> cached(const QString &key);
    void remember(const QString &key, const Picture &picture);

    const Catalog &m_catalog;
    QString m_uploadsDirectory;
    PictureShelf m_shelf;
    std::atomic<qint64> m_scaledCount{0};
    std::mutex m_cacheMutex;
    QCache<QString, Picture> m_cache;
};
