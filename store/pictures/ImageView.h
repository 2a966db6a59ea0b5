#pragma once

#include <QString>

#include <optional>

// The image-service suffix the client appends to picture addresses:
// "imageView2/<mode>/w/<width>[/h/<height>][/q/<quality>]". Every mode scales proportionally to
// the given width (and, when given, at most the given height); the answer is a JPEG.
struct ImageView
{
    int width = 0;
    int height = 0; // 0: no limit
    int quality = 85;

    static constexpr int kMaxSide = 2048;
    // nullopt when the text is not such a suffix or asks for an impossible size.
    static std::optional<ImageView> parse(const QString &query);
};
