#include "screens/purchase/ConfirmOrderViewController.h"

#include "app/AppDelegate.h"
#include "platform/kits/ShareSDK.h"
#include "platform/ui/BarButtonItem.h"
#include "platform/ui/Hud.h"
#include "platform/ui/NavigationController.h"
#include "screens/purchase/BuySuccessViewController.h"
#include "screens/purchase/ConfirmOrderCell.h"
#include "screens/purchase/MyCouponViewController.h"
#include "screens/purchase/PurchaseFailure.h"
#include "service/ICCookiesHelper.h"
#include "service/NetWorkHelper.h"
#include "service/OwnedGames.h"
#include "service/PendingPayment.h"
#include "util/NSStringUtils.h"
#include "util/ObjectDescription.h"

#include <QDebug>
#include <QTimer>

using platform::Hud;

namespace {

const QString SubmitPath = QStringLiteral("/cart/submit.json");

void showFailure(const QVariant &, const QString &message, const QVariant &)
{
    Hud::shared().showErrorWithStatus(PurchaseFailure::readable(message));
}

void showProgress(const QString &text)
{
    Hud::shared().showWithStatus(text, true);
}

void dismissProgress(const QVariant &)
{
    Hud::shared().dismiss();
}

QString text(const QVariant &value)
{
    return value.isValid() && !value.isNull() ? objectDescription(value) : QString();
}

QString yuan(const QString &amount)
{
    return QStringLiteral("¥") + amount;
}

QString minusYuan(const QString &amount)
{
    return QStringLiteral("-¥") + amount;
}

} // namespace

ConfirmOrderViewController::ConfirmOrderViewController(const QStringList &gamesID, int type,
                                                       QObject *parent)
    : Q9FatherViewController(parent)
    , m_arrayGamesID(gamesID)
    , m_viewType(type)
    , m_tableMain(new platform::RowModel({QStringLiteral("name"), QStringLiteral("price")}, this))
    , m_footerView(new ConfirmOrderBottomView(this))
    , m_viewPay(new ConfirmBottomView(this))
{
    setViewSource(QUrl(QStringLiteral("qrc:/Tarvel/screens/purchase/ConfirmOrderView.qml")));
    m_tableMain->setProvider([this] {
        QList<QVariantMap> rows;
        for (const Object_OrderDetailGames &game : m_sourceModel.order_games) {
            ConfirmOrderCell cell;
            cell.setCellContentWithName(game.title, game.price);
            rows.append(cell.toRow());
        }
        return rows;
    });
}

void ConfirmOrderViewController::viewDidLoad()
{
    Q9FatherViewController::viewDidLoad();
    setNavTitleWithString(QStringLiteral("确认订单"));
    setNavLeftDefaultItemWithImageIcon(QStringLiteral("common_navBack"), QString());
    rightBarItem()->setHidden(true);

    m_delegate = AppDelegate::shared();
    // The callback outlives this screen on the delegate; it holds the screen weakly.
    QPointer<ConfirmOrderViewController> self(this);
    m_delegate->setWeChatBlock([self](bool mayHaveSucceeded) {
        if (self)
            self->afterPayment(mayHaveSucceeded);
    });
}

void ConfirmOrderViewController::setLoadViewAction()
{
    loadOrder();
}

void ConfirmOrderViewController::setRefleshDataAction()
{
    hideTabBar(true);
}

void ConfirmOrderViewController::setNavLeftAction()
{
    if (platform::NavigationController *navigation = navigationController())
        navigation->popViewController(true);
}

void ConfirmOrderViewController::didSelectRowAtIndex(int row)
{
    Q_UNUSED(row)
    setEndEdingAction();
}

void ConfirmOrderViewController::loadOrder()
{
    QPointer<ConfirmOrderViewController> self(this);
    auto fetchFromUrl = [self](bool refreshCartNum) {
        return [self, refreshCartNum](const QVariant &data, const QVariant &) {
            // The order request goes out first; the stored cart count is written (to disk) one
            // pass of the main queue later, while that request travels.
            if (self)
                self->getOrderDetail(text(data.toMap().value(QStringLiteral("url"))));
            if (refreshCartNum)
                QTimer::singleShot(
                        0, [] { ICCookiesHelper::updateCartNumFromCookiesForPath(SubmitPath); });
        };
    };
    const auto start = [](const QVariantMap &) { showProgress(QStringLiteral("生成订单...")); };
    switch (m_viewType) {
    case FromCart:
        NetWorkHelper::shareInstance()->createOrderFromCartWithGameids(
                m_arrayGamesID, start, dismissProgress, fetchFromUrl(true), showFailure);
        break;
    case BuyDirectly:
        NetWorkHelper::shareInstance()->createOrderOneKeyWithGameId(
                m_arrayGamesID.value(0), start, dismissProgress, fetchFromUrl(false), showFailure);
        break;
    case ExistingOrder:
        getOrderDetail(QStringLiteral("/orders/%1/checkout").arg(m_arrayGamesID.value(0)));
        break;
    default:
        break;
    }
}

void ConfirmOrderViewController::getOrderDetail(const QString &orderUrl)
{
    QPointer<ConfirmOrderViewController> self(this);
    NetWorkHelper::shareInstance()->getOrderDetailWithOrderUrl(
            orderUrl, [](const QVariantMap &) { showProgress(QStringLiteral("获取订单...")); },
            dismissProgress,
            [self](const QVariant &data, const QVariant &) {
                if (self)
                    self->showOrder(data);
                Hud::shared().showSuccessWithStatus(QStringLiteral("订单获取成功"));
            },
            showFailure);
}

void ConfirmOrderViewController::showOrder(const QVariant &data)
{
    if (data.typeId() == QMetaType::QVariantMap) {
        const QVariantMap answer = data.toMap();
        m_sourceModel = JSONModel::initWithDictionary<Object_OrderDetail>(data).value_or(
                Object_OrderDetail());
        const QVariant methods = answer.value(QStringLiteral("payment_methods"));
        const QVariant lineItems = answer.value(QStringLiteral("order_line_items"));
        m_sourceModel.payment_methods
                = methods.typeId() == QMetaType::QVariantList ? methods.toList() : QVariantList();
        m_sourceModel.order_line_items = lineItems.typeId() == QMetaType::QVariantList
                                                 ? lineItems.toList()
                                                 : QVariantList();

        QString goodsPrice = m_sourceModel.order_subtotal;
        QString couponPrice = QStringLiteral("0");
        if (!m_sourceModel.order_line_items.isEmpty()) {
            const QVariantMap coupon = m_sourceModel.order_line_items.first().toMap();
            m_footerView->setCouponCode(text(coupon.value(QStringLiteral("type_value"))));
            couponPrice = text(coupon.value(QStringLiteral("amount")));
            goodsPrice = QString::asprintf("%.1f",
                                           NSStringUtils::doubleValue(m_sourceModel.order_subtotal)
                                                   + NSStringUtils::doubleValue(couponPrice));
        }
        QPointer<ConfirmOrderViewController> self(this);
        // The count of usable coupons always reads 0: it is not looked up.
        m_footerView->setOrderContentWithGoodsPrice(yuan(goodsPrice), minusYuan(couponPrice),
                                                    QStringLiteral("0"), [self](int number) {
                                                        if (self)
                                                            self->clickFooterButton(number);
                                                    });
        m_viewPay->setPrice(yuan(m_sourceModel.order_subtotal), [self] {
            if (self)
                self->pay();
        });
        if (!m_orderLoaded) {
            m_orderLoaded = true;
            emit orderLoadedChanged();
        }
    }
    reloadTable();
}

void ConfirmOrderViewController::reloadTable()
{
    m_tableMain->reloadData();
}

void ConfirmOrderViewController::clickFooterButton(int number)
{
    switch (number) {
    case ConfirmOrderBottomView::SelectCoupon:
        if (platform::NavigationController *navigation = navigationController())
            navigation->pushViewController(new MyCouponViewController, true);
        break;
    case ConfirmOrderBottomView::Sure:
        useCoupon();
        break;
    case ConfirmOrderBottomView::Cancel:
        deleteCoupon();
        break;
    default:
        // Alipay and WeChat only move the highlight; paying always takes the order's first
        // method through WeChat.
        break;
    }
}

void ConfirmOrderViewController::useCoupon()
{
    const QString code = m_footerView->getCouponCode();
    if (code.isEmpty()) {
        Hud::shared().showErrorWithStatus(QStringLiteral("请输入优惠码"));
        return;
    }
    QPointer<ConfirmOrderViewController> self(this);
    NetWorkHelper::shareInstance()->useCouponWithItem_type(
            QStringLiteral("coupon"), code, m_sourceModel.order_id,
            [](const QVariantMap &) { showProgress(QStringLiteral("使用优惠码...")); },
            dismissProgress,
            [self](const QVariant &data, const QVariant &) {
                if (self && data.typeId() == QMetaType::QVariantMap)
                    self->showAttachedCoupon(data);
                Hud::shared().showSuccessWithStatus(QStringLiteral("使用成功"));
            },
            showFailure);
}

void ConfirmOrderViewController::showAttachedCoupon(const QVariant &data)
{
    m_modelCoupon = JSONModel::initWithDictionary<Object_Coupon>(data);
    const Object_Coupon coupon = m_modelCoupon.value_or(Object_Coupon());
    const double goods = NSStringUtils::doubleValue(coupon.amount)
                         + NSStringUtils::doubleValue(coupon.subtotal);
    m_footerView->setOrderContentWithGoodsPrice(QString::asprintf("¥%.1f", goods),
                                                minusYuan(coupon.amount), QStringLiteral("0"));
    m_footerView->setCouponCode(coupon.code);
    m_viewPay->setPrice(yuan(coupon.subtotal));
}

void ConfirmOrderViewController::deleteCoupon()
{
    QString lineItemId;
    if (!m_sourceModel.order_line_items.isEmpty())
        lineItemId
                = text(m_sourceModel.order_line_items.first().toMap().value(QStringLiteral("id")));
    else if (m_modelCoupon)
        lineItemId = m_modelCoupon->line_item_id;
    else {
        Hud::shared().showErrorWithStatus(QStringLiteral("没有绑定的优惠码"));
        return;
    }
    QPointer<ConfirmOrderViewController> self(this);
    NetWorkHelper::shareInstance()->deleteCouponWithOrder_id(
            m_sourceModel.order_id, lineItemId, QStringLiteral("delete"),
            [](const QVariantMap &) { showProgress(QStringLiteral("正在取消...")); },
            dismissProgress,
            [self](const QVariant &data, const QVariant &) {
                if (self)
                    self->showDetachedCoupon(data);
                Hud::shared().showSuccessWithStatus(QStringLiteral("取消成功"));
            },
            showFailure);
}

void ConfirmOrderViewController::showDetachedCoupon(const QVariant &data)
{
    const QString subtotal = text(data.toMap().value(QStringLiteral("subtotal")));
    m_footerView->setOrderContentWithGoodsPrice(yuan(subtotal), minusYuan(QStringLiteral("0")),
                                                QStringLiteral("0"));
    m_viewPay->setPrice(yuan(subtotal));
    m_footerView->setCouponCode(QString());
    m_sourceModel.order_line_items.clear();
    m_modelCoupon.reset();
}

void ConfirmOrderViewController::pay()
{
    if (m_sourceModel.payment_methods.isEmpty())
        return;
    const QString method
            = text(m_sourceModel.payment_methods.first().toMap().value(QStringLiteral("name")));
    QPointer<ConfirmOrderViewController> self(this);
    ShareSDK::getUserInfoWithType(
            ShareTypeWeixiSession,
            [self, method](bool result, const ShareUser &user, const ShareError &error) {
                if (!result) {
                    qInfo().noquote() << QString::number(error.errorCode);
                    return;
                }
                if (!self)
                    return;
                self->m_openID = user.uid;
                self->getThirdPaymentData(method);
            });
}

void ConfirmOrderViewController::getThirdPaymentData(const QString &paymentMethod)
{
    QPointer<ConfirmOrderViewController> self(this);
    NetWorkHelper::shareInstance()->getThirdPaymentDataWithPaymentMethod(
            paymentMethod, m_sourceModel.order_id, m_openID,
            [](const QVariantMap &) { showProgress(QStringLiteral("获取支付信息...")); },
            dismissProgress,
            [self](const QVariant &data, const QVariant &) {
                if (!self)
                    return;
                const QVariant params = data.toMap().value(QStringLiteral("params_info"));
                if (params.typeId() == QMetaType::QVariantMap)
                    self->m_modelWeChat = JSONModel::initWithDictionary<Object_WeChatInfo>(params);
                self->sendPay(self->m_modelWeChat);
                // The doubled word is the text this screen has always shown.
                Hud::shared().showSuccessWithStatus(QStringLiteral("获取成功成功"));
            },
            showFailure);
}

void ConfirmOrderViewController::sendPay(const std::optional<Object_WeChatInfo> &parameters)
{
    if (!m_delegate)
        return;
    m_delegate->setOpenID(m_openID);
    // Kept until the store tells the order's state, should the app be closed meanwhile.
    if (parameters)
        PendingPayment::remember(m_sourceModel.order_id);
    m_delegate->sendPay(parameters);
}

void ConfirmOrderViewController::afterPayment(bool mayHaveSucceeded)
{
    if (!mayHaveSucceeded) {
        Hud::shared().showErrorWithStatus(QStringLiteral("支付失败"));
        return;
    }
    QPointer<ConfirmOrderViewController> self(this);
    const QString orderId = m_sourceModel.order_id;
    NetWorkHelper::shareInstance()->queryOrderWithOrder_id(
            orderId, [](const QVariantMap &) { showProgress(QStringLiteral("获取订单状态...")); },
            dismissProgress,
            [self, orderId](const QVariant &data, const QVariant &) {
                PendingPayment::settle(orderId);
                if (self && data.typeId() == QMetaType::QVariantMap)
                    self->showPaymentResult(data);
                qInfo().noquote() << objectDescription(data);
                // Shown last in every case, so it replaces a "支付失败" of an unpaid order: the
                // order of these indicators is intended.
                Hud::shared().showSuccessWithStatus(QStringLiteral("获取成功"));
            },
            [orderId](const QVariant &error, const QString &message, const QVariant &response) {
                // A refusal is the store's answer; without one the next launch asks again.
                if (response.isValid())
                    PendingPayment::settle(orderId);
                showFailure(error, message, response);
            });
}

void ConfirmOrderViewController::showPaymentResult(const QVariant &data)
{
    auto *result = new BuySuccessViewController(data.toMap());
    const QString completed = text(data.toMap().value(QStringLiteral("completed")));
    platform::NavigationController *navigation = navigationController();
    if (NSStringUtils::intValue(completed) != 0)
        markGamesOwned();
    if (NSStringUtils::intValue(completed) != 0 && navigation) {
        navigation->pushViewController(result, true);
        return;
    }
    delete result;
    Hud::shared().showErrorWithStatus(QStringLiteral("支付失败"));
}

void ConfirmOrderViewController::markGamesOwned()
{
    QStringList bought;
    for (const Object_OrderDetailGames &game : std::as_const(m_sourceModel.order_games))
        bought.append(game.id);
    OwnedGames::shared().add(bought);
    // A bundle's contents come with the store's list.
    OwnedGames::shared().refresh();
}
