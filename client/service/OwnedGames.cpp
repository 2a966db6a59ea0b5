#include "service/OwnedGames.h"

#include "service/ApplicationState.h"
#include "service/NetWorkHelper.h"
#include "util/ICRuntimeHelper.h"

#include <QPointer>

#include <algorithm>

OwnedGames &OwnedGames::shared()
{
    static OwnedGames *games = new OwnedGames;
    return *games;
}

QStringList OwnedGames::gameIds() const
{
    QStringList ids(m_gameIds.cbegin(), m_gameIds.cend());
    std::sort(ids.begin(), ids.end());
    return ids;
}

void OwnedGames::refresh()
{
    if (!ApplicationState::shared().userLogin())
        return;
    const quint64 generation = ++m_generation;
    NetWorkHelper::shareInstance()->getMyGamesWithStartFn(
            {}, {},
            [this, generation](const QVariant &data, const QVariant &) {
                if (generation != m_generation)
                    return;
                setGames(ICRuntimeHelper::analysArrayData<Object_MyGameList>(
                                 data.toMap().value(QStringLiteral("games")))
                                 .value_or(QList<Object_MyGameList>()));
            },
            // The marks stay as they were; the next refresh tries again.
            [](const QVariant &, const QString &, const QVariant &) {});
}

void OwnedGames::setGames(const QList<Object_MyGameList> &games)
{
    QSet<QString> ids;
    for (const Object_MyGameList &game : games) {
        if (!game.gameId.isEmpty())
            ids.insert(game.gameId);
    }
    replace(ids);
}

void OwnedGames::add(const QStringList &gameIds)
{
    QSet<QString> ids = m_gameIds;
    for (const QString &id : gameIds) {
        if (!id.isEmpty())
            ids.insert(id);
    }
    replace(ids);
}

void OwnedGames::clear()
{
    ++m_generation;
    replace({});
}

void OwnedGames::replace(const QSet<QString> &gameIds)
{
    if (gameIds == m_gameIds)
        return;
    m_gameIds = gameIds;
    emit changed();
}
