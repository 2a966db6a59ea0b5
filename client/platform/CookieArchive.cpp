#include "platform/CookieArchive.h"

#include <QDataStream>
#include <QIODevice>

#include <optional>

namespace platform {
namespace {

constexpr QDataStream::Version kStreamVersion = QDataStream::Qt_6_4;

std::optional<QNetworkCookie> cookieFromRawForm(const QByteArray &raw)
{
    const QList<QNetworkCookie> parsed = QNetworkCookie::parseCookies(raw);
    if (parsed.size() != 1 || parsed.first().name().isEmpty())
        return std::nullopt;
    return parsed.first();
}

bool survivesRawForm(const QNetworkCookie &cookie)
{
    const auto back = cookieFromRawForm(cookie.toRawForm(QNetworkCookie::Full));
    return back && back->hasSameIdentifier(cookie) && back->value() == cookie.value();
}

} // namespace

QByteArray CookieArchive::archive(const QList<QNetworkCookie> &cookies)
{
    QList<QByteArray> rawForms;
    for (const QNetworkCookie &cookie : cookies) {
        if (survivesRawForm(cookie))
            rawForms.append(cookie.toRawForm(QNetworkCookie::Full));
    }
    QByteArray data;
    QDataStream stream(&data, QIODevice::WriteOnly);
    stream.setVersion(kStreamVersion);
    stream << magic << version << quint32(rawForms.size());
    for (const QByteArray &raw : rawForms)
        stream << raw;
    return data;
}

QList<QNetworkCookie> CookieArchive::unarchive(const QByteArray &data)
{
    QDataStream stream(data);
    stream.setVersion(kStreamVersion);
    quint32 readMagic = 0;
    quint16 readVersion = 0;
    quint32 count = 0;
    stream >> readMagic >> readVersion >> count;
    if (stream.status() != QDataStream::Ok || readMagic != magic || readVersion != version)
        return {};

    QList<QNetworkCookie> cookies;
    for (quint32 i = 0; i < count; ++i) {
        QByteArray raw;
        stream >> raw;
        if (stream.status() != QDataStream::Ok)
            return {};
        const auto cookie = cookieFromRawForm(raw);
        if (!cookie)
            return {};
        cookies.append(*cookie);
    }
    if (!stream.atEnd())
        return {};
    return cookies;
}

} // namespace platform
