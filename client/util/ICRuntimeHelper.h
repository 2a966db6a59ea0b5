#pragma once

#include "models/JSONModel.h"

#include <QList>
#include <QVariant>

#include <optional>

class ICRuntimeHelper
{
public:
    // For a list: one record of type T per dictionary element, in order (other elements are
    // skipped). Anything that is not a list gives nothing (std::nullopt), not an empty list;
    // callers that treat both alike say so with value_or.
    template<class T>
    static std::optional<QList<T>> analysArrayData(const QVariant &array)
    {
        if (array.typeId() != QMetaType::QVariantList)
            return std::nullopt;
        return JSONModel::recordsFromList<T>(*static_cast<const QVariantList *>(array.constData()));
    }
};
