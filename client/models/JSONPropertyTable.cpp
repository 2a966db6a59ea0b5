#include "models/JSONPropertyTable.h"

#include "models/JSONModel.h"

#include <algorithm>

JSONPropertyTable::JSONPropertyTable(const QMetaObject &type,
                                     const QHash<QString, QString> &keyMapper,
                                     const ElementTypes &elementTypes)
{
    QHash<QString, QStringList> keysOfProperty;
    for (auto it = keyMapper.cbegin(); it != keyMapper.cend(); ++it)
        keysOfProperty[it.value()].append(it.key());

    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
        const QMetaProperty property = type.property(i);
        const QString name = QString::fromLatin1(property.name());
        const auto element = elementTypes.constFind(name);
        const bool hasElementType = element != elementTypes.cend();
        Q_ASSERT_X(!hasElementType || element->listType == property.metaType(), type.className(),
                   "an element type must match its property's list type");

        Entry entry;
        entry.property = property;
        entry.kind = kindOf(property, hasElementType);
        if (hasElementType)
            entry.element = *element;
        // A mapped property is read only from its mapped keys, never from its own name.
        const QStringList keys = keysOfProperty.value(name, QStringList{name});
        for (const QString &key : keys) {
            entry.key = key;
            m_entries.append(entry);
        }
    }
    std::sort(m_entries.begin(), m_entries.end(),
              [](const Entry &a, const Entry &b) { return a.key < b.key; });
}

JSONPropertyTable::Kind JSONPropertyTable::kindOf(const QMetaProperty &property,
                                                  bool hasElementType)
{
    if (hasElementType)
        return Kind::RecordList;
    switch (property.metaType().id()) {
    case QMetaType::QString:
        return Kind::Text;
    case QMetaType::QVariantList:
        return Kind::List;
    case QMetaType::QVariantMap:
        return Kind::Dictionary;
    case QMetaType::QByteArray:
        return Kind::Bytes;
    case QMetaType::QVariant:
        return Kind::Any;
    default:
        return Kind::Other;
    }
}

void JSONPropertyTable::fill(void *gadget, const QVariantMap &dictionary) const
{
    // Both sequences are sorted by key: one pass over each.
    auto field = dictionary.cbegin();
    const auto end = dictionary.cend();
    for (const Entry &entry : m_entries) {
        while (field != end && field.key() < entry.key)
            ++field;
        if (field == end)
            return;
        if (field.key() != entry.key)
            continue;
        const QVariant value = propertyValue(entry, field.value());
        if (value.isValid())
            entry.property.writeOnGadget(gadget, value);
    }
}

// The property's value for a JSON value, or an invalid QVariant when the field stays empty.
QVariant JSONPropertyTable::propertyValue(const Entry &entry, const QVariant &json) const
{
    const int typeId = json.typeId();
    switch (entry.kind) {
    case Kind::Text: {
        const QString text = JSONModel::textFromJSON(json);
        return text.isNull() ? QVariant() : QVariant(text);
    }
    case Kind::List:
        if (typeId == QMetaType::QVariantList)
            return json;
        return typeId == QMetaType::QStringList ? QVariant(json.toList()) : QVariant();
    case Kind::RecordList:
        return typeId == QMetaType::QVariantList ? entry.element.fromList(json.toList())
                                                 : QVariant();
    case Kind::Dictionary:
        return typeId == QMetaType::QVariantMap ? json : QVariant();
    case Kind::Bytes:
        if (typeId == QMetaType::QByteArray)
            return json;
        return typeId == QMetaType::QString ? QVariant(json.toString().toUtf8()) : QVariant();
    case Kind::Any:
        return typeId == QMetaType::Nullptr ? QVariant() : json;
    case Kind::Other:
        break;
    }
    QVariant converted = json;
    if (typeId == QMetaType::Nullptr || !converted.convert(entry.property.metaType()))
        return QVariant();
    return converted;
}

QVariantMap JSONPropertyTable::dictionaryOf(const void *gadget) const
{
    QVariantMap dictionary;
    for (const Entry &entry : m_entries) {
        const QVariant value = jsonValue(entry, entry.property.readOnGadget(gadget));
        if (value.isValid())
            dictionary.insert(entry.key, value);
    }
    return dictionary;
}

// The JSON value of a property, or an invalid QVariant when the property is empty.
QVariant JSONPropertyTable::jsonValue(const Entry &entry, const QVariant &property)
{
    switch (entry.kind) {
    case Kind::Text:
        return property.toString().isNull() ? QVariant() : property;
    case Kind::Bytes:
        return property.toByteArray().isNull() ? QVariant() : property;
    case Kind::RecordList:
        return entry.element.toList(property);
    case Kind::Dictionary:
        return property.toMap().isEmpty() ? QVariant() : property;
    default:
        return property;
    }
}
