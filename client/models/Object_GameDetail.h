#pragma once

#include "models/JSONModel.h"
#include "models/Object_DLCOrBind.h"

#include <QList>
#include <QString>
#include <QVariantList>
#include <QVariantMap>

// The full detail of one game (the "/products/%@.json" answer). `tags`, `os`, `languages`,
// `developers` and `publishers` hold the answer's raw dictionaries (each shows its "name").
// A downloadable content's `parent` wraps its base game under a second "parent" key.
struct Object_GameDetail : JSONModel
{
    Q_GADGET
    Q_PROPERTY(QString alias_name MEMBER alias_name)
    Q_PROPERTY(QString title MEMBER title)
    Q_PROPERTY(QString filesize MEMBER filesize)
    Q_PROPERTY(QVariantList tags MEMBER tags)
    Q_PROPERTY(QString list_price MEMBER list_price)
    Q_PROPERTY(QString install_type MEMBER install_type)
    Q_PROPERTY(QVariantList os MEMBER os)
    Q_PROPERTY(QVariantList languages MEMBER languages)
    Q_PROPERTY(QVariantList developers MEMBER developers)
    Q_PROPERTY(QVariantList publishers MEMBER publishers)
    Q_PROPERTY(QList<Object_DLCOrBind> dlcs MEMBER dlcs)
    Q_PROPERTY(QList<Object_DLCOrBind> included_bundles MEMBER included_bundles)
    Q_PROPERTY(QString product_image MEMBER product_image)
    Q_PROPERTY(QString pubtype MEMBER pubtype)
    Q_PROPERTY(QString id MEMBER id)
    Q_PROPERTY(QString manual MEMBER manual)
    Q_PROPERTY(QString release_date MEMBER release_date)
    Q_PROPERTY(QString raw_summary MEMBER raw_summary)
    Q_PROPERTY(QString type_name MEMBER type_name)
    Q_PROPERTY(QString sale_price MEMBER sale_price)
    Q_PROPERTY(QString game_status MEMBER game_status)
    Q_PROPERTY(QString code_type MEMBER code_type)
    Q_PROPERTY(QString icon_image MEMBER icon_image)
    Q_PROPERTY(QString min_age MEMBER min_age)
    Q_PROPERTY(QString available MEMBER available)
    Q_PROPERTY(QString blocked MEMBER blocked)
    Q_PROPERTY(QVariantMap parent MEMBER parent)
public:
    QString alias_name;
    QString title;
    QString filesize;
    QVariantList tags;
    QString list_price;
    QString install_type;
    QVariantList os;
    QVariantList languages;
    QVariantList developers;
    QVariantList publishers;
    QList<Object_DLCOrBind> dlcs;
    QList<Object_DLCOrBind> included_bundles;
    QString product_image;
    QString pubtype;
    QString id;
    QString manual;
    QString release_date;
    QString raw_summary;
    QString type_name;
    QString sale_price;
    QString game_status;
    QString code_type;
    QString icon_image;
    QString min_age;
    QString available;
    QString blocked;
    QVariantMap parent;
    // Whether the answer carried a "parent" dictionary at all, even an empty one (completeWithRaw
    // sets it): a downloadable content's base-game row shows whenever it is there.
    bool hasParent = false;

    bool operator==(const Object_GameDetail &) const = default;

    static ElementTypes arrayElementTypes()
    {
        return {{QStringLiteral("dlcs"), elementType<Object_DLCOrBind>()},
                {QStringLiteral("included_bundles"), elementType<Object_DLCOrBind>()}};
    }

    // Refills the lists the detail page shows from the raw answer: `tags`, `languages` and
    // `publishers` with its raw elements, `dlcs` and `included_bundles` with records; a value that
    // is not a list leaves the list empty. `os` and `developers` stay as mapped.
    void completeWithRaw(const QVariantMap &raw);

    // The base game of a downloadable content (empty for a base game).
    QString baseGameId() const;
    QString baseGameTitle() const;

private:
    QString baseGameField(const QString &key) const;
};
