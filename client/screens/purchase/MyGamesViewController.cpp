#include "screens/purchase/MyGamesViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "screens/purchase/MyGamesViewCell.h"
#include "screens/purchase/PurchaseFailure.h"
#include "screens/store/GoodsDetailViewController.h"
#include "screens/store/HomePageViewCell.h"
#include "service/NetWorkHelper.h"
#include "service/OwnedGames.h"
#include "util/ICRuntimeHelper.h"

#include <QPointer>

using platform::Hud;

namespace {
// The window's width in points, which the grid fills.
constexpr qreal ScreenWidth = 375;
} // namespace

MyGamesViewController::MyGamesViewController(QObject *parent)
    : Q9FatherViewController(parent)
    , m_collectionMenu(new platform::RowModel({QStringLiteral("imageUrl")}, this))
    , m_refreshHeader(new platform::RefreshHeader(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/purchase/MyGamesView.qml")));
    connect(m_refreshHeader, &platform::RefreshHeader::refreshRequested, this,
            &MyGamesViewController::loadGames);
}

void MyGamesViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("我的游戏"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void MyGamesViewController::setLoadViewAction()
{
    m_refreshHeader->beginRefreshing();
}

void MyGamesViewController::setRefleshDataAction()
{
    hideTabBar(true);
}

void MyGamesViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void MyGamesViewController::loadGames()
{
    QPointer<MyGamesViewController> self(this);
    NetWorkHelper::shareInstance()->getMyGamesWithStartFn(
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("正在加载..."));
            },
            [self](const QVariant &) {
                Hud::shared().dismiss();
                if (self)
                    self->m_refreshHeader->endRefreshing();
            },
            [self](const QVariant &data, const QVariant &) {
                if (self)
                    self->showGames(data);
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                Hud::shared().showErrorWithStatus(PurchaseFailure::readable(message));
            });
}

void MyGamesViewController::showGames(const QVariant &data)
{
    m_arraySource = ICRuntimeHelper::analysArrayData<Object_MyGameList>(
                            data.toMap().value(QStringLiteral("games")))
                            .value_or(QList<Object_MyGameList>());
    OwnedGames::shared().setGames(m_arraySource);
    const qreal cellWidth = HomePageViewCell::itemWidthForScreenWidth(ScreenWidth);
    QList<QVariantMap> rows;
    for (const Object_MyGameList &game : m_arraySource) {
        MyGamesViewCell cell(cellWidth, HomePageViewCell::screenScale());
        cell.setCellContentWithImage(game.productImage);
        rows.append(cell.toRow());
    }
    m_collectionMenu->setRows(rows);
}

void MyGamesViewController::didSelectItemAtIndex(int index)
{
    platform::NavigationController *navigation = navigationController();
    if (index < 0 || index >= m_arraySource.size() || !navigation)
        return;
    auto *detail = new GoodsDetailViewController;
    detail->setGameId(m_arraySource.at(index).gameId);
    navigation->pushViewController(detail, true);
}
