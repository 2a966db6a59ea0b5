#include "StoreContext.h"
#include "core/Money.h"
#include "handlers/Handlers.h"
#include "http/ApiError.h"
#include "http/Exchange.h"
#include "sandbox/Outbox.h"
#include "shop/Payments.h"

// The sandbox's windows into the outside parties: the SMS and mail outbox, the captcha answer of
// the caller's session, and the WeChat payment confirmation.
namespace {

// GET /sandbox/outbox.json?to=<phone or e-mail>
void outbox(Exchange &exchange)
{
    const QString recipient = exchange.field("to").trimmed();
    exchange.success(exchange.store().database().read(
            [&](SQLite::Database &db) { return Outbox::list(db, recipient, 50); }));
}

// GET /sandbox/captcha.json: the text of the captcha picture last shown to this session.
void captchaAnswer(Exchange &exchange)
{
    const Session *session = exchange.session();
    if (!session || session->captcha.isEmpty())
        throw ApiError::error(404, QStringLiteral("当前会话没有验证码，请先获取验证码图片"));
    exchange.success(QJsonObject{{QStringLiteral("captcha"), session->captcha}});
}

// GET /sandbox/wechat/prepay?prepayid=: what the payer is asked to pay, before answering.
void prepayInfo(Exchange &exchange)
{
    const QString prepayId = exchange.field("prepayid").trimmed();
    const auto prepay = exchange.store().database().read(
            [&](SQLite::Database &db) { return Payments::find(db, prepayId); });
    if (!prepay)
        throw ApiError::error(404, QStringLiteral("RecordNotFound: 预支付交易不存在"));
    exchange.success(QJsonObject{{QStringLiteral("prepayid"), prepay->prepayId},
                                 {QStringLiteral("order_id"), prepay->orderId},
                                 {QStringLiteral("amount"), Money::text(prepay->amount)},
                                 {QStringLiteral("state"), prepay->state}});
}

// POST /sandbox/wechat/confirm: the payer confirms ("success") or abandons ("cancel") a prepay.
void confirmPayment(Exchange &exchange)
{
    const QString prepayId = exchange.field("prepayid").trimmed();
    const QString result = exchange.field("result").trimmed();
    FieldErrors errors;
    if (prepayId.isEmpty())
        errors.add(QStringLiteral("prepayid"), QStringLiteral("请输入"),
                   QStringLiteral("预支付交易号"));
    if (result != QLatin1String("success") && result != QLatin1String("cancel"))
        errors.add(QStringLiteral("result"), QStringLiteral("请选择正确的"),
                   QStringLiteral("支付结果"));
    const bool success = result == QLatin1String("success");
    // The payer's confirmation says what was paid; it must be what the order is due.
    const qint64 amount = Money::parse(exchange.field("amount"));
    if (success && amount < 0)
        errors.add(QStringLiteral("amount"), QStringLiteral("请输入正确的"),
                   QStringLiteral("支付金额"));
    errors.raiseIfAny();
    const auto settlement = exchange.store().database().write([&](SQLite::Database &db) {
        return Payments::settle(db, exchange.store().catalog(), prepayId, success, amount,
                                exchange.now());
    });
    exchange.success(QJsonObject{{QStringLiteral("prepayid"), prepayId},
                                 {QStringLiteral("result"), result},
                                 {QStringLiteral("order_id"), settlement.orderId},
                                 {QStringLiteral("state"), settlement.orderState}});
}

} // namespace

void SandboxHandlers::installOutbox(Router &router)
{
    router.add("GET", "/sandbox/outbox.json", outbox);
    router.add("GET", "/sandbox/captcha.json", captchaAnswer);
}

void SandboxHandlers::installWeChat(Router &router)
{
    router.add("GET", "/sandbox/wechat/prepay", prepayInfo);
    router.add("POST", "/sandbox/wechat/confirm", confirmPayment);
}
