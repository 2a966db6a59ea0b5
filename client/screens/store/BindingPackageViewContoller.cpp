#include "screens/store/BindingPackageViewContoller.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/NavigationController.h"
#include "screens/store/BindingPackageCell.h"
#include "screens/store/GoodsDetailViewController.h"
#include "screens/store/OwnedMarks.h"

BindingPackageViewContoller::BindingPackageViewContoller(QObject *parent)
    : Q9FatherViewController(parent)
    , m_tableMain(new platform::RowModel(
              {QStringLiteral("identifier"), QStringLiteral("discounted"), QStringLiteral("name"),
               QStringLiteral("typeName"), QStringLiteral("off"), QStringLiteral("oldPrice"),
               QStringLiteral("nowPrice"), OwnedMarks::GameIdKey, OwnedMarks::OwnedKey},
              this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/store/BindingPackageView.qml")));
    OwnedMarks::follow(m_tableMain);
}

BindingPackageViewContoller::BindingPackageViewContoller(const QString &navTitle,
                                                         const QList<Object_DLCOrBind> &arraySource,
                                                         QObject *parent)
    : BindingPackageViewContoller(parent)
{
    setNavTitle(navTitle);
    setArraySource(arraySource);
}

void BindingPackageViewContoller::setNavTitle(const QString &navTitle)
{
    m_navTitle = navTitle;
    if (isViewLoaded())
        setNavTitleWithString(navTitle);
}

void BindingPackageViewContoller::setArraySource(const QList<Object_DLCOrBind> &arraySource)
{
    m_arraySource = arraySource;
    QList<QVariantMap> rows;
    for (const Object_DLCOrBind &item : arraySource)
        rows.append(BindingPackageCell::cellForItem(item).toRow());
    m_tableMain->setRows(rows);
}

void BindingPackageViewContoller::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(m_navTitle);
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void BindingPackageViewContoller::setRefleshDataAction()
{
    hideTabBar(true);
}

void BindingPackageViewContoller::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void BindingPackageViewContoller::didSelectRowAtIndex(int row)
{
    platform::NavigationController *navigation = navigationController();
    if (!navigation || row < 0 || row >= m_arraySource.size())
        return;
    auto *detail = new GoodsDetailViewController;
    detail->setGameId(m_arraySource.at(row).id);
    navigation->pushViewController(detail, true);
}
