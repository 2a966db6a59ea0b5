#include "platform/PropertyList.h"

#include "platform/SandboxPaths.h"

#include <QDateTime>
#include <QFile>
#include <QSaveFile>
#include <QXmlStreamReader>

#include <plist/plist++.h>

#include <cstdlib>
#include <limits>
#include <memory>
#include <utility>
#include <vector>

namespace platform {
namespace {

// Deeper nesting is refused before libplist sees it: its parser and plist_free recurse per level.
constexpr int kMaxDepth = 256;
constexpr qsizetype kMaxXmlSize = 32 * 1024 * 1024;
// The binary reader recurses without a limit and its depth cannot be checked beforehand; this size
// keeps any nesting a file of it can express well within the stack.
constexpr qsizetype kMaxBinarySize = 256 * 1024;
// Property-list dates count seconds from 2001-01-01T00:00:00Z.
constexpr qint64 kReferenceDateSecs = 978307200;

struct NodeDeleter
{
    void operator()(plist_t node) const { plist_free(node); }
};
using NodePtr = std::unique_ptr<void, NodeDeleter>;

struct MallocDeleter
{
    void operator()(void *memory) const { std::free(memory); }
};
using MallocPtr = std::unique_ptr<char, MallocDeleter>;

std::optional<QVariant> valueOf(plist_t node, int depth);

std::optional<QVariant> arrayOf(plist_t node, int depth)
{
    QVariantList list;
    const uint32_t size = plist_array_get_size(node);
    list.reserve(size);
    for (uint32_t i = 0; i < size; ++i) {
        auto element = valueOf(plist_array_get_item(node, i), depth + 1);
        if (!element)
            return std::nullopt;
        list.append(*element);
    }
    return QVariant(list);
}

std::optional<QVariant> dictionaryOf(plist_t node, int depth)
{
    QVariantMap map;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    const MallocPtr iteratorOwner(static_cast<char *>(iterator));
    for (;;) {
        char *rawKey = nullptr;
        plist_t item = nullptr;
        plist_dict_next_item(node, iterator, &rawKey, &item);
        const MallocPtr key(rawKey);
        if (!item)
            break;
        auto value = valueOf(item, depth + 1);
        if (!key || !value)
            return std::nullopt;
        map.insert(QString::fromUtf8(key.get()), *value);
    }
    return QVariant(map);
}

QVariant dateOf(plist_t node)
{
    int32_t seconds = 0;
    int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    const qint64 fraction = (seconds < 0 ? -qint64(microseconds) : qint64(microseconds)) / 1000;
    return QDateTime::fromMSecsSinceEpoch((kReferenceDateSecs + seconds) * 1000 + fraction,
                                          Qt::UTC);
}

QVariant stringOf(plist_t node)
{
    // Read with its length: the text may hold NUL bytes, which plist_get_string_val asserts on.
    uint64_t length = 0;
    const char *text = plist_get_string_ptr(node, &length);
    const QString value = QString::fromUtf8(text, text ? static_cast<qsizetype>(length) : 0);
    // An empty string is present, not absent: keep it non-null.
    return value.isNull() ? QString(QLatin1String("")) : value;
}

std::optional<QVariant> valueOf(plist_t node, int depth)
{
    if (!node || depth > kMaxDepth)
        return std::nullopt;
    switch (plist_get_node_type(node)) {
    case PLIST_ARRAY:
        return arrayOf(node, depth);
    case PLIST_DICT:
        return dictionaryOf(node, depth);
    case PLIST_STRING:
        return stringOf(node);
    case PLIST_BOOLEAN: {
        uint8_t value = 0;
        plist_get_bool_val(node, &value);
        return QVariant(value != 0);
    }
    case PLIST_UINT: {
        uint64_t value = 0;
        plist_get_uint_val(node, &value);
        return QVariant(static_cast<qlonglong>(value));
    }
    case PLIST_REAL: {
        double value = 0;
        plist_get_real_val(node, &value);
        return QVariant(value);
    }
    case PLIST_DATA: {
        uint64_t length = 0;
        const char *bytes = plist_get_data_ptr(node, &length);
        return QVariant(QByteArray(bytes, static_cast<qsizetype>(length)));
    }
    case PLIST_DATE:
        return dateOf(node);
    default: // keys outside dictionaries, archiver UIDs: not ours
        return std::nullopt;
    }
}

NodePtr nodeOf(const QVariant &value, int depth);

NodePtr arrayNodeOf(const QVariantList &list, int depth)
{
    NodePtr array(plist_new_array());
    for (const QVariant &element : list) {
        NodePtr item = nodeOf(element, depth + 1);
        if (!item)
            return nullptr;
        plist_array_append_item(array.get(), item.release());
    }
    return array;
}

NodePtr dictionaryNodeOf(const QVariantMap &map, int depth)
{
    NodePtr dictionary(plist_new_dict());
    for (auto it = map.cbegin(); it != map.cend(); ++it) {
        NodePtr item = nodeOf(it.value(), depth + 1);
        if (!item || it.key().contains(QChar::Null))
            return nullptr;
        plist_dict_set_item(dictionary.get(), it.key().toUtf8().constData(), item.release());
    }
    return dictionary;
}

NodePtr dateNodeOf(const QDateTime &date)
{
    if (!date.isValid())
        return nullptr;
    const qint64 seconds = date.toSecsSinceEpoch() - kReferenceDateSecs;
    if (seconds < std::numeric_limits<int32_t>::min()
        || seconds > std::numeric_limits<int32_t>::max())
        return nullptr;
    return NodePtr(plist_new_date(static_cast<int32_t>(seconds), 0));
}

NodePtr nodeOf(const QVariant &value, int depth)
{
    if (depth > kMaxDepth)
        return nullptr;
    switch (value.typeId()) {
    case QMetaType::QVariantList:
    case QMetaType::QStringList:
        return arrayNodeOf(value.toList(), depth);
    case QMetaType::QVariantMap:
    case QMetaType::QVariantHash:
        return dictionaryNodeOf(value.toMap(), depth);
    case QMetaType::QString: {
        const QString text = value.toString();
        // libplist keeps strings NUL-terminated: a NUL inside would cut the text silently.
        if (text.contains(QChar::Null))
            return nullptr;
        return NodePtr(plist_new_string(text.toUtf8().constData()));
    }
    case QMetaType::Bool:
        return NodePtr(plist_new_bool(value.toBool() ? 1 : 0));
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::Long:
    case QMetaType::LongLong:
        return NodePtr(plist_new_uint(static_cast<uint64_t>(value.toLongLong())));
    case QMetaType::ULong:
    case QMetaType::ULongLong:
        if (value.toULongLong() > static_cast<qulonglong>(std::numeric_limits<qint64>::max()))
            return nullptr;
        return NodePtr(plist_new_uint(value.toULongLong()));
    case QMetaType::Double:
    case QMetaType::Float:
        return NodePtr(plist_new_real(value.toDouble()));
    case QMetaType::QByteArray: {
        const QByteArray bytes = value.toByteArray();
        return NodePtr(plist_new_data(bytes.constData(), static_cast<uint64_t>(bytes.size())));
    }
    case QMetaType::QDateTime:
        return dateNodeOf(value.toDateTime());
    default:
        return nullptr;
    }
}

// Well-formed XML nested no deeper than a property list of kMaxDepth containers. NUL bytes are
// refused outright: no XML holds them, and libplist asserts on texts and keys containing one.
bool isShallowWellFormedXml(const QByteArray &data)
{
    if (data.contains('\0'))
        return false;
    QXmlStreamReader reader(data);
    int depth = 0;
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::StartElement && ++depth > kMaxDepth + 2)
            return false;
        if (token == QXmlStreamReader::EndElement)
            --depth;
    }
    return !reader.hasError();
}

// Measured without recursion, so that any parsed tree can be checked safely.
bool isShallowTree(plist_t root)
{
    std::vector<std::pair<plist_t, int>> pending{{root, 0}};
    while (!pending.empty()) {
        const auto [node, depth] = pending.back();
        pending.pop_back();
        if (depth > kMaxDepth)
            return false;
        const plist_type type = plist_get_node_type(node);
        if (type == PLIST_ARRAY) {
            for (uint32_t i = 0; i < plist_array_get_size(node); ++i)
                pending.emplace_back(plist_array_get_item(node, i), depth + 1);
        } else if (type == PLIST_DICT) {
            plist_dict_iter iterator = nullptr;
            plist_dict_new_iter(node, &iterator);
            const MallocPtr iteratorOwner(static_cast<char *>(iterator));
            for (plist_t item = nullptr;;) {
                plist_dict_next_item(node, iterator, nullptr, &item);
                if (!item)
                    break;
                pending.emplace_back(item, depth + 1);
            }
        }
    }
    return true;
}

NodePtr parseXml(const QByteArray &data)
{
    plist_t root = nullptr;
    if (data.size() <= kMaxXmlSize && isShallowWellFormedXml(data))
        plist_from_xml(data.constData(), static_cast<uint32_t>(data.size()), &root);
    return NodePtr(root);
}

NodePtr parse(const QByteArray &data)
{
    const auto length = static_cast<uint32_t>(data.size());
    if (!plist_is_binary(data.constData(), length))
        return parseXml(data);
    if (data.size() > kMaxBinarySize)
        return nullptr;
    plist_t root = nullptr;
    plist_from_bin(data.constData(), length, &root);
    const NodePtr binary(root);
    if (!binary || !isShallowTree(binary.get()))
        return nullptr;
    // A binary list is read through its XML form: it can carry keys holding NUL bytes, which
    // libplist asserts on when asked for them, and the XML path refuses those.
    char *xml = nullptr;
    uint32_t xmlLength = 0;
    plist_to_xml(binary.get(), &xml, &xmlLength);
    if (!xml)
        return nullptr;
    const QByteArray xmlData(xml, static_cast<qsizetype>(xmlLength));
    plist_to_xml_free(xml);
    return parseXml(xmlData);
}

} // namespace

QVariant PropertyList::fromData(const QByteArray &data)
{
    if (data.isEmpty() || data.size() > kMaxXmlSize)
        return {};
    const NodePtr root = parse(data);
    return valueOf(root.get(), 0).value_or(QVariant());
}

QVariant PropertyList::read(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kMaxXmlSize)
        return {};
    return fromData(file.readAll());
}

std::optional<QVariantList> PropertyList::readArray(const QString &path)
{
    const QVariant root = read(path);
    if (root.typeId() != QMetaType::QVariantList)
        return std::nullopt;
    return root.toList();
}

std::optional<QVariantMap> PropertyList::readDictionary(const QString &path)
{
    const QVariant root = read(path);
    if (root.typeId() != QMetaType::QVariantMap)
        return std::nullopt;
    return root.toMap();
}

std::optional<QByteArray> PropertyList::toData(const QVariant &root)
{
    const int type = root.typeId();
    if (type != QMetaType::QVariantList && type != QMetaType::QStringList
        && type != QMetaType::QVariantMap && type != QMetaType::QVariantHash)
        return std::nullopt;
    const NodePtr node = nodeOf(root, 0);
    if (!node)
        return std::nullopt;
    char *xml = nullptr;
    uint32_t length = 0;
    plist_to_xml(node.get(), &xml, &length);
    if (!xml)
        return std::nullopt;
    QByteArray data(xml, static_cast<qsizetype>(length));
    plist_to_xml_free(xml);
    return data;
}

bool PropertyList::write(const QVariant &root, const QString &path, Access access)
{
    const std::optional<QByteArray> data = toData(root);
    if (!data)
        return false;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    if (access == Access::OwnerOnly && !file.setPermissions(SandboxPaths::ownerOnly)) {
        file.cancelWriting();
        return false;
    }
    if (file.write(*data) != data->size()) {
        file.cancelWriting();
        return false;
    }
    return file.commit();
}

} // namespace platform
