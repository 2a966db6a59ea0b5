#pragma once

#include "models/JSONModel.h"

#include <QList>
#include <QVariant>

class ICRuntimeHelper
{
public:
    // For a list: one record of type T per dictionary element, in order (other elements are
    // skipped). Anything that is not a list gives an empty list.
    template<class T>
    static QList<T> analysArrayData(const QVariant &array)
    {
        if (array.typeId() != QMetaType::QVariantList)
            return {};
        return JSONModel::recordsFromList<T>(*static_cast<const QVariantList *>(array.constData()));
    }
};
