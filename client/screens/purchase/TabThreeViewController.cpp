#include "screens/purchase/TabThreeViewController.h"

#include "app/ICTabBarController.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "screens/purchase/ConfirmOrderViewController.h"
#include "screens/purchase/PurchaseFailure.h"
#include "service/ICCookiesHelper.h"
#include "service/NetWorkHelper.h"
#include "util/ICRuntimeHelper.h"
#include "util/NSStringUtils.h"

#include <QPointer>

using platform::Hud;

namespace {
const QString Ticked = QStringLiteral("1");
const QString Unticked = QStringLiteral("0");
const QString RemovePath = QStringLiteral("/cart/remove.json");
} // namespace

TabThreeViewController::TabThreeViewController(int viewFather, QObject *parent)
    : Q9FatherViewController(parent)
    , m_viewFather(viewFather)
    , m_bottomView(new ShoppingCartBottomView(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/purchase/TabThreeView.qml")));
    m_bottomView->setClickSelectBt([this](bool selected) { selectAll(selected); });
    m_bottomView->setClickClearingBt([this] { submit(); });
}

QList<QObject *> TabThreeViewController::cellObjects() const
{
    return {m_cells.cbegin(), m_cells.cend()};
}

void TabThreeViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("购物车"));
    rightBarItem()->setHidden(true);
    if (isPushed())
        setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    else
        leftBarItem()->setHidden(true);
    m_bottomView->setViewContentWithAllPrice(QStringLiteral("0.0"));
}

void TabThreeViewController::viewDidAppear(bool animated)
{
    Q9FatherViewController::viewDidAppear(animated);
    if (!m_bottomViewShown) {
        m_bottomViewShown = true;
        emit bottomViewShownChanged();
    }
}

void TabThreeViewController::setRefleshDataAction()
{
    hideTabBar(isPushed());
    m_bottomView->setSelectButton(false);
    m_bottomView->setViewContentWithAllPrice(Unticked);
    loadCart();
}

void TabThreeViewController::setNavLeftAction()
{
    if (isPushed() && navigationController())
        navigationController()->popViewController(true);
}

void TabThreeViewController::loadCart()
{
    QPointer<TabThreeViewController> self(this);
    NetWorkHelper::shareInstance()->getCartDataWithStartFn(
            [](const QVariantMap &) { Hud::shared().showWithStatus(QStringLiteral("正在加载")); },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [self](const QVariant &data, const QVariant &) {
                if (self)
                    self->showCart(data);
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                Hud::shared().showErrorWithStatus(PurchaseFailure::readable(message));
            });
}

void TabThreeViewController::showCart(const QVariant &data)
{
    m_arraySource = ICRuntimeHelper::analysArrayData<Object_CartList>(data).value_or(
            QList<Object_CartList>());
    m_arraySelect = QStringList(m_arraySource.size(), Unticked);
    rebuildCells();
    setEmptyViewHidden(!m_arraySource.isEmpty());
}

void TabThreeViewController::rebuildCells()
{
    qDeleteAll(m_cells);
    m_cells.clear();
    for (qsizetype row = 0; row < m_arraySource.size(); ++row) {
        const Object_CartList &line = m_arraySource.at(row);
        auto *cell = new ShoppingCartCell(this);
        cell->setCellContentWithImage(line.product_image, line.title, line.sale_price,
                                      m_arraySelect.at(row) != Unticked);
        cell->setListPrice(line.list_price, line.sale_price);
        const QString gameId = line.id;
        cell->setBlock([this, gameId] { deleteLine(gameId); });
        m_cells.append(cell);
    }
    emit reloadData();
}

void TabThreeViewController::didSelectRowAtIndex(int row)
{
    if (row < 0 || row >= m_arraySelect.size())
        return;
    m_arraySelect[row] = m_arraySelect.at(row) == Unticked ? Ticked : Unticked;
    const Object_CartList &line = m_arraySource.at(row);
    m_cells.at(row)->setCellContentWithImage(line.product_image, line.title, line.sale_price,
                                             m_arraySelect.at(row) != Unticked);
    showTickedTotal();
    // Cleared even when every line is now ticked: select all only ever ticks from the bar.
    m_bottomView->setSelectButton(false);
}

void TabThreeViewController::selectAll(bool selected)
{
    m_arraySelect = QStringList(m_arraySource.size(), selected ? Ticked : Unticked);
    showTickedTotal();
    rebuildCells();
}

double TabThreeViewController::selectedTotal() const
{
    double total = 0;
    for (qsizetype row = 0; row < m_arraySource.size(); ++row) {
        if (m_arraySelect.at(row) == Ticked)
            total += NSStringUtils::doubleValue(m_arraySource.at(row).sale_price);
    }
    return total;
}

void TabThreeViewController::showTickedTotal()
{
    const double total = selectedTotal();
    m_bottomView->setViewContentWithAllPrice(total == 0 ? Unticked
                                                        : QString::asprintf("%.1f", total));
}

void TabThreeViewController::deleteLine(const QString &gameId)
{
    QPointer<TabThreeViewController> self(this);
    NetWorkHelper::shareInstance()->removeGoodsFromCartWithGameIds(
            gameId,
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("正在删除..."), true);
            },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [self, gameId](const QVariant &, const QVariant &) {
                ICCookiesHelper::updateCartNumFromCookiesForPath(RemovePath);
                if (self)
                    self->removeLine(gameId);
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                Hud::shared().showErrorWithStatus(PurchaseFailure::readable(message));
            });
}

void TabThreeViewController::removeLine(const QString &gameId)
{
    for (qsizetype row = 0; row < m_arraySource.size(); ++row) {
        if (m_arraySource.at(row).id != gameId)
            continue;
        m_arraySource.removeAt(row);
        m_arraySelect.removeAt(row);
        break;
    }
    // Without the "0" rule of ticking: an empty selection reads "0.0" here, on purpose.
    m_bottomView->setViewContentWithAllPrice(QString::asprintf("%.1f", selectedTotal()));
    setEmptyViewHidden(!m_arraySource.isEmpty());
    rebuildCells();
}

void TabThreeViewController::submit()
{
    QStringList gameIds;
    for (qsizetype row = 0; row < m_arraySource.size(); ++row) {
        if (m_arraySelect.at(row) == Ticked)
            gameIds.append(m_arraySource.at(row).id);
    }
    if (gameIds.isEmpty()) {
        Hud::shared().showErrorWithStatus(QStringLiteral("未选择游戏"));
        return;
    }
    if (platform::NavigationController *navigation = navigationController())
        navigation->pushViewController(
                new ConfirmOrderViewController(gameIds, ConfirmOrderViewController::FromCart),
                true);
}

void TabThreeViewController::clickGoShopping()
{
    if (!isPushed()) {
        if (auto *tabs = qobject_cast<ICTabBarController *>(tabBarController()))
            tabs->selectViewControllerAtIndex(ICTabBarController::HomeTab);
    } else if (platform::NavigationController *navigation = navigationController()) {
        navigation->popToRootViewController(true);
    }
}

void TabThreeViewController::setEmptyViewHidden(bool hidden)
{
    if (m_emptyViewHidden == hidden)
        return;
    m_emptyViewHidden = hidden;
    emit emptyViewHiddenChanged();
}
