#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>

#include <optional>

namespace platform {

// Property-list files (XML, as the phone platforms read them) over libplist.
//
// Values map both ways: array <-> QVariantList, dictionary <-> QVariantMap, string <-> QString,
// true/false <-> bool, integer <-> qlonglong, real <-> double, data <-> QByteArray and date <->
// QDateTime (UTC, kept to the second, from 1933 to 2069). Reading also accepts binary property
// lists. Anything unreadable, malformed or not a property list reads as nothing: an invalid
// QVariant or an empty optional.
class PropertyList
{
public:
    enum class Access {
        Default, // the usual permissions of new files
        OwnerOnly, // readable and writable by the owner only (files holding the session)
    };

    static QVariant fromData(const QByteArray &data);
    static QVariant read(const QString &path);
    // The file's root when it is an array, resp. a dictionary; nothing for any other root.
    static std::optional<QVariantList> readArray(const QString &path);
    static std::optional<QVariantMap> readDictionary(const QString &path);

    // The XML form of `root` (an array or a dictionary); nothing when it holds a value that a
    // property list cannot hold (null, invalid, or a type without a property-list form).
    static std::optional<QByteArray> toData(const QVariant &root);

    // Replaces the file atomically: on any failure the previous file is left as it was and the
    // answer is false.
    static bool write(const QVariant &root, const QString &path, Access access = Access::Default);
};

} // namespace platform
