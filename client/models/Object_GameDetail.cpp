#include "models/Object_GameDetail.h"

#include "util/ICRuntimeHelper.h"

namespace {

QVariantList rawList(const QVariantMap &raw, const QString &key)
{
    const QVariant value = raw.value(key);
    return value.typeId() == QMetaType::QVariantList ? value.toList() : QVariantList();
}

} // namespace

void Object_GameDetail::completeWithRaw(const QVariantMap &raw)
{
    hasParent = raw.value(QStringLiteral("parent")).typeId() == QMetaType::QVariantMap;
    tags = rawList(raw, QStringLiteral("tags"));
    languages = rawList(raw, QStringLiteral("languages"));
    publishers = rawList(raw, QStringLiteral("publishers"));
    dlcs = ICRuntimeHelper::analysArrayData<Object_DLCOrBind>(raw.value(QStringLiteral("dlcs"))).value_or(QList<Object_DLCOrBind>());
    included_bundles = ICRuntimeHelper::analysArrayData<Object_DLCOrBind>(
            raw.value(QStringLiteral("included_bundles"))).value_or(QList<Object_DLCOrBind>());
}

QString Object_GameDetail::baseGameId() const
{
    return baseGameField(QStringLiteral("id"));
}

QString Object_GameDetail::baseGameTitle() const
{
    return baseGameField(QStringLiteral("title"));
}

QString Object_GameDetail::baseGameField(const QString &key) const
{
    const QVariant baseGame = parent.value(QStringLiteral("parent"));
    if (baseGame.typeId() != QMetaType::QVariantMap)
        return QString();
    return JSONModel::textFromJSON(baseGame.toMap().value(key));
}
