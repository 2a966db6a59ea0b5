#pragma once

#include "models/JSONPropertyTable.h"

#include <QHash>
#include <QList>
#include <QMetaObject>
#include <QVariant>
#include <QVariantList>
#include <QVariantMap>

#include <optional>

// Base of every Object_ record. Records are Q_GADGET value types whose Q_PROPERTYs (MEMBER) are the
// fields, named exactly as the JSON keys. The shared mapping rules:
//  - a property takes the value under the key of its own name (or the key the class maps to it);
//  - every property is optional: a missing key or a null leaves it empty;
//  - a number for a text property becomes its decimal text ("58", "58.5");
//  - a value of the wrong kind (a dictionary where text is expected, text where a list is expected)
//    leaves the property empty;
//  - lists are filled element by element as they come (dictionaries stay dictionaries), unless the
//    class declares the element type in arrayElementTypes(), in which case each dictionary element
//    is mapped onto that type and other elements are skipped.
// Each record type's property table is built once, on its first use.
struct JSONModel
{
    Q_GADGET
public:
    bool operator==(const JSONModel &) const = default;

    using ElementType = JSONPropertyTable::ElementType;
    using ElementTypes = JSONPropertyTable::ElementTypes;

    // The record built from `dictionary`; nothing when it is not a dictionary.
    template<class T>
    static std::optional<T> initWithDictionary(const QVariant &dictionary)
    {
        if (dictionary.typeId() != QMetaType::QVariantMap)
            return std::nullopt;
        T record;
        propertyTable<T>().fill(&record, *static_cast<const QVariantMap *>(dictionary.constData()));
        return record;
    }

    // One record per dictionary of `list`, in order; other elements are skipped.
    template<class T>
    static QList<T> recordsFromList(const QVariantList &list)
    {
        QList<T> records;
        records.reserve(list.size());
        for (const QVariant &element : list) {
            if (std::optional<T> record = initWithDictionary<T>(element))
                records.append(std::move(*record));
        }
        return records;
    }

    // JSON key -> property name, for classes whose keys differ from their property names.
    static QHash<QString, QString> keyMapper() { return {}; }

    // Property name -> element type, for list properties declared as QList<Object_...>.
    static ElementTypes arrayElementTypes() { return {}; }

    // How a QList<T> property is filled from and written back to JSON lists.
    template<class T>
    static ElementType elementType()
    {
        return {QMetaType::fromType<QList<T>>(),
                [](const QVariantList &list) {
                    return QVariant::fromValue(recordsFromList<T>(list));
                },
                [](const QVariant &records) {
                    QVariantList dictionaries;
                    for (const T &record : records.value<QList<T>>())
                        dictionaries.append(toDictionary(record));
                    return dictionaries;
                }};
    }

    // The record's properties as a dictionary under their JSON keys; empty fields are left out, so
    // that the dictionary maps back onto an equal record.
    template<class T>
    static QVariantMap toDictionary(const T &record)
    {
        return propertyTable<T>().dictionaryOf(&record);
    }

    // A JSON value as text: text as it is, a number in its decimal form, anything else null.
    static QString textFromJSON(const QVariant &value);

private:
    template<class T>
    static const JSONPropertyTable &propertyTable()
    {
        static const JSONPropertyTable table(T::staticMetaObject, T::keyMapper(),
                                             T::arrayElementTypes());
        return table;
    }
};
