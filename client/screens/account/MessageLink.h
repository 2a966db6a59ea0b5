#pragma once

#include <QString>

#include <optional>

namespace platform {
class NavigationController;
}

// Where a push message's address leads: an address ending in "products/<integer>" opens that
// game inside the app, anything else goes to the system browser.
class MessageLink
{
public:
    MessageLink() = delete;

    // The game id when the last piece of `url` (split at "/") is an integer and the piece
    // before it is "products".
    static std::optional<QString> gameIdFromUrl(const QString &url);

    // Opens the game's detail screen on `navigation`, or the address in the browser (a store
    // path such as "/news/3" is taken as the store's page).
    static void follow(const QString &url, platform::NavigationController *navigation);

    // Pushes the game detail screen for `gameId` onto `navigation`, animated.
    static void openGameDetail(platform::NavigationController *navigation, const QString &gameId);
};
