#include "screens/store/OwnedMarks.h"

#include "platform/ui/RowModel.h"
#include "service/OwnedGames.h"

namespace OwnedMarks {

bool isOwned(const QString &gameId)
{
    return !gameId.isEmpty() && OwnedGames::shared().contains(gameId);
}

void follow(platform::RowModel *rows)
{
    QObject::connect(&OwnedGames::shared(), &OwnedGames::changed, rows, [rows] { update(rows); });
    update(rows);
}

int update(platform::RowModel *rows)
{
    int changed = 0;
    const QList<QVariantMap> current = rows->rows();
    for (int index = 0; index < current.size(); ++index) {
        QVariantMap row = current.at(index);
        if (!row.contains(GameIdKey))
            continue;
        const bool owned = isOwned(row.value(GameIdKey).toString());
        if (row.value(OwnedKey).toBool() == owned && row.contains(OwnedKey))
            continue;
        row.insert(OwnedKey, owned);
        rows->updateRow(index, row);
        ++changed;
    }
    return changed;
}

} // namespace OwnedMarks
