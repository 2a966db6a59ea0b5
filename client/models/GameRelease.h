#pragma once

#include <QDateTime>
#include <QString>

// Whether a game released at `release_date` (Unix seconds as text) is still a pre-sale at `now`
// (Unix seconds): `now` is strictly before the date read as a signed 32-bit integer. An empty or
// non-numeric date reads as 0, so such a game is never a pre-sale.
bool isPreSale(const QString &release_date, qint64 now = QDateTime::currentSecsSinceEpoch());
