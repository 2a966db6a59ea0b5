#include "screens/purchase/BuySuccessViewController.h"

#include "platform/ui/BarButtonItem.h"
#include "platform/ui/NavigationController.h"
#include "screens/purchase/BuySuccessCell.h"
#include "screens/purchase/MyOrderViewController.h"
#include "util/ObjectDescription.h"

namespace {

QString text(const QVariant &value)
{
    return value.isValid() && !value.isNull() ? objectDescription(value) : QString();
}

} // namespace

BuySuccessViewController::BuySuccessViewController(const QVariantMap &sourceModel, QObject *parent)
    : Q9FatherViewController(parent)
    , m_sourceModel(sourceModel)
    , m_tableMain(new platform::RowModel(this))
    , m_buttonMyOrder(new platform::Button(this))
    , m_buttonContinue(new platform::Button(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/purchase/BuySuccessView.qml")));
    const QStringList titles{
            QStringLiteral("订单金额:¥%1").arg(text(sourceModel.value(QStringLiteral("subtotal")))),
            QStringLiteral("订单号:%1").arg(text(sourceModel.value(QStringLiteral("id")))),
            QStringLiteral("支付方式:%1")
                    .arg(text(sourceModel.value(QStringLiteral("payment_method")))),
    };
    QList<QVariantMap> rows;
    for (qsizetype row = 0; row < titles.size(); ++row) {
        BuySuccessCell cell;
        cell.setCellContentWithTitle(titles.at(row), row == titles.size() - 1);
        rows.append(cell.toRow());
    }
    m_tableMain->setRows(rows);

    m_buttonMyOrder->setTag(MyOrder);
    m_buttonMyOrder->setTitle(QStringLiteral("我的订单"));
    m_buttonContinue->setTag(ContinueShopping);
    m_buttonContinue->setTitle(QStringLiteral("继续购物"));
    for (platform::Button *button : {m_buttonMyOrder, m_buttonContinue}) {
        connect(button, &platform::Button::clicked, this,
                [this, button] { clickButton(button->tag()); });
    }
}

void BuySuccessViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("购买成功"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);
}

void BuySuccessViewController::setRefleshDataAction()
{
    hideTabBar(true);
}

void BuySuccessViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void BuySuccessViewController::clickButton(int number)
{
    platform::NavigationController *navigation = navigationController();
    if (!navigation)
        return;
    if (number == MyOrder)
        openOrderHistory();
    else if (number == ContinueShopping)
        navigation->popToRootViewController(true);
}

void BuySuccessViewController::openOrderHistory()
{
    navigationController()->pushViewController(MyOrderViewController::initWithFatherView(1), true);
}
