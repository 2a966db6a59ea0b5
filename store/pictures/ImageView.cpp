#include "pictures/ImageView.h"

#include <QStringList>

std::optional<ImageView> ImageView::parse(const QString &query)
{
    const QStringList parts = query.split(QLatin1Char('/'));
    if (parts.size() < 4 || parts.size() % 2 != 0 || parts.at(0) != QLatin1String("imageView2"))
        return std::nullopt;
    bool ok = false;
    const int mode = parts.at(1).toInt(&ok);
    if (!ok || mode < 0 || mode > 5)
        return std::nullopt;
    ImageView view;
    for (qsizetype i = 2; i + 1 < parts.size(); i += 2) {
        const int value = parts.at(i + 1).toInt(&ok);
        if (!ok || value <= 0)
            return std::nullopt;
        const QString &key = parts.at(i);
        if (key == QLatin1String("w"))
            view.width = value;
        else if (key == QLatin1String("h"))
            view.height = value;
        else if (key == QLatin1String("q"))
            view.quality = value;
        else
            return std::nullopt;
    }
    if (view.width <= 0 || view.width > kMaxSide || view.height > kMaxSide || view.quality > 100)
        return std::nullopt;
    return view;
}
