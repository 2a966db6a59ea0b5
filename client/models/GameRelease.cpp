#include "models/GameRelease.h"

#include "util/NSStringUtils.h"

bool isPreSale(const QString &release_date, qint64 now)
{
    return now < NSStringUtils::intValue(release_date);
}
