#pragma once

#include <QString>

namespace platform {
class RowModel;
}

// The "已拥有" marks of the lists that show games: each row carries its game's id ("gameId") and
// whether the signed-in user owns it ("owned"), kept in step with OwnedGames.
namespace OwnedMarks {

inline const QString GameIdKey = QStringLiteral("gameId");
inline const QString OwnedKey = QStringLiteral("owned");

bool isOwned(const QString &gameId);
// Updates the "owned" value of each row of `rows` now and whenever the owned games change, for
// as long as `rows` lives.
void follow(platform::RowModel *rows);
// Brings the "owned" values of `rows` up to date; answers how many rows changed.
int update(platform::RowModel *rows);

} // namespace OwnedMarks
