// The home page's grid: first page on pull-down, further pages on pull-up, and its cells.
#include "screens/store/TabOneViewController.h"

#include "platform/ui/Hud.h"
#include "platform/ui/RefreshFooter.h"
#include "platform/ui/RefreshHeader.h"
#include "platform/ui/RowModel.h"
#include "service/NetWorkHelper.h"
#include "util/ICRuntimeHelper.h"

namespace {

void showFailure(const QVariant &, const QString &message, const QVariant &)
{
    platform::Hud::shared().showErrorWithStatus(message);
}

} // namespace

void TabOneViewController::loadFirstPage()
{
    m_pageNum = 1;
    const int generation = ++m_listGeneration;
    QPointer<TabOneViewController> self(this);
    NetWorkHelper::shareInstance()->getGameListWithType(
            m_viewType, QString::number(m_pageNum), {},
            [self, generation](const QVariant &) {
                if (!self || !self->isCurrentList(generation))
                    return;
                platform::Hud::shared().dismiss();
                self->m_header->endRefreshing();
            },
            [self, generation](const QVariant &data, const QVariant &) {
                if (!self || !self->isCurrentList(generation))
                    return;
                self->m_footer->resetNoMoreData();
                self->m_arraySource
                        = ICRuntimeHelper::analysArrayData<Object_HomeGames>(data).value_or(
                                QList<Object_HomeGames>());
                self->reloadCells();
                self->m_pageNum = 2;
            },
            [self, generation](const QVariant &error, const QString &message,
                               const QVariant &response) {
                if (self && self->isCurrentList(generation))
                    showFailure(error, message, response);
            });
}

void TabOneViewController::loadNextPage()
{
    // The first page is on its way; the page after it is asked for once it is here.
    if (m_header->isRefreshing()) {
        m_footer->endRefreshing();
        return;
    }
    const int generation = m_listGeneration;
    QPointer<TabOneViewController> self(this);
    NetWorkHelper::shareInstance()->getGameListWithType(
            m_viewType, QString::number(m_pageNum), {},
            [self, generation](const QVariant &) {
                if (!self || !self->isCurrentList(generation))
                    return;
                platform::Hud::shared().dismiss();
                self->m_footer->endRefreshing();
            },
            [self, generation](const QVariant &data, const QVariant &) {
                if (!self || !self->isCurrentList(generation))
                    return;
                // An answer that is not a list counts as an empty page.
                const QList<Object_HomeGames> games
                        = ICRuntimeHelper::analysArrayData<Object_HomeGames>(data).value_or(
                                QList<Object_HomeGames>());
                if (games.isEmpty())
                    self->m_footer->noticeNoMoreData();
                self->appendCells(games);
                // Counted even for an empty page, as intended: the next pull asks for the page
                // after it.
                ++self->m_pageNum;
            },
            [self, generation](const QVariant &error, const QString &message,
                               const QVariant &response) {
                if (self && self->isCurrentList(generation))
                    showFailure(error, message, response);
            });
}

void TabOneViewController::clickCellAtIndex(int index)
{
    if (index >= 0 && index < m_cells.size())
        m_cells.at(index).gotoProductDetialBtnClicked();
}

HomePageViewCell TabOneViewController::cellFor(const Object_HomeGames &game)
{
    QPointer<TabOneViewController> self(this);
    return HomePageViewCell::forGame(game, itemWidth(), [self, gameId = game.id] {
        if (self)
            pushGoodsDetail(self, gameId);
    });
}

void TabOneViewController::reloadCells()
{
    m_cells.clear();
    m_cells.reserve(m_arraySource.size());
    for (const Object_HomeGames &game : std::as_const(m_arraySource))
        m_cells.append(cellFor(game));
    m_collectionMenu->setRows(HomePageViewCell::rowsOf(m_cells));
}

void TabOneViewController::appendCells(const QList<Object_HomeGames> &games)
{
    QList<HomePageViewCell> added;
    for (const Object_HomeGames &game : games)
        added.append(cellFor(game));
    m_arraySource.append(games);
    m_cells.append(added);
    m_collectionMenu->appendRows(HomePageViewCell::rowsOf(added));
}
