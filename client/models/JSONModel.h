#pragma once

#include <QHash>
#include <QMetaObject>
#include <QVariant>
#include <QVariantMap>

#include <optional>

// Base of every Object_ record. Records are Q_GADGET value types whose Q_PROPERTYs (MEMBER) are the
// fields, named exactly as the JSON keys. The shared mapping rules:
//  - a property takes the value under the key of its own name (or the key the class maps to it);
//  - every property is optional: a missing key or a null leaves it empty;
//  - a number for a text property becomes its decimal text;
//  - lists are filled element by element as they come (dictionaries stay dictionaries), unless the
//    class declares the element type, in which case each element is mapped onto that type.
struct JSONModel
{
    Q_GADGET
public:
    // The record built from `dictionary`; nothing when it is not a dictionary.
    template<class T>
    static std::optional<T> initWithDictionary(const QVariant &dictionary)
    {
        if (dictionary.typeId() != QMetaType::QVariantMap)
            return std::nullopt;
        T record;
        fill(T::staticMetaObject, &record, dictionary.toMap(), T::keyMapper());
        return record;
    }

    // JSON key -> property name, for classes whose keys differ from their property names.
    static QHash<QString, QString> keyMapper() { return {}; }

    // The record's properties as a dictionary of their values (text stays text).
    template<class T>
    static QVariantMap toDictionary(const T &record)
    {
        return dictionaryOf(T::staticMetaObject, &record);
    }

protected:
    static void fill(const QMetaObject &type, void *gadget, const QVariantMap &dictionary,
                     const QHash<QString, QString> &keyMapper);
    static QVariantMap dictionaryOf(const QMetaObject &type, const void *gadget);
};
