#pragma once

#include <QList>
#include <QString>
#include <QStringList>

// One product of the catalogue as the database holds it. Prices are in fen.
struct Product
{
    qint64 id = 0;
    QString kind; // "game", "dlc" or "bundle"
    QString title;
    QString aliasName;
    QString rawSummary;
    qint64 listPrice = 0;
    qint64 salePrice = 0;
    qint64 releaseDate = 0;
    QString minAge; // "" when there is no age limit
    bool blocked = false;
    qint64 parentId = 0; // the base game of a DLC
    QString filesize;
    QString pubtype;
    QString installType;
    QString codeType;
    QString manual;
    int recRank = 0; // 0: not recommended
    int sales = 0;
    QStringList tags;
    QStringList os;
    QStringList languages;
    QStringList publishers;
    QStringList developers;
    QList<qint64> bundleItems; // the products inside a bundle

    QString typeName() const;
    bool isPresale(qint64 now) const { return releaseDate > now; }
    QString gameStatus(qint64 now) const;
};

struct FocusRec
{
    int position = 0;
    QString title;
    QString url; // "/products/<id>" or an outside address
};
