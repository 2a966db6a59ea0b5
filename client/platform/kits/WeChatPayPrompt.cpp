#include "platform/kits/WeChatPayPrompt.h"

#include "platform/kits/Application.h"
#include "platform/kits/SandboxClient.h"
#include "platform/kits/WXApi.h"

#include <QJSEngine>
#include <QJsonObject>

namespace platform {

namespace {
const QString PendingState = QStringLiteral("pending");

QString amountText(const QString &yuan)
{
    bool ok = false;
    const double value = yuan.toDouble(&ok);
    return ok ? QStringLiteral("¥") + QString::number(value, 'f', 2) : QString();
}

QString whyNotPayable(const SandboxClient::Answer &answer)
{
    if (answer.httpStatus == 0)
        return QStringLiteral("无法连接微信支付，请稍后再试");
    if (answer.httpStatus == 404)
        return QStringLiteral("支付订单不存在或已失效");
    return answer.message.isEmpty() ? QStringLiteral("暂时无法支付，请稍后再试") : answer.message;
}
} // namespace

WeChatPayPrompt &WeChatPayPrompt::shared()
{
    static WeChatPayPrompt prompt;
    return prompt;
}

WeChatPayPrompt *WeChatPayPrompt::create(QQmlEngine *, QJSEngine *)
{
    QJSEngine::setObjectOwnership(&shared(), QJSEngine::CppOwnership);
    return &shared();
}

bool WeChatPayPrompt::present(const PayReq &req)
{
    if (m_shown)
        return false;
    ++m_generation;
    m_request = req;
    m_shown = true;
    m_payable = false;
    m_settling = false;
    m_amount.clear();
    m_prepayAmount.clear();
    m_orderNumber.clear();
    m_status = QStringLiteral("正在加载订单信息…");
    Application::shared().beginCovering();
    loadAmount();
    emit changed();
    return true;
}

void WeChatPayPrompt::loadAmount()
{
    m_loading = true;
    const quint64 generation = m_generation;
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("prepayid"), m_request.prepayId);
    SandboxClient::shared().get(
            QStringLiteral("/sandbox/wechat/prepay"), query, this,
            [this, generation](const SandboxClient::Answer &answer) {
                if (generation != m_generation || !m_shown)
                    return;
                m_loading = false;
                const QJsonObject prepay = answer.data.toObject();
                if (!answer.success || prepay.isEmpty()) {
                    setStatus(whyNotPayable(answer));
                    return;
                }
                m_prepayAmount = prepay.value(QStringLiteral("amount")).toString();
                m_amount = amountText(m_prepayAmount);
                m_orderNumber
                        = QString::number(prepay.value(QStringLiteral("order_id")).toInteger());
                m_payable = prepay.value(QStringLiteral("state")).toString() == PendingState;
                setStatus(m_payable ? QString() : QStringLiteral("该笔支付已经处理过了"));
            });
}

void WeChatPayPrompt::confirm()
{
    if (!canConfirm())
        return;
    setStatus(QStringLiteral("正在支付…"));
    settle(true);
}

void WeChatPayPrompt::cancel()
{
    if (!m_shown || m_settling)
        return;
    setStatus(QStringLiteral("正在取消…"));
    settle(false);
}

void WeChatPayPrompt::dismiss()
{
    if (!m_shown || m_settling)
        return;
    finish(std::nullopt);
}

void WeChatPayPrompt::settle(bool pay)
{
    m_settling = true;
    emit changed();
    const quint64 generation = m_generation;
    QUrlQuery form;
    form.addQueryItem(QStringLiteral("prepayid"), m_request.prepayId);
    form.addQueryItem(QStringLiteral("result"),
                      pay ? QStringLiteral("success") : QStringLiteral("cancel"));
    if (pay) // the payer confirms the amount shown; the service refuses any other
        form.addQueryItem(QStringLiteral("amount"), m_prepayAmount);
    SandboxClient::shared().post(
            QStringLiteral("/sandbox/wechat/confirm"), form, this,
            [this, generation, pay](const SandboxClient::Answer &answer) {
                if (generation != m_generation || !m_shown)
                    return;
                if (!pay)
                    finish(WXApi::payAnswerURL(WXErrCodeUserCancel));
                else if (answer.success)
                    finish(WXApi::payAnswerURL(WXSuccess));
                else
                    finish(WXApi::payAnswerURL(WXErrCodeCommon, whyNotPayable(answer)));
            });
}

void WeChatPayPrompt::finish(const std::optional<QUrl> &answer)
{
    ++m_generation;
    m_shown = false;
    m_loading = false;
    m_settling = false;
    m_payable = false;
    emit changed();
    // WeChat opens the app with its answer before the app is back in front.
    if (answer)
        Application::shared().openURL(*answer, WXApi::sourceApplication());
    Application::shared().endCovering();
}

void WeChatPayPrompt::setStatus(const QString &status)
{
    m_status = status;
    emit changed();
}

} // namespace platform
