#include "screens/store/LibraryViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/NavigationController.h"
#include "screens/purchase/MyCouponViewController.h"
#include "screens/purchase/MyGamesViewController.h"
#include "screens/store/LibraryViewCell.h"

LibraryViewController::LibraryViewController(QObject *parent)
    : Q9FatherViewController(parent)
    , m_arraySource({QStringLiteral("我的优惠券(6张)"), QStringLiteral("我的游戏(317款)")})
    , m_mainTable(new platform::RowModel(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/store/LibraryView.qml")));
    QList<QVariantMap> rows;
    for (int row = 0; row < m_arraySource.size(); ++row) {
        LibraryViewCell cell;
        cell.setCellContentsWithType(row, m_arraySource.at(row));
        rows.append(cell.toRow());
    }
    m_mainTable->setRows(rows);
}

void LibraryViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("库"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void LibraryViewController::setRefleshDataAction()
{
    hideTabBar(true);
}

void LibraryViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void LibraryViewController::didSelectRowAtIndex(int row)
{
    platform::NavigationController *navigation = navigationController();
    if (!navigation)
        return;
    if (row == LibraryViewCell::Coupons)
        navigation->pushViewController(new MyCouponViewController, true);
    else if (row == LibraryViewCell::Games)
        navigation->pushViewController(new MyGamesViewController, true);
}
