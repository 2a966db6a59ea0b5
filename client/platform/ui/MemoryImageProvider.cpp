#include "platform/ui/MemoryImageProvider.h"

#include <QHash>
#include <QMutex>
#include <QMutexLocker>
#include <QObject>
#include <QQmlEngine>

namespace platform {

namespace {

// The pictures of every owner. QML may read them from its loading threads, so access is locked;
// publishing and removal happen on the owner's thread.
class Registry
{
public:
    static Registry &shared()
    {
        static Registry registry;
        return registry;
    }

    QUrl publish(QObject *owner, const QString &key, const QImage &image)
    {
        QMutexLocker lock(&m_mutex);
        auto found = m_owners.find(owner);
        if (found == m_owners.end()) {
            if (image.isNull())
                return {};
            found = m_owners.insert(owner, ++m_lastOwnerId);
            QObject::connect(owner, &QObject::destroyed, &m_context,
                             [this, owner] { forget(owner); });
        }
        // A removed picture keeps its revision, so that a later one never reuses an address.
        const QString id = entryId(found.value(), key);
        Entry &entry = m_images[id];
        entry.image = image;
        if (image.isNull())
            return {};
        ++entry.revision;
        return QUrl(
                QStringLiteral("image://%1/%2/%3")
                        .arg(MemoryImageProvider::ProviderId, id, QString::number(entry.revision)));
    }

    // `id` is "<owner>/<key>/<revision>"; any revision reads the picture held now.
    QImage image(const QString &id)
    {
        const qsizetype lastSlash = id.lastIndexOf(QLatin1Char('/'));
        QMutexLocker lock(&m_mutex);
        return m_images.value(lastSlash < 0 ? id : id.left(lastSlash)).image;
    }

private:
    struct Entry
    {
        QImage image;
        quint64 revision = 0;
    };

    static QString entryId(quint64 ownerId, const QString &key)
    {
        // Letters, digits, "-" and "_" only: the address reads back the same however it is decoded.
        const QByteArray safeKey = key.toUtf8().toBase64(QByteArray::Base64UrlEncoding
                                                         | QByteArray::OmitTrailingEquals);
        return QStringLiteral("%1/%2").arg(ownerId).arg(QString::fromLatin1(safeKey));
    }

    void forget(QObject *owner)
    {
        QMutexLocker lock(&m_mutex);
        const quint64 ownerId = m_owners.take(owner);
        const QString prefix = QStringLiteral("%1/").arg(ownerId);
        for (auto it = m_images.begin(); it != m_images.end();) {
            if (it.key().startsWith(prefix))
                it = m_images.erase(it);
            else
                ++it;
        }
    }

    QMutex m_mutex;
    QObject m_context; // ends the owners' connections with the registry
    QHash<QObject *, quint64> m_owners;
    QHash<QString, Entry> m_images;
    quint64 m_lastOwnerId = 0;
};

} // namespace

MemoryImageProvider::MemoryImageProvider()
    : QQuickImageProvider(QQuickImageProvider::Image)
{ }

void MemoryImageProvider::install(QQmlEngine *engine)
{
    if (!engine->imageProvider(ProviderId))
        engine->addImageProvider(ProviderId, new MemoryImageProvider);
}

QUrl MemoryImageProvider::publish(QObject *owner, const QString &key, const QImage &image)
{
    return owner ? Registry::shared().publish(owner, key, image) : QUrl();
}

void MemoryImageProvider::remove(QObject *owner, const QString &key)
{
    publish(owner, key, QImage());
}

QImage MemoryImageProvider::image(const QUrl &url)
{
    if (url.scheme() != QLatin1String("image") || url.host() != ProviderId)
        return {};
    return Registry::shared().image(url.path(QUrl::FullyEncoded).mid(1));
}

QImage MemoryImageProvider::requestImage(const QString &id, QSize *size, const QSize &requestedSize)
{
    QImage picture = Registry::shared().image(id);
    if (size)
        *size = picture.size();
    if (!picture.isNull() && requestedSize.isValid() && !requestedSize.isEmpty())
        picture = picture.scaled(requestedSize, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return picture;
}

} // namespace platform
