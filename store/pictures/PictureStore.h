#pragma once

#include "pictures/ImageView.h"

#include <QByteArray>
#include <QCache>
#include <QImage>
#include <QString>

#include <mutex>
#include <optional>

class Catalog;

// Serves pictures by path: the generated catalogue pictures under /pictures/ and the uploaded
// ones under /uploads/. Originals and scaled copies are kept in memory up to a budget.
class PictureStore
{
public:
    struct Picture
    {
        QByteArray bytes;
        QByteArray contentType;
    };

    PictureStore(const Catalog &catalog, QString uploadsDirectory);

    // nullopt when there is no such picture.
    std::optional<Picture> original(const QString &path);
    // The picture scaled to the view's width (height kept in proportion), as a JPEG. Throws
    // ApiError (422) when the picture or the copy would be larger than PictureLimits allow.
    std::optional<Picture> scaled(const QString &path, const ImageView &view);

    static QByteArray encode(const QImage &image, const char *format, int quality);

private:
    std::optional<Picture> load(const QString &path) const;
    std::optional<Picture> generated(const QString &kind, const QString &file) const;
    std::optional<Picture> uploaded(const QString &name) const;
    std::optional<Picture> cached(const QString &key);
    void remember(const QString &key, const Picture &picture);

    const Catalog &m_catalog;
    QString m_uploadsDirectory;
    std::mutex m_cacheMutex;
    QCache<QString, Picture> m_cache;
};
