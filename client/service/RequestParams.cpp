#include "service/RequestParams.h"

#include <QUrl>

RequestParams &RequestParams::set(const QString &key, const QString &value)
{
    if (!value.isNull())
        put(key, value);
    return *this;
}

RequestParams &RequestParams::insert(const QString &key, const QString &value)
{
    put(key, value.isNull() ? QStringLiteral("") : value);
    return *this;
}

RequestParams &RequestParams::insert(const QString &key, const QStringList &values)
{
    put(key, values);
    return *this;
}

void RequestParams::put(const QString &key, const QVariant &value)
{
    for (auto &field : m_fields) {
        if (field.first == key) {
            field.second = value;
            return;
        }
    }
    m_fields.append({key, value});
}

QStringList RequestParams::keys() const
{
    QStringList result;
    for (const auto &field : m_fields)
        result.append(field.first);
    return result;
}

QVariantMap RequestParams::toVariantMap() const
{
    QVariantMap map;
    for (const auto &[key, value] : m_fields)
        map.insert(key, value);
    return map;
}

void RequestParams::updateFrom(const QVariantMap &edited)
{
    m_fields.removeIf([&edited](const auto &field) { return !edited.contains(field.first); });
    for (auto it = edited.cbegin(); it != edited.cend(); ++it) {
        if (it.value().typeId() == QMetaType::QStringList)
            put(it.key(), it.value());
        else
            put(it.key(), it.value().toString());
    }
}

// An array goes out as one "key[]" pair per element, the form encoding of lists that the store
// (like most form-reading web services) decodes back into an array. An empty array sends nothing.
QList<RequestParams::Pair> RequestParams::pairs() const
{
    QList<Pair> result;
    for (const auto &[key, value] : m_fields) {
        if (value.typeId() == QMetaType::QStringList) {
            const QString arrayKey = key + QStringLiteral("[]");
            for (const QString &element : value.toStringList())
                result.append({arrayKey, element});
        } else {
            result.append({key, value.toString()});
        }
    }
    return result;
}

// QUrl::toPercentEncoding escapes everything outside the unreserved set, so '+', '&', '=' and '%'
// inside a value survive a form decoder. QUrlQuery is not used here: it takes a "%41" in a value
// for an escape that is already there and leaves '+' bare, which form decoders read as a space.
QByteArray RequestParams::toPercentEncoded() const
{
    QByteArray encoded;
    for (const auto &[key, value] : pairs()) {
        if (!encoded.isEmpty())
            encoded += '&';
        encoded += QUrl::toPercentEncoding(key) + '=' + QUrl::toPercentEncoding(value);
    }
    return encoded;
}
