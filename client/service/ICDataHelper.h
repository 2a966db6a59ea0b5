#pragma once

#include <QString>
#include <QStringList>
#include <QVariantList>
#include <QVariantMap>

#include <optional>

// The app's directories and its property-list files in Documents (User.plist, GTMessage.plist).
// Failures are silent: a missing or unreadable file reads as nothing.
class ICDataHelper
{
public:
    ICDataHelper() = delete;

    static QString appPath(); // <home>/Applications
    static QString docPath(); // <home>/Documents
    static QString libPrefPath(); // <home>/Library/Preference
    static QString libCachePath(); // <home>/Library/Caches
    static QString tmpPath(); // <home>/Library/tmp

    // Every path below `directoryPath`, relative to it, folders included, sorted.
    static QStringList GetFilesName(const QString &directoryPath);

    // Creates an empty file `fileName` in `directoryPath` ("~" is the app home), emptying a file
    // already there. Always answers true.
    static bool CreateFile(const QString &directoryPath, const QString &fileName);
    // Removes the file or folder (with its content) at `path` ("~" is the app home); a missing
    // item is no error. Answers false only when there is no path at all, or when it names the
    // filesystem root or the app home, which are never removed.
    static bool DeleteFile(const QString &path);

    // Writes `dataSource` as Documents/`fileName`, atomically and readable by the owner only.
    // Answers the write's result, or true when there is no Documents folder.
    static bool SaveFileWithName(const QString &fileName, const QVariantList &dataSource);
    // The array stored in Documents/`fileName`; nothing when the file is missing, unreadable or
    // holds something other than an array.
    static std::optional<QVariantList> GetFileWithName(const QString &fileName);

    // Appends `dictionary` to the list in Documents/`fileName` unless an equal one is already
    // there; answers whether it appended.
    static bool DataSaveDictWith(const QVariantMap &dictionary, const QString &fileName);
    // Removes the first dictionary whose `key` holds `keyValue` and saves the list, creating the
    // file (empty) when it was missing. Always answers true.
    static bool DataDeleteDictWithKey(const QString &key, const QString &keyValue,
                                      const QString &fileName);
    // The first dictionary of the list whose `key` holds `keyValue`.
    static std::optional<QVariantMap>
    DataGetDictWithKey(const QString &key, const QString &keyValue, const QString &fileName);

private:
    static QVariantList listOrEmpty(const QString &fileName);
    static qsizetype indexOfDictWithKey(const QVariantList &list, const QString &key,
                                        const QString &keyValue);
};
