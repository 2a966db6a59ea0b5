#include "screens/store/SearchDetailViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Hud.h"
#include "platform/ui/Label.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/RefreshFooter.h"
#include "platform/ui/RefreshHeader.h"
#include "platform/ui/RowModel.h"
#include "platform/ui/TextField.h"
#include "screens/store/OwnedMarks.h"
#include "screens/store/TabOneViewController.h"
#include "service/NetWorkHelper.h"
#include "service/OwnedGames.h"
#include "util/ICRuntimeHelper.h"

#include <QPointer>

namespace {

void showFailure(const QString &message)
{
    platform::Hud::shared().showErrorWithStatus(message);
}

} // namespace

SearchDetailViewController::SearchDetailViewController(const QString &searchContent,
                                                       QObject *parent)
    : Q9FatherViewController(parent)
    , m_strSearch(searchContent)
    , m_fieldSearch(new platform::TextField(this))
    , m_labelTitle(new platform::Label(this))
    , m_collectionMenu(new platform::RowModel(HomePageViewCell().row().keys(), this))
    , m_header(new platform::RefreshHeader(this))
    , m_footer(new platform::RefreshFooter(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/store/SearchDetailView.qml")));
    connect(m_header, &platform::RefreshHeader::refreshRequested, this,
            &SearchDetailViewController::refreshData);
    connect(m_header, &platform::RefreshHeader::refreshRequested, &OwnedGames::shared(),
            &OwnedGames::refresh);
    OwnedMarks::follow(m_collectionMenu);
    connect(m_footer, &platform::RefreshFooter::loadMoreRequested, this,
            &SearchDetailViewController::loadData);
    connect(m_fieldSearch, &platform::TextField::returnPressed, this,
            &SearchDetailViewController::textFieldShouldReturn);
}

void SearchDetailViewController::setScreenWidth(qreal width)
{
    if (width <= 0 || qFuzzyCompare(width, m_screenWidth))
        return;
    m_screenWidth = width;
    emit geometryChanged();
    reloadCells();
}

void SearchDetailViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QString());
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void SearchDetailViewController::setLoadViewAction()
{
    m_fieldSearch->setPlaceholder(QStringLiteral("请输入游戏名称"));
    m_fieldSearch->setLeftImageName(QStringLiteral("common_search"));
    m_fieldSearch->setClearButtonShown(true);
    m_fieldSearch->setText(m_strSearch);
    m_header->beginRefreshing();
}

void SearchDetailViewController::setRefleshDataAction()
{
    hideTabBar(true);
}

void SearchDetailViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void SearchDetailViewController::textFieldShouldReturn()
{
    m_fieldSearch->resignFirstResponder();
    // A search under way was for the old text: start over with the new one.
    if (m_header->isRefreshing())
        refreshData();
    else
        m_header->beginRefreshing();
}

void SearchDetailViewController::refreshData()
{
    m_pageNum = 1;
    const int generation = ++m_searchGeneration;
    QPointer<SearchDetailViewController> self(this);
    NetWorkHelper::shareInstance()->searchGameWithQ(
            m_fieldSearch->text(), QString::number(m_pageNum), {},
            [self, generation](const QVariant &) {
                if (self && self->isCurrentSearch(generation))
                    self->m_header->endRefreshing();
            },
            [self, generation](const QVariant &data, const QVariant &) {
                if (!self || !self->isCurrentSearch(generation))
                    return;
                self->m_pageNum = 2;
                self->m_arraySource
                        = ICRuntimeHelper::analysArrayData<Object_SearchGames>(data).value_or(
                                QList<Object_SearchGames>());
                self->reloadCells();
                self->showCountLine();
            },
            [self, generation](const QVariant &, const QString &message, const QVariant &) {
                if (self && self->isCurrentSearch(generation))
                    showFailure(message);
            });
}

void SearchDetailViewController::loadData()
{
    // The first page of a new search is on its way; further pages follow it.
    if (m_header->isRefreshing()) {
        m_footer->endRefreshing();
        return;
    }
    const int generation = m_searchGeneration;
    QPointer<SearchDetailViewController> self(this);
    NetWorkHelper::shareInstance()->searchGameWithQ(
            m_fieldSearch->text(), QString::number(m_pageNum), {},
            [self, generation](const QVariant &) {
                if (self && self->isCurrentSearch(generation))
                    self->m_footer->endRefreshing();
            },
            [self, generation](const QVariant &data, const QVariant &) {
                if (!self || !self->isCurrentSearch(generation))
                    return;
                ++self->m_pageNum;
                self->appendCells(
                        ICRuntimeHelper::analysArrayData<Object_SearchGames>(data).value_or(
                                QList<Object_SearchGames>()));
                self->showCountLine();
            },
            [self, generation](const QVariant &, const QString &message, const QVariant &) {
                if (self && self->isCurrentSearch(generation))
                    showFailure(message);
            });
}

void SearchDetailViewController::showCountLine()
{
    m_labelTitle->setText(QStringLiteral("搜索到相关游戏%1款").arg(m_arraySource.size()));
}

void SearchDetailViewController::clickCellAtIndex(int index)
{
    if (index >= 0 && index < m_cells.size())
        m_cells.at(index).gotoProductDetialBtnClicked();
}

HomePageViewCell SearchDetailViewController::cellFor(const Object_SearchGames &game)
{
    QPointer<SearchDetailViewController> self(this);
    return HomePageViewCell::forGame(game, itemWidth(), [self, gameId = game.id] {
        if (self)
            TabOneViewController::pushGoodsDetail(self, gameId);
    });
}

void SearchDetailViewController::reloadCells()
{
    m_cells.clear();
    for (const Object_SearchGames &game : std::as_const(m_arraySource))
        m_cells.append(cellFor(game));
    m_collectionMenu->setRows(HomePageViewCell::rowsOf(m_cells));
}

void SearchDetailViewController::appendCells(const QList<Object_SearchGames> &games)
{
    QList<HomePageViewCell> added;
    for (const Object_SearchGames &game : games)
        added.append(cellFor(game));
    m_arraySource.append(games);
    m_cells.append(added);
    m_collectionMenu->appendRows(HomePageViewCell::rowsOf(added));
}
