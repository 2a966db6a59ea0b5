#include "screens/store/TabTwoViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/RowModel.h"
#include "screens/store/TabOneViewController.h"

namespace {

// What each of the home page's lists holds, in the strip's order.
const QStringList CategoryNames = {QStringLiteral("最新上架"), QStringLiteral("编辑推荐"),
                                   QStringLiteral("特价优惠"), QStringLiteral("热销排行")};
const QStringList CategoryDetails
        = {QStringLiteral("刚刚发售与即将发售的游戏"), QStringLiteral("编辑精选的好评佳作"),
           QStringLiteral("正在打折的游戏，折扣从高到低"), QStringLiteral("玩家购买最多的游戏")};

} // namespace

TabTwoViewController::TabTwoViewController(QObject *parent)
    : Q9FatherViewController(parent)
    , m_categories(new platform::RowModel(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/store/TabTwoView.qml")));
    QList<QVariantMap> rows;
    const auto &tabs = TabOneViewController::sortTabs();
    for (int index = 0; index < tabs.size(); ++index) {
        rows.append({{QStringLiteral("name"), CategoryNames.value(index)},
                     {QStringLiteral("detail"), CategoryDetails.value(index)},
                     {QStringLiteral("sortKey"), tabs.at(index).key},
                     {QStringLiteral("imageName"), tabs.at(index).imageBaseName}});
    }
    m_categories->setRows(rows);
}

void TabTwoViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("分类"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void TabTwoViewController::setNavLeftAction()
{
    dismissViewController(true);
}

void TabTwoViewController::didSelectCategoryAtIndex(int index)
{
    if (index < 0 || index >= m_categories->count())
        return;
    emit categorySelected(m_categories->get(index).value(QStringLiteral("sortKey")).toString());
    dismissViewController(true);
}
