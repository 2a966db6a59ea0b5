#pragma once

#include "app/Q9FatherViewController.h"
#include "models/Object_HomeGames.h"
#include "platform/ui/Button.h"
#include "platform/ui/Label.h"
#include "platform/ui/RefreshFooter.h"
#include "platform/ui/RefreshHeader.h"
#include "platform/ui/RowModel.h"
#include "platform/ui/TextField.h"
#include "screens/store/HomePageViewCell.h"
#include "screens/store/ICPageControl.h"

#include <QList>
#include <QPointer>
#include <QVariantList>
#include <QtQml/qqmlregistration.h>

// The home page and start screen: the promotional carousel, the search field in the bar, the four
// sort tabs and the grid of games that pages in as the user scrolls. It also creates the cart badge
// of the tab strip.
class TabOneViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are created by C++")
    Q_PROPERTY(platform::TextField *fieldSearch READ fieldSearch CONSTANT)
    Q_PROPERTY(platform::Button *buttonRefresh READ buttonRefresh NOTIFY buttonRefreshChanged)
    Q_PROPERTY(ICPageControl *pageControl READ pageControl CONSTANT)
    Q_PROPERTY(platform::RowModel *scrollBanner READ scrollBanner CONSTANT)
    Q_PROPERTY(QVariantList scrollSort READ scrollSortObjects NOTIFY scrollSortChanged)
    Q_PROPERTY(platform::RowModel *collectionMenu READ collectionMenu CONSTANT)
    Q_PROPERTY(platform::RefreshHeader *refreshHeader READ refreshHeader CONSTANT)
    Q_PROPERTY(platform::RefreshFooter *refreshFooter READ refreshFooter CONSTANT)
    Q_PROPERTY(platform::Label *labelRedDot READ labelRedDot NOTIFY labelRedDotChanged)
    Q_PROPERTY(platform::Label *labelOffline READ labelOffline CONSTANT)
    Q_PROPERTY(QString viewType READ viewType NOTIFY viewTypeChanged)
    Q_PROPERTY(qreal screenWidth READ screenWidth WRITE setScreenWidth NOTIFY geometryChanged)
    Q_PROPERTY(qreal itemWidth READ itemWidth NOTIFY geometryChanged)
    Q_PROPERTY(qreal coverHeight READ coverHeight NOTIFY geometryChanged)
    Q_PROPERTY(qreal titleViewAlpha READ titleViewAlpha NOTIFY titleViewAlphaChanged)
public:
    struct SortTab
    {
        QString key;
        QString imageBaseName;
        QString title;
    };
    // The strip's tabs by tag: "latest", "rec", "onsale", "top".
    static const QList<SortTab> &sortTabs();

    explicit TabOneViewController(QObject *parent = nullptr);

    platform::TextField *fieldSearch() const { return m_fieldSearch; }
    platform::Button *buttonRefresh() const { return m_buttonRefresh; }
    ICPageControl *pageControl() const { return m_pageControl; }
    platform::RowModel *scrollBanner() const { return m_scrollBanner; }
    QList<platform::Button *> scrollSort() const { return m_scrollSort; }
    platform::RowModel *collectionMenu() const { return m_collectionMenu; }
    platform::RefreshHeader *refreshHeader() const { return m_header; }
    platform::RefreshFooter *refreshFooter() const { return m_footer; }
    platform::Label *labelRedDot() const { return m_labelRedDot; }
    // The slim banner shown while the page comes from what was kept of earlier visits.
    platform::Label *labelOffline() const { return m_labelOffline; }

    QVariantList arrayImageBanner() const { return m_arrayImageBanner; }
    QString viewType() const { return m_viewType; }
    QList<Object_HomeGames> arraySource() const { return m_arraySource; }
    int pageNum() const { return m_pageNum; }
    // The grid's cells as filled for the games of `arraySource`.
    QList<HomePageViewCell> cells() const { return m_cells; }

    qreal screenWidth() const { return m_screenWidth; }
    void setScreenWidth(qreal width);
    qreal itemWidth() const { return HomePageViewCell::itemWidthForScreenWidth(m_screenWidth); }
    qreal coverHeight() const { return HomePageViewCell::coverHeightForItemWidth(itemWidth()); }
    qreal titleViewAlpha() const { return m_titleViewAlpha; }

    // Full reload: carousel, sort strip and the first page of the latest games. Also the retry
    // button's action.
    Q_INVOKABLE void refreshData();
    void clickButtonSort(platform::Button *button);
    Q_INVOKABLE void clickImageBanner(int tag);
    Q_INVOKABLE void textFieldShouldReturn();
    // The carousel settled at this horizontal offset.
    Q_INVOKABLE void scrollViewDidEndDecelerating(qreal contentOffsetX);
    // The cover of the grid's item at `index` was tapped.
    Q_INVOKABLE void clickCellAtIndex(int index);

    // Opens the detail page of a game on top of `from`'s navigation stack.
    static void pushGoodsDetail(platform::ViewController *from, const QString &gameId);

signals:
    void buttonRefreshChanged();
    void scrollSortChanged();
    void labelRedDotChanged();
    void viewTypeChanged();
    void geometryChanged();
    void titleViewAlphaChanged();

protected:
    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void setLoadViewAction() override;
    void setRefleshDataAction() override;

private:
    QVariantList scrollSortObjects() const;
    void setViewType(const QString &type);
    void makeCartBadge();
    void followOfflineState();
    void rebuildSortButtons();
    void showHomeData(const QVariant &data);
    void showBanners(const QVariantList &entries);
    void removeRefreshButton();
    void loadFirstPage();
    void loadNextPage();
    bool isCurrentList(int generation) const { return generation == m_listGeneration; }
    HomePageViewCell cellFor(const Object_HomeGames &game);
    void reloadCells();
    void appendCells(const QList<Object_HomeGames> &games);
    void reloadBannerRows();

    platform::TextField *m_fieldSearch;
    QPointer<platform::Button> m_buttonRefresh;
    ICPageControl *m_pageControl;
    platform::RowModel *m_scrollBanner;
    QList<platform::Button *> m_scrollSort;
    platform::RowModel *m_collectionMenu;
    platform::RefreshHeader *m_header;
    platform::RefreshFooter *m_footer;
    QPointer<platform::Label> m_labelRedDot;
    platform::Label *m_labelOffline;

    QVariantList m_arrayImageBanner;
    QString m_viewType = QStringLiteral("latest");
    QList<Object_HomeGames> m_arraySource;
    QList<HomePageViewCell> m_cells;
    int m_pageNum = 1;
    // Answers of a list load started before the latest first-page load are dropped.
    int m_listGeneration = 0;
    qreal m_screenWidth = 375;
    qreal m_titleViewAlpha = 1;
};
