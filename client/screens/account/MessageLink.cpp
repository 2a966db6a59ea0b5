#include "screens/account/MessageLink.h"

#include "platform/ui/NavigationController.h"
#include "platform/ui/UrlOpener.h"
#include "util/AppConfig.h"
#include "util/NSStringTools.h"

#include <QStringList>
#include <QUrl>
#include <QVariant>

#include "screens/store/GoodsDetailViewController.h"

namespace {

platform::ViewController *makeGameDetail(const QString &gameId)
{
    auto *detail = new GoodsDetailViewController;
    detail->setGameId(gameId);
    return detail;
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
    // A relative address is the store's page, as for a carousel entry (absoluteAddress).
    platform::UrlOpener::shared().openURL(QUrl(absoluteAddress(url)));
}

void MessageLink::openGameDetail(platform::NavigationController *navigation, const QString &gameId)
{
    if (navigation)
        navigation->pushViewController(makeGameDetail(gameId), true);
}
