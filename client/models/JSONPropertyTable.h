#pragma once

#include <QHash>
#include <QList>
#include <QMetaObject>
#include <QMetaProperty>
#include <QMetaType>
#include <QString>
#include <QVariant>
#include <QVariantList>
#include <QVariantMap>

// What JSONModel knows about one record type: for each property, the JSON key it is read from and
// how a JSON value becomes the property's value. Built once per type, so that mapping a record is
// a walk over two sorted sequences instead of a lookup by name per property.
class JSONPropertyTable
{
public:
    // A QList<record> property: its type and how it converts from and to JSON lists.
    struct ElementType
    {
        QMetaType listType;
        QVariant (*fromList)(const QVariantList &list) = nullptr;
        QVariantList (*toList)(const QVariant &records) = nullptr;
    };
    using ElementTypes = QHash<QString, ElementType>;

    JSONPropertyTable(const QMetaObject &type, const QHash<QString, QString> &keyMapper,
                      const ElementTypes &elementTypes);

    void fill(void *gadget, const QVariantMap &dictionary) const;
    QVariantMap dictionaryOf(const void *gadget) const;

private:
    enum class Kind { Text, List, RecordList, Dictionary, Bytes, Any, Other };

    struct Entry
    {
        QString key;
        QMetaProperty property;
        Kind kind = Kind::Other;
        ElementType element;
    };

    static Kind kindOf(const QMetaProperty &property, bool hasElementType);
    QVariant propertyValue(const Entry &entry, const QVariant &json) const;
    static QVariant jsonValue(const Entry &entry, const QVariant &property);

    QList<Entry> m_entries; // sorted by key, the order QVariantMap iterates in
};
