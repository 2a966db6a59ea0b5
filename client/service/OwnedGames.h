#pragma once

#include "models/Object_MyGameList.h"

#include <QList>
#include <QObject>
#include <QSet>
#include <QString>
#include <QStringList>

// The ids of the games the signed-in user owns, as the store's owned-games answer lists them. One
// set for the whole app: the store screens mark owned games from it and follow `changed`. It is
// asked of the store after sign-in, after a confirmed payment and on pull-to-refresh, and emptied
// at sign-out. Nothing is kept on disk.
class OwnedGames : public QObject
{
    Q_OBJECT
public:
    static OwnedGames &shared();

    bool contains(const QString &gameId) const { return m_gameIds.contains(gameId); }
    QStringList gameIds() const;
    bool isEmpty() const { return m_gameIds.isEmpty(); }

    // Asks the store for the owned games, without progress or error texts (the screens showing
    // the marks have their own); nothing is asked while signed out. A refresh overtaken by a later
    // one, or by clear(), is dropped.
    void refresh();
    // The games of an owned-games answer (its "games" list) become the set.
    void setGames(const QList<Object_MyGameList> &games);
    // Games just bought, marked at once, before the store's list comes back.
    void add(const QStringList &gameIds);
    // Signed out: nothing is owned.
    void clear();

signals:
    void changed();

private:
    OwnedGames() = default;
    void replace(const QSet<QString> &gameIds);

    QSet<QString> m_gameIds;
    quint64 m_generation = 0;
};
