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
    const auto records = [&raw](const QString &key) {
        return ICRuntimeHelper::analysArrayData<Object_DLCOrBind>(raw.value(key))
                .value_or(QList<Object_DLCOrBind>());
    };
    dlcs = records(QStringLiteral("dlcs"));
    included_bundles = records(QStringLiteral("included_bundles"));
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
