#pragma once

#include "pictures/PictureStore.h"

class Catalog;

// The scaled copies of the seeded catalogue's pictures the app asks for first, made when the
// store starts so that they are read from disk, not scaled while a customer waits. The widths are
// those of the phone app's 375-point window at screen scales 1, 2 and 3: a home grid cell is
// (375 - 3 x 10) / 2 = 172.5 points wide, the carousel and a product page's header picture the
// whole 375 points. The app rounds points x scale to whole pixels and always asks for quality 85.
namespace SeededPictures {

inline constexpr int kQuality = 85;
inline constexpr int kGridCellWidths[] = {173, 345, 518};
inline constexpr int kFullWidths[] = {375, 750, 1125};

// Every seeded banner at the full widths, then every cover at the grid cell and full widths.
QList<PictureStore::Request> requests(const Catalog &catalog);

} // namespace SeededPictures
