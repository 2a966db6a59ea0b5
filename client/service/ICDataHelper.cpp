#include "service/ICDataHelper.h"

#include "platform/PropertyList.h"
#include "platform/SandboxPaths.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

using platform::PropertyList;
using platform::SandboxPaths;

namespace {

// Text and numbers match by their text form; lists, dictionaries and absent values never match.
bool holdsText(const QVariantMap &dictionary, const QString &key, const QString &text)
{
    const auto it = dictionary.constFind(key);
    if (it == dictionary.cend())
        return false;
    switch (it->typeId()) {
    case QMetaType::QString:
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
    case QMetaType::Bool:
        return it->toString() == text;
    default:
        return false;
    }
}

// The filesystem root and the app home itself are never removed.
bool isProtectedFolder(const QFileInfo &item)
{
    if (!item.isDir())
        return false;
    const QString target = item.canonicalFilePath();
    return QDir(target).isRoot() || target == QFileInfo(SandboxPaths::home()).canonicalFilePath();
}

} // namespace

QString ICDataHelper::appPath()
{
    return SandboxPaths::applications();
}

QString ICDataHelper::docPath()
{
    return SandboxPaths::documents();
}

QString ICDataHelper::libPrefPath()
{
    const QString library = SandboxPaths::library();
    return library.isEmpty() ? QString() : library + QStringLiteral("/Preference");
}

QString ICDataHelper::libCachePath()
{
    return SandboxPaths::caches();
}

QString ICDataHelper::tmpPath()
{
    return SandboxPaths::tmp();
}

QStringList ICDataHelper::GetFilesName(const QString &directoryPath)
{
    const QDir directory(SandboxPaths::expandTilde(directoryPath));
    if (directoryPath.isEmpty() || !directory.exists())
        return {};
    QStringList paths;
    QDirIterator it(directory.path(),
                    QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                    QDirIterator::Subdirectories);
    while (it.hasNext())
        paths.append(directory.relativeFilePath(it.next()));
    std::sort(paths.begin(), paths.end());
    return paths;
}

bool ICDataHelper::CreateFile(const QString &directoryPath, const QString &fileName)
{
    // The name is resolved against the folder instead of making the folder the process's current
    // directory: the working directory stays as it was for every relative path elsewhere.
    const QString folder = SandboxPaths::expandTilde(directoryPath);
    if (!folder.isEmpty() && !fileName.isEmpty() && QFileInfo(folder).isDir()) {
        QFile file(QDir(folder).filePath(fileName));
        if (file.open(QIODevice::WriteOnly | QIODevice::Truncate))
            file.close();
    }
    return true;
}

bool ICDataHelper::DeleteFile(const QString &path)
{
    if (path.isEmpty())
        return false;
    // Resolved against the current directory without changing it (see CreateFile).
    const QFileInfo item(SandboxPaths::expandTilde(path));
    if (isProtectedFolder(item))
        return false;
    if (item.isDir() && !item.isSymLink())
        QDir(item.absoluteFilePath()).removeRecursively();
    else if (item.exists() || item.isSymLink())
        QFile::remove(item.absoluteFilePath());
    return true;
}

bool ICDataHelper::SaveFileWithName(const QString &fileName, const QVariantList &dataSource)
{
    const QString folder = docPath();
    if (folder.isEmpty())
        return true;
    return PropertyList::write(dataSource, QDir(folder).filePath(fileName),
                               PropertyList::Access::OwnerOnly);
}

std::optional<QVariantList> ICDataHelper::GetFileWithName(const QString &fileName)
{
    const QString folder = docPath();
    if (folder.isEmpty() || fileName.isEmpty())
        return std::nullopt;
    return PropertyList::readArray(QDir(folder).filePath(fileName));
}

bool ICDataHelper::DataSaveDictWith(const QVariantMap &dictionary, const QString &fileName)
{
    QVariantList list = listOrEmpty(fileName);
    const QVariant record(dictionary);
    if (std::any_of(list.cbegin(), list.cend(), [&](const QVariant &item) {
            return item.typeId() == QMetaType::QVariantMap && item == record;
        }))
        return false;
    list.append(record);
    SaveFileWithName(fileName, list);
    return true;
}

bool ICDataHelper::DataDeleteDictWithKey(const QString &key, const QString &keyValue,
                                         const QString &fileName)
{
    QVariantList list = listOrEmpty(fileName);
    const qsizetype index = indexOfDictWithKey(list, key, keyValue);
    if (index >= 0)
        list.removeAt(index);
    SaveFileWithName(fileName, list);
    return true;
}

std::optional<QVariantMap> ICDataHelper::DataGetDictWithKey(const QString &key,
                                                            const QString &keyValue,
                                                            const QString &fileName)
{
    const QVariantList list = listOrEmpty(fileName);
    const qsizetype index = indexOfDictWithKey(list, key, keyValue);
    if (index < 0)
        return std::nullopt;
    return list.at(index).toMap();
}

QVariantList ICDataHelper::listOrEmpty(const QString &fileName)
{
    return GetFileWithName(fileName).value_or(QVariantList());
}

qsizetype ICDataHelper::indexOfDictWithKey(const QVariantList &list, const QString &key,
                                           const QString &keyValue)
{
    for (qsizetype i = 0; i < list.size(); ++i) {
        if (list.at(i).typeId() == QMetaType::QVariantMap
            && holdsText(list.at(i).toMap(), key, keyValue))
            return i;
    }
    return -1;
}
