#include "screens/account/MessageLink.h"

#include "platform/ui/NavigationController.h"
#include "platform/ui/UrlOpener.h"
#include "util/AppConfig.h"
#include "util/NSStringTools.h"

#include <QStringList>
#include <QUrl>

namespace {

MessageLink::GameDetailOpener &customOpener()
{
    static MessageLink::GameDetailOpener opener;
    return opener;
}

QUrl browserUrl(const QString &url)
{
    if (url.startsWith(QLatin1String("http")))
        return QUrl(url);
    return QUrl(ApiBaseUrl() + (url.startsWith(QLatin1Char('/')) ? url : QLatin1Char('/') + url));
}

} // namespace

std::optional<QString> MessageLink::gameIdFromUrl(const QString &url)
{
    const QStringList pieces = url.split(QLatin1Char('/'));
    if (pieces.size() < 2 || !NSStringTools::isInt(pieces.constLast()))
        return std::nullopt;
    if (pieces.at(pieces.size() - 2) != QLatin1String("products"))
        return std::nullopt;
    return pieces.constLast();
}

void MessageLink::follow(const QString &url, platform::NavigationController *navigation)
{
    if (const std::optional<QString> gameId = gameIdFromUrl(url)) {
        openGameDetail(navigation, *gameId);
        return;
    }
    platform::UrlOpener::shared().openURL(browserUrl(url));
}

void MessageLink::setGameDetailOpener(GameDetailOpener opener)
{
    customOpener() = std::move(opener);
}

void MessageLink::openGameDetail(platform::NavigationController *navigation, const QString &gameId)
{
    if (customOpener()) {
        customOpener()(navigation, gameId);
        return;
    }
    if (!navigation)
        return;
    // GAME_DETAIL_PENDING
    Q_UNUSED(gameId)
}
