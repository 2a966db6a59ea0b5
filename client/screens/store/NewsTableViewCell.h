#pragma once

#include <QString>
#include <QVariantMap>

// The row layout of the news list. The layout carries its own fixed texts; the list gives it no
// content.
class NewsTableViewCell
{
public:
    static const QString Identifier; // "NewsTableViewCell"
    static constexpr qreal Height = 34;

    QString tag() const;
    QString title() const;
    // What the QML row binds.
    QVariantMap row() const;
};
