#pragma once

#include <QImage>
#include <QString>

struct Product;

// Draws the seeded catalogue's pictures. The same product always gives the same picture; only
// captchas are random.
namespace PictureFactory {

QImage cover(const Product &product); // 640 x 360
QImage icon(const Product &product); // 160 x 160
QImage banner(int position, const QString &title); // 750 x 300
QImage defaultAvatar(); // 200 x 200
QImage captcha(const QString &text); // 120 x 44

} // namespace PictureFactory
