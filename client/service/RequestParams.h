#pragma once

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <QVariantMap>

#include <utility>

// The fields of one request, in the order they were set. A value is a text or a list of texts.
// Setting a key that is already there replaces its value in place.
class RequestParams
{
public:
    using Pair = std::pair<QString, QString>;

    // Adds the field unless `value` is absent (a null QString).
    RequestParams &set(const QString &key, const QString &value);
    // Adds the field; an absent value goes out as empty text.
    RequestParams &insert(const QString &key, const QString &value);
    // Adds an array-valued field.
    RequestParams &insert(const QString &key, const QStringList &values);

    bool isEmpty() const { return m_fields.isEmpty(); }
    qsizetype size() const { return m_fields.size(); }
    QStringList keys() const;

    // The dictionary view handed to StartFn: texts as QString, arrays as QStringList.
    QVariantMap toVariantMap() const;
    // Takes back a dictionary view that a StartFn may have changed: fields it removed go, values
    // it changed are replaced in place, fields it added follow in key order (a list stays a list,
    // anything else is sent as text).
    void updateFrom(const QVariantMap &edited);
    // The fields as sent, arrays flattened into repeated "key[]" pairs.
    QList<Pair> pairs() const;
    // `pairs()` form-URL-encoded, for a request body or a query string.
    QByteArray toPercentEncoded() const;

private:
    void put(const QString &key, const QVariant &value);

    QList<std::pair<QString, QVariant>> m_fields;
};
