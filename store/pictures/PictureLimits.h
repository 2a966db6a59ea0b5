#pragma once

#include <QByteArray>
#include <QSize>
#include <QString>

// How large a picture the store decodes. The size a picture declares is read from its header
// before anything is decoded, so a small file that unpacks into a huge bitmap is refused cheaply.
namespace PictureLimits {

inline constexpr int kMaxSide = 4096;
inline constexpr qint64 kMaxPixels = 12'000'000;

bool acceptable(const QSize &size);
// The size declared in the picture's header; invalid when it cannot be read.
QSize declaredSize(const QByteArray &bytes);
// The refusal shown to the user.
QString refusal();

} // namespace PictureLimits
