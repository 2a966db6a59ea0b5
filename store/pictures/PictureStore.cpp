#include "pictures/PictureStore.h"

#include "catalog/Catalog.h"
#include "http/ApiError.h"
#include "pictures/PictureFactory.h"
#include "pictures/PictureLimits.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QPainter>
#include <QRegularExpression>

#include <atomic>
#include <thread>
#include <vector>

namespace {

constexpr qsizetype kCacheBudget = 96 * 1024 * 1024;

QByteArray contentTypeOf(const QString &name)
{
    return name.endsWith(QLatin1String(".png")) ? QByteArrayLiteral("image/png")
                                                : QByteArrayLiteral("image/jpeg");
}

} // namespace

PictureStore::PictureStore(const Catalog &catalog, QString uploadsDirectory, QString shelfDirectory,
                           qint64 shelfBytes)
    : m_catalog(catalog)
    , m_uploadsDirectory(std::move(uploadsDirectory))
    , m_shelf(std::move(shelfDirectory), shelfBytes)
    , m_cache(kCacheBudget)
{ }

QByteArray PictureStore::encode(const QImage &image, const char *format, int quality)
{
    QImage source = image;
    if (qstrcmp(format, "JPG") == 0 && image.hasAlphaChannel()) {
        source = QImage(image.size(), QImage::Format_RGB32);
        source.fill(Qt::white);
        QPainter painter(&source);
        painter.drawImage(0, 0, image);
    }
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    source.save(&buffer, format, quality);
    return bytes;
}

std::optional<PictureStore::Picture> PictureStore::original(const QString &path)
{
    if (auto hit = cached(path))
        return hit;
    auto picture = load(path);
    if (picture)
        remember(path, *picture);
    return picture;
}

std::optional<PictureStore::Picture> PictureStore::scaled(const QString &path,
                                                          const ImageView &view)
{
    const QString key = keyFor(path, view);
    if (auto kept = m_shelf.read(key))
        return Picture{*kept, QByteArrayLiteral("image/jpeg")};
    const auto source = original(path);
    if (!source)
        return std::nullopt;
    if (!checkLimits(source->bytes, view))
        return std::nullopt;
    const QImage image = QImage::fromData(source->bytes);
    if (image.isNull())
        return std::nullopt;
    Picture picture{scaledCopy(image, view), QByteArrayLiteral("image/jpeg")};
    m_shelf.keep(key, picture.bytes);
    ++m_scaledCount;
    return picture;
}

void PictureStore::scaleAhead(const QList<Request> &requests, int threads)
{
    std::atomic<qsizetype> next{0};
    auto work = [&] {
        for (qsizetype i = next++; i < requests.size(); i = next++)
            scaleAhead(requests.at(i));
    };
    std::vector<std::thread> workers;
    for (int i = 1; i < threads; ++i)
        workers.emplace_back(work);
    work();
    for (std::thread &worker : workers)
        worker.join();
}

void PictureStore::scaleAhead(const Request &request)
{
    QList<ImageView> missing;
    for (const ImageView &view : request.views) {
        if (!m_shelf.holds(keyFor(request.path, view)))
            missing.append(view);
    }
    if (missing.isEmpty())
        return;
    const auto source = original(request.path);
    if (!source)
        return;
    // decoded once for all widths; the copies are the same bytes a request would make
    const QImage image = QImage::fromData(source->bytes);
    for (const ImageView &view : missing) {
        try {
            if (!checkLimits(source->bytes, view) || image.isNull())
                return;
        } catch (const ApiError &) {
            continue;
        }
        m_shelf.keep(keyFor(request.path, view), scaledCopy(image, view));
        ++m_scaledCount;
    }
}

QString PictureStore::keyFor(const QString &path, const ImageView &view)
{
    return QStringLiteral("%1?w=%2&h=%3&q=%4")
            .arg(path)
            .arg(view.width)
            .arg(view.height)
            .arg(view.quality);
}

bool PictureStore::checkLimits(const QByteArray &source, const ImageView &view)
{
    // Checked before decoding: the source as declared, and the copy the view would make.
    const QSize declared = PictureLimits::declaredSize(source);
    if (!declared.isValid())
        return false;
    const qint64 height = qint64(declared.height()) * view.width / std::max(1, declared.width());
    if (!PictureLimits::acceptable(declared)
        || !PictureLimits::acceptable(
                QSize(view.width, int(std::min<qint64>(height, PictureLimits::kMaxSide + 1)))))
        throw ApiError::error(422, PictureLimits::refusal());
    return true;
}

QByteArray PictureStore::scaledCopy(const QImage &image, const ImageView &view)
{
    QImage result = image.scaledToWidth(view.width, Qt::SmoothTransformation);
    if (view.height > 0 && result.height() > view.height)
        result = image.scaled(view.width, view.height, Qt::KeepAspectRatio,
                              Qt::SmoothTransformation);
    return encode(result, "JPG", view.quality);
}

std::optional<PictureStore::Picture> PictureStore::load(const QString &path) const
{
    static const QRegularExpression generatedPath(QStringLiteral(
            "^/pictures/(covers|icons|banners|avatars)/([A-Za-z0-9_]+\\.(?:jpg|png))$"));
    static const QRegularExpression uploadPath(
            QStringLiteral("^/uploads/([A-Za-z0-9_\\-]+\\.(?:jpg|png))$"));
    if (const auto match = generatedPath.match(path); match.hasMatch())
        return generated(match.captured(1), match.captured(2));
    if (const auto match = uploadPath.match(path); match.hasMatch())
        return uploaded(match.captured(1));
    return std::nullopt;
}

std::optional<PictureStore::Picture> PictureStore::generated(const QString &kind,
                                                             const QString &file) const
{
    const QString stem = file.section(QLatin1Char('.'), 0, 0);
    const QString suffix = file.section(QLatin1Char('.'), 1);
    bool numeric = false;
    const qint64 number = stem.toLongLong(&numeric);
    if (kind == QLatin1String("avatars")) {
        if (file != QLatin1String("default.png"))
            return std::nullopt;
        return Picture{encode(PictureFactory::defaultAvatar(), "PNG", -1), "image/png"};
    }
    if (!numeric)
        return std::nullopt;
    if (kind == QLatin1String("banners")) {
        const QList<FocusRec> recs = m_catalog.focusRecList();
        if (suffix != QLatin1String("jpg") || number < 1 || number > recs.size())
            return std::nullopt;
        return Picture{
                encode(PictureFactory::banner(int(number), recs.at(number - 1).title), "JPG", 90),
                "image/jpeg"};
    }
    const Product *product = m_catalog.find(number);
    if (!product)
        return std::nullopt;
    if (kind == QLatin1String("covers") && suffix == QLatin1String("jpg"))
        return Picture{encode(PictureFactory::cover(*product), "JPG", 90), "image/jpeg"};
    if (kind == QLatin1String("icons") && suffix == QLatin1String("png"))
        return Picture{encode(PictureFactory::icon(*product), "PNG", -1), "image/png"};
    return std::nullopt;
}

std::optional<PictureStore::Picture> PictureStore::uploaded(const QString &name) const
{
    QFile file(QDir(m_uploadsDirectory).filePath(name));
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return Picture{file.readAll(), contentTypeOf(name)};
}

std::optional<PictureStore::Picture> PictureStore::cached(const QString &key)
{
    std::lock_guard lock(m_cacheMutex);
    if (const Picture *hit = m_cache.object(key))
        return *hit;
    return std::nullopt;
}

void PictureStore::remember(const QString &key, const Picture &picture)
{
    std::lock_guard lock(m_cacheMutex);
    m_cache.insert(key, new Picture(picture), picture.bytes.size());
}
