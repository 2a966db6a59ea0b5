#include "screens/purchase/MyCouponViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"

using platform::Hud;

MyCouponViewController::MyCouponViewController(QObject *parent)
    : Q9FatherViewController(parent)
    , m_refreshHeader(new platform::RefreshHeader(this))
    , m_refreshFooter(new platform::RefreshFooter(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/purchase/MyCouponView.qml")));
    m_endTimer.setSingleShot(true);
    m_endTimer.setInterval(RefreshMs);
    connect(&m_endTimer, &QTimer::timeout, this, &MyCouponViewController::endRefreshing);
    connect(m_refreshHeader, &platform::RefreshHeader::refreshRequested, this,
            [this] { refresh(true); });
    connect(m_refreshFooter, &platform::RefreshFooter::loadMoreRequested, this,
            [this] { refresh(false); });
}

void MyCouponViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("我的优惠券"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void MyCouponViewController::setRefleshDataAction()
{
    hideTabBar(true);
}

void MyCouponViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

// The list is the same six cards whatever the page: a refresh only shows that it ran.
void MyCouponViewController::refresh(bool firstPage)
{
    if (firstPage)
        m_pageMain = 1;
    Hud::shared().showWithStatus(QStringLiteral("加载中..."));
    m_endTimer.start();
}

void MyCouponViewController::endRefreshing()
{
    m_refreshHeader->endRefreshing();
    m_refreshFooter->endRefreshing();
    Hud::shared().dismiss();
}
