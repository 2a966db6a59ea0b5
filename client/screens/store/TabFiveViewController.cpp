#include "screens/store/TabFiveViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "platform/ui/RefreshFooter.h"
#include "platform/ui/RefreshHeader.h"
#include "platform/ui/RowModel.h"
#include "screens/store/NewsDetailViewController.h"
#include "screens/store/NewsTableViewCell.h"

#include <QDebug>
#include <QTimer>

TabFiveViewController::TabFiveViewController(QObject *parent)
    : Q9FatherViewController(parent)
    , m_mainTable(new platform::RowModel(this))
    , m_header(new platform::RefreshHeader(this))
    , m_footer(new platform::RefreshFooter(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/store/TabFiveView.qml")));
    m_mainTable->setProvider([this] {
        QList<QVariantMap> rows;
        for (int row = 0; row < numberOfRows(); ++row)
            rows.append(NewsTableViewCell().row());
        return rows;
    });
    m_mainTable->reloadData();
    connect(m_header, &platform::RefreshHeader::refreshRequested, this,
            &TabFiveViewController::pullDown);
    connect(m_footer, &platform::RefreshFooter::loadMoreRequested, this,
            &TabFiveViewController::pullUp);
}

qreal TabFiveViewController::heightForRow(int row) const
{
    Q_UNUSED(row)
    return NewsTableViewCell::Height;
}

void TabFiveViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("资讯公告"));
    // Shown as a tab root: nothing to go back to.
    leftBarItem()->setHidden(true);
    rightBarItem()->setHidden(true);
}

void TabFiveViewController::setRefleshDataAction()
{
    hideTabBar(false);
}

void TabFiveViewController::pullDown()
{
    platform::Hud::shared().showWithStatus(QStringLiteral("加载中..."));
    QTimer::singleShot(LoadDelayMs, this, [this] {
        setPageMain(1);
        m_header->endRefreshing();
        platform::Hud::shared().dismiss();
    });
}

void TabFiveViewController::pullUp()
{
    platform::Hud::shared().showWithStatus(QStringLiteral("加载中..."));
    QTimer::singleShot(LoadDelayMs, this, [this] {
        setPageMain(m_pageMain + 1);
        m_footer->endRefreshing();
        platform::Hud::shared().dismiss();
    });
}

void TabFiveViewController::setPageMain(int page)
{
    if (m_pageMain == page)
        return;
    m_pageMain = page;
    emit pageMainChanged();
}

void TabFiveViewController::didSelectRowAtIndex(int row)
{
    if (row < 0 || row >= numberOfRows())
        return;
    emit rowDeselected(row);
    if (platform::NavigationController *navigation = navigationController())
        navigation->pushViewController(new NewsDetailViewController, true);
    qDebug("news row %d", row);
}
