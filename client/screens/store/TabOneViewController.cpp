#include "screens/store/TabOneViewController.h"

#include "app/AppDelegate.h"
#include "platform/UserDefaults.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Button.h"
#include "platform/ui/Hud.h"
#include "platform/ui/Label.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/RefreshFooter.h"
#include "platform/ui/RefreshHeader.h"
#include "platform/ui/RowModel.h"
#include "platform/ui/TextField.h"
#include "platform/ui/UrlOpener.h"
#include "screens/store/GoodsDetailViewController.h"
#include "screens/store/ICPageControl.h"
#include "screens/store/OwnedMarks.h"
#include "screens/store/SearchDetailViewController.h"
#include "service/NetWorkHelper.h"
#include "service/OwnedGames.h"
#include "util/AppConfig.h"
#include "util/NSStringTools.h"

#include <QUrl>

namespace {

const QColor SortTitleColor(0x55, 0x55, 0x55);
const QColor SortSelectedTitleColor(249, 145, 45);

} // namespace

const QList<TabOneViewController::SortTab> &TabOneViewController::sortTabs()
{
    static const QList<SortTab> tabs = {
            {QStringLiteral("latest"), QStringLiteral("homepage_sort1"), QStringLiteral("最新")},
            {QStringLiteral("rec"), QStringLiteral("homepage_sort2"), QStringLiteral("推荐")},
            {QStringLiteral("onsale"), QStringLiteral("homepage_sort3"), QStringLiteral("特惠")},
            {QStringLiteral("top"), QStringLiteral("homepage_sort4"), QStringLiteral("热销")},
    };
    return tabs;
}

TabOneViewController::TabOneViewController(QObject *parent)
    : Q9FatherViewController(parent)
    , m_fieldSearch(new platform::TextField(this))
    , m_buttonRefresh(new platform::Button(this))
    , m_pageControl(new ICPageControl(Qt::white, QColor(255, 255, 255, 120), this))
    , m_scrollBanner(
              new platform::RowModel({QStringLiteral("tag"), QStringLiteral("imageUrl")}, this))
    , m_collectionMenu(new platform::RowModel(HomePageViewCell().row().keys(), this))
    , m_header(new platform::RefreshHeader(this))
    , m_footer(new platform::RefreshFooter(this))
    , m_labelOffline(new platform::Label(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/store/TabOneView.qml")));
    setTitleViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/store/TabOneTitleView.qml")));
    m_buttonRefresh->setTitle(QStringLiteral("暂无数据,点击刷新"));
    connect(m_buttonRefresh, &platform::Button::clicked, this, &TabOneViewController::refreshData);
    connect(m_fieldSearch, &platform::TextField::returnPressed, this,
            &TabOneViewController::textFieldShouldReturn);
    connect(m_header, &platform::RefreshHeader::refreshRequested, this,
            &TabOneViewController::loadFirstPage);
    // Pulling down also brings the "已拥有" marks up to date.
    connect(m_header, &platform::RefreshHeader::refreshRequested, &OwnedGames::shared(),
            &OwnedGames::refresh);
    OwnedMarks::follow(m_collectionMenu);
    connect(m_footer, &platform::RefreshFooter::loadMoreRequested, this,
            &TabOneViewController::loadNextPage);
    followOfflineState();
}

void TabOneViewController::followOfflineState()
{
    m_labelOffline->setText(QStringLiteral("网络不可用，显示的是上次浏览的内容"));
    OfflineState *state = NetWorkHelper::shareInstance()->offlineState();
    m_labelOffline->setHidden(!state->answeredFromCache());
    connect(state, &OfflineState::answeredFromCacheChanged, this,
            [this, state] { m_labelOffline->setHidden(!state->answeredFromCache()); });
    // What is on the page is out of date: fetch it all again.
    connect(state, &OfflineState::networkReturned, this, &TabOneViewController::refreshData);
}

void TabOneViewController::setScreenWidth(qreal width)
{
    if (width <= 0 || qFuzzyCompare(width, m_screenWidth))
        return;
    m_screenWidth = width;
    emit geometryChanged();
    reloadBannerRows();
    reloadCells();
}

void TabOneViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("首页"));
    // A tab root: nothing to go back to, and the search field takes the bar.
    leftBarItem()->setHidden(true);
    rightBarItem()->setHidden(true);
}

void TabOneViewController::viewWillAppear(bool animated)
{
    Q9FatherViewController::viewWillAppear(animated);
    setNavigationBarTransparent(true);
}

void TabOneViewController::viewDidAppear(bool animated)
{
    Q9FatherViewController::viewDidAppear(animated);
    if (qFuzzyCompare(m_titleViewAlpha, 0.9))
        return;
    m_titleViewAlpha = 0.9;
    emit titleViewAlphaChanged();
}

void TabOneViewController::setLoadViewAction()
{
    m_fieldSearch->setPlaceholder(QStringLiteral("请输入游戏名称"));
    m_fieldSearch->setLeftImageName(QStringLiteral("homepage_search"));
    m_fieldSearch->setClearButtonShown(true);
    m_fieldSearch->setHidden(true);
    makeCartBadge();
    refreshData();
}

void TabOneViewController::setRefleshDataAction()
{
    hideTabBar(false);
}

void TabOneViewController::makeCartBadge()
{
    if (m_labelRedDot)
        return;
    m_labelRedDot = new platform::Label(this);
    const QString stored
            = platform::UserDefaults::standard().objectForKey(QStringLiteral("cartnum")).toString();
    m_labelRedDot->setText(stored);
    m_labelRedDot->setHidden(stored.isEmpty() || stored == QLatin1String("0"));
    emit labelRedDotChanged();
    AppDelegate::shared()->setLabelRedDot(m_labelRedDot);
}

QVariantList TabOneViewController::scrollSortObjects() const
{
    QVariantList objects;
    for (platform::Button *button : m_scrollSort)
        objects.append(QVariant::fromValue(button));
    return objects;
}

void TabOneViewController::setViewType(const QString &type)
{
    if (m_viewType == type)
        return;
    m_viewType = type;
    emit viewTypeChanged();
}

void TabOneViewController::refreshData()
{
    m_arraySource.clear();
    m_cells.clear();
    m_collectionMenu->clear();
    // List answers still on their way belong to the grid being replaced.
    ++m_listGeneration;
    m_header->endRefreshing();
    m_footer->endRefreshing();
    m_arrayImageBanner.clear();
    setViewType(QStringLiteral("latest"));
    rebuildSortButtons();

    QPointer<TabOneViewController> self(this);
    NetWorkHelper::shareInstance()->getHomepageDataWithStartFn(
            [](const QVariantMap &) {
                platform::Hud::shared().showWithStatus(QStringLiteral("正在加载"), true);
            },
            [](const QVariant &) { platform::Hud::shared().dismiss(); },
            [self](const QVariant &data, const QVariant &) {
                if (self)
                    self->showHomeData(data);
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                platform::Hud::shared().showErrorWithStatus(message);
            });
}

void TabOneViewController::rebuildSortButtons()
{
    qDeleteAll(m_scrollSort);
    m_scrollSort.clear();
    const QList<SortTab> &tabs = sortTabs();
    for (int tag = 0; tag < tabs.size(); ++tag) {
        auto *button = new platform::Button(this);
        button->setTag(tag);
        button->setTitle(tabs.at(tag).title);
        button->setTitleColor(SortTitleColor);
        button->setSelectedTitleColor(SortSelectedTitleColor);
        button->setBackgroundImageName(tabs.at(tag).imageBaseName + QStringLiteral("_select"));
        button->setSelectedBackgroundImageName(tabs.at(tag).imageBaseName);
        connect(button, &platform::Button::clicked, this,
                [this, button] { clickButtonSort(button); });
        m_scrollSort.append(button);
    }
    emit scrollSortChanged();
}

void TabOneViewController::showHomeData(const QVariant &data)
{
    const QVariant recs = data.toMap().value(QStringLiteral("focus_recs"));
    if (data.typeId() == QMetaType::QVariantMap && recs.typeId() == QMetaType::QVariantList) {
        showBanners(recs.toList());
    } else {
        m_arrayImageBanner.clear();
        reloadBannerRows();
        m_pageControl->setPageNum(0);
    }
    if (!m_scrollSort.isEmpty())
        clickButtonSort(m_scrollSort.constFirst());
    m_fieldSearch->setHidden(false);
    removeRefreshButton();
}

void TabOneViewController::showBanners(const QVariantList &entries)
{
    m_arrayImageBanner = entries;
    reloadBannerRows();
    m_pageControl->setPageNum(int(entries.size()));
    m_pageControl->setCurrentPage(0);
}

void TabOneViewController::reloadBannerRows()
{
    QList<QVariantMap> rows;
    const qreal scale = HomePageViewCell::screenScale();
    for (int tag = 0; tag < m_arrayImageBanner.size(); ++tag) {
        const QString image
                = m_arrayImageBanner.at(tag).toMap().value(QStringLiteral("img")).toString();
        rows.append({{QStringLiteral("tag"), tag},
                     {QStringLiteral("imageUrl"),
                      HomePageViewCell::imageUrlWithWidth(image, m_screenWidth, scale)}});
    }
    m_scrollBanner->setRows(rows);
}

void TabOneViewController::removeRefreshButton()
{
    if (!m_buttonRefresh)
        return;
    m_buttonRefresh->deleteLater();
    m_buttonRefresh = nullptr;
    emit buttonRefreshChanged();
}

void TabOneViewController::clickButtonSort(platform::Button *button)
{
    if (!button || !m_scrollSort.contains(button))
        return;
    for (platform::Button *each : m_scrollSort)
        each->setSelected(false);
    button->setSelected(true);
    setViewType(sortTabs().value(button->tag()).key);
    // A refresh under way was for the previous tab: start over for this one.
    if (m_header->isRefreshing())
        loadFirstPage();
    else
        m_header->beginRefreshing();
}

void TabOneViewController::clickImageBanner(int tag)
{
    if (tag < 0 || tag >= m_arrayImageBanner.size())
        return;
    const QString url = m_arrayImageBanner.at(tag).toMap().value(QStringLiteral("url")).toString();
    const QStringList components = url.split(QLatin1Char('/'));
    const qsizetype count = components.size();
    if (count >= 2 && NSStringTools::isInt(components.last())
        && components.at(count - 2) == QLatin1String("products")) {
        pushGoodsDetail(this, components.last());
        return;
    }
    // A relative address is the store's page, as for a message's link (absoluteAddress).
    platform::UrlOpener::shared().openURL(QUrl(absoluteAddress(url)));
}

void TabOneViewController::scrollViewDidEndDecelerating(qreal contentOffsetX)
{
    if (m_screenWidth <= 0)
        return;
    m_pageControl->setCurrentPage(int(contentOffsetX / m_screenWidth));
}

void TabOneViewController::textFieldShouldReturn()
{
    m_fieldSearch->resignFirstResponder();
    // An empty text is passed on as it is, intended: the search screen takes it as it stands.
    if (platform::NavigationController *navigation = navigationController())
        navigation->pushViewController(new SearchDetailViewController(m_fieldSearch->text()), true);
}

void TabOneViewController::pushGoodsDetail(platform::ViewController *from, const QString &gameId)
{
    platform::NavigationController *navigation = from ? from->navigationController() : nullptr;
    if (!navigation)
        return;
    auto *detail = new GoodsDetailViewController;
    detail->setGameId(gameId);
    navigation->pushViewController(detail, true);
}
