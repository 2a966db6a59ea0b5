#pragma once

#include "app/Q9FatherViewController.h"
#include "models/Object_SearchGames.h"
#include "platform/ui/Label.h"
#include "platform/ui/RefreshFooter.h"
#include "platform/ui/RefreshHeader.h"
#include "platform/ui/RowModel.h"
#include "platform/ui/TextField.h"
#include "screens/store/HomePageViewCell.h"

#include <QList>
#include <QtQml/qqmlregistration.h>

// Paged search results for the text handed in from the home page; the box on top searches again.
class SearchDetailViewController : public Q9FatherViewController
{
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("Screens are created by C++")
    Q_PROPERTY(platform::TextField *fieldSearch READ fieldSearch CONSTANT)
    Q_PROPERTY(platform::Label *labelTitle READ labelTitle CONSTANT)
    Q_PROPERTY(platform::RowModel *collectionMenu READ collectionMenu CONSTANT)
    Q_PROPERTY(platform::RefreshHeader *refreshHeader READ refreshHeader CONSTANT)
    Q_PROPERTY(platform::RefreshFooter *refreshFooter READ refreshFooter CONSTANT)
    Q_PROPERTY(qreal screenWidth READ screenWidth WRITE setScreenWidth NOTIFY geometryChanged)
    Q_PROPERTY(qreal itemWidth READ itemWidth NOTIFY geometryChanged)
    Q_PROPERTY(qreal coverHeight READ coverHeight NOTIFY geometryChanged)
public:
    // initWithSearchContent:
    explicit SearchDetailViewController(const QString &searchContent, QObject *parent = nullptr);

    QString strSearch() const { return m_strSearch; }
    platform::TextField *fieldSearch() const { return m_fieldSearch; }
    platform::Label *labelTitle() const { return m_labelTitle; }
    platform::RowModel *collectionMenu() const { return m_collectionMenu; }
    platform::RefreshHeader *refreshHeader() const { return m_header; }
    platform::RefreshFooter *refreshFooter() const { return m_footer; }
    QList<Object_SearchGames> arraySource() const { return m_arraySource; }
    int pageNum() const { return m_pageNum; }
    QList<HomePageViewCell> cells() const { return m_cells; }

    qreal screenWidth() const { return m_screenWidth; }
    void setScreenWidth(qreal width);
    qreal itemWidth() const { return HomePageViewCell::itemWidthForScreenWidth(m_screenWidth); }
    qreal coverHeight() const { return HomePageViewCell::coverHeightForItemWidth(itemWidth()); }

    // First page for the box's text (pull-down).
    void refreshData();
    // The next page (pull-up).
    void loadData();
    Q_INVOKABLE void textFieldShouldReturn();
    Q_INVOKABLE void clickCellAtIndex(int index);

signals:
    void geometryChanged();

protected:
    void viewDidLoad() override;
    void setLoadViewAction() override;
    void setRefleshDataAction() override;
    void setNavLeftAction() override;

private:
    bool isCurrentSearch(int generation) const { return generation == m_searchGeneration; }
    void showCountLine();
    HomePageViewCell cellFor(const Object_SearchGames &game);
    void reloadCells();
    void appendCells(const QList<Object_SearchGames> &games);

    QString m_strSearch;
    platform::TextField *m_fieldSearch;
    platform::Label *m_labelTitle;
    platform::RowModel *m_collectionMenu;
    platform::RefreshHeader *m_header;
    platform::RefreshFooter *m_footer;
    QList<Object_SearchGames> m_arraySource;
    QList<HomePageViewCell> m_cells;
    int m_pageNum = 1;
    // Answers for a search the user has since replaced are dropped.
    int m_searchGeneration = 0;
    qreal m_screenWidth = 375;
};
