#include "screens/purchase/MyOrderViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "screens/account/FailureMessage.h"
#include "screens/purchase/ConfirmOrderViewController.h"
#include "service/NetWorkHelper.h"
#include "util/ICRuntimeHelper.h"

#include <QPointer>

#include <cmath>

using platform::Hud;

namespace {

// The order screen's type for paying an order that already exists.
constexpr int PayExistingOrder = 2;

void showFailure(const QString &message)
{
    Hud::shared().showErrorWithStatus(FailureMessage::readable(message));
}

} // namespace

MyOrderViewController::MyOrderViewController(int fatherView, QObject *parent)
    : Q9FatherViewController(parent)
    , m_fatherView(fatherView)
    , m_buttonAll(makeTab(QStringLiteral("全部"), All))
    , m_buttonNoPay(makeTab(QStringLiteral("未付款"), NoPay))
    , m_buttonFinish(makeTab(QStringLiteral("已完成"), Finish))
    , m_tableMain(new platform::RowModel(MyOrderTableViewCell().toRow().keys(), this))
    , m_header(new platform::RefreshHeader(this))
    , m_footer(new platform::RefreshFooter(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/purchase/MyOrderView.qml")));
    connect(m_header, &platform::RefreshHeader::refreshRequested, this,
            &MyOrderViewController::refreshData);
    connect(m_footer, &platform::RefreshFooter::loadMoreRequested, this,
            &MyOrderViewController::loadMoreData);
}

MyOrderViewController *MyOrderViewController::initWithFatherView(int fatherView)
{
    return new MyOrderViewController(fatherView);
}

platform::Button *MyOrderViewController::makeTab(const QString &title, int tab)
{
    auto *button = new platform::Button(this);
    button->setTitle(title);
    button->setTag(tab);
    connect(button, &platform::Button::clicked, this, [this, tab] { clickButtonTab(tab); });
    return button;
}

QString MyOrderViewController::viewTypeForTab(int tab)
{
    switch (tab) {
    case NoPay:
        return QStringLiteral("in_checkout");
    case Finish:
        return QStringLiteral("completed");
    default:
        return QStringLiteral("all");
    }
}

QString MyOrderViewController::couponAmountText(double goodsAmount, double subtotal)
{
    const double coupon = goodsAmount - subtotal;
    // Sums of prices in binary floating point leave crumbs such as 1e-14 where the amounts are
    // equal; a deduction below half a fen is none.
    if (std::abs(coupon) < 0.005)
        return QStringLiteral("0");
    return QString::asprintf("%.1f", coupon);
}

MyOrderTableViewCell MyOrderViewController::cellForOrder(const Object_MyOrderList &order, int row)
{
    QList<MyOrderCellSubView> games;
    double goodsAmount = 0;
    for (const Object_MyOrderGames &game : order.order_games) {
        MyOrderCellSubView line;
        line.setViewContentWithName(game.name, game.price);
        line.setCoverAddress(game.product_image);
        games.append(line);
        goodsAmount += game.price.toDouble();
    }
    MyOrderTableViewCell cell;
    cell.setGames(games);
    cell.setTag(row);
    cell.setCellContentWithOrderID(order.id, order.state, QString::asprintf("%.1f", goodsAmount),
                                   couponAmountText(goodsAmount, order.subtotal.toDouble()),
                                   order.subtotal);
    return cell;
}

void MyOrderViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("我的订单"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void MyOrderViewController::setLoadViewAction()
{
    clickButtonTab(All);
}

void MyOrderViewController::setRefleshDataAction()
{
    hideTabBar(true);
    m_header->beginRefreshing();
}

void MyOrderViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void MyOrderViewController::clickButtonTab(int tab)
{
    if (tab < All || tab > Finish)
        return;
    for (platform::Button *button : {m_buttonAll, m_buttonNoPay, m_buttonFinish})
        button->setSelected(button->tag() == tab);
    const QString type = viewTypeForTab(tab);
    if (type != m_viewType) {
        m_viewType = type;
        emit viewTypeChanged();
    }
    if (m_header->isRefreshing())
        refreshData(); // the page on its way is of the previous tab: ask again
    else
        m_header->beginRefreshing();
}

void MyOrderViewController::refreshData()
{
    m_pageMain = 1;
    const int generation = ++m_generation;
    QPointer<MyOrderViewController> self(this);
    NetWorkHelper::shareInstance()->getMyOrderListWithType(
            m_viewType, QString::number(m_pageMain), {},
            [self, generation](const QVariant &) {
                if (self && self->m_generation == generation)
                    self->m_header->endRefreshing();
            },
            [self, generation](const QVariant &data, const QVariant &) {
                if (!self || self->m_generation != generation)
                    return;
                self->m_footer->resetNoMoreData();
                if (data.typeId() == QMetaType::QVariantList) {
                    QList<Object_MyOrderList> orders;
                    for (const QVariant &element : data.toList()) {
                        if (element.typeId() != QMetaType::QVariantMap)
                            continue;
                        if (auto order = JSONModel::initWithDictionary<Object_MyOrderList>(element))
                            orders.append(*order);
                    }
                    self->m_arraySource = orders;
                }
                self->reloadTable();
                self->m_pageMain = 2;
            },
            [self, generation](const QVariant &, const QString &message, const QVariant &) {
                if (self && self->m_generation == generation)
                    showFailure(message);
            });
}

void MyOrderViewController::loadMoreData()
{
    // A reload on its way starts the list over; further pages follow it.
    if (m_header->isRefreshing()) {
        m_footer->endRefreshing();
        return;
    }
    const int generation = m_generation;
    QPointer<MyOrderViewController> self(this);
    NetWorkHelper::shareInstance()->getMyOrderListWithType(
            m_viewType, QString::number(m_pageMain), {},
            [self](const QVariant &) {
                if (self)
                    self->m_footer->endRefreshing();
            },
            [self, generation](const QVariant &data, const QVariant &) {
                if (!self || self->m_generation != generation)
                    return;
                const QList<Object_MyOrderList> orders
                        = ICRuntimeHelper::analysArrayData<Object_MyOrderList>(data).value_or(
                                QList<Object_MyOrderList>());
                if (orders.isEmpty())
                    self->m_footer->noticeNoMoreData();
                self->m_arraySource.append(orders);
                self->reloadTable();
                // The page number moves on even past an empty page: that is how the list pages.
                ++self->m_pageMain;
            },
            [self, generation](const QVariant &, const QString &message, const QVariant &) {
                if (self && self->m_generation == generation)
                    showFailure(message);
            });
}

void MyOrderViewController::reloadTable()
{
    QList<QVariantMap> rows;
    for (int row = 0; row < m_arraySource.size(); ++row)
        rows.append(cellForOrder(m_arraySource.at(row), row).toRow());
    m_tableMain->setRows(rows);
}

const Object_MyOrderList *MyOrderViewController::orderAt(int tag) const
{
    if (tag < 0 || tag >= m_arraySource.size())
        return nullptr;
    return &m_arraySource.at(tag);
}

void MyOrderViewController::clickButtonPay(int tag)
{
    const Object_MyOrderList *order = orderAt(tag);
    platform::NavigationController *navigation = navigationController();
    if (!order || !navigation || !MyOrderTableViewCell::showsButtonsForState(order->state))
        return;
    navigation->pushViewController(
            new ConfirmOrderViewController(QStringList{order->id}, PayExistingOrder), true);
}

void MyOrderViewController::clickButtonCancle(int tag)
{
    const Object_MyOrderList *order = orderAt(tag);
    if (!order || !MyOrderTableViewCell::showsButtonsForState(order->state))
        return;
    QPointer<MyOrderViewController> self(this);
    NetWorkHelper::shareInstance()->cancleMyOrderListWithOrderID(
            order->id,
            [](const QVariantMap &) {
                Hud::shared().showWithStatus(QStringLiteral("正在取消..."), true);
            },
            [](const QVariant &) { Hud::shared().dismiss(); },
            [self](const QVariant &, const QVariant &) {
                if (self)
                    self->m_header->beginRefreshing();
            },
            [](const QVariant &, const QString &message, const QVariant &) {
                showFailure(message);
            });
}
