#include "app/AppDelegate.h"

#include "platform/kits/WXApi.h"
#include "platform/ui/Hud.h"
#include "util/NSStringUtils.h"
#include "util/ObjectDescription.h"

#include <QDebug>

// The WeChat payment round trip: the request out, WeChat's answer back to the order screen.

void AppDelegate::sendPay(const std::optional<Object_WeChatInfo> &parameters)
{
    if (!parameters) {
        qInfo().noquote() << QStringLiteral("服务器返回错误");
        return;
    }
    PayReq req;
    req.openID = m_openID;
    req.partnerId = parameters->partnerid;
    req.prepayId = parameters->prepayid;
    req.nonceStr = parameters->noncestr;
    req.timeStamp = uint32_t(NSStringUtils::intValue(parameters->timestamp));
    // WeChat's app payments always carry this package, whatever the service sent.
    req.package = QStringLiteral("Sign=WXPay");
    req.sign = parameters->sign;

    m_isWeChatPay = true;
    kitsBridge(); // WeChat's answer comes back through the delegate's URL entry point
    WXApi::sendReq(req);

    const QStringList lines{
            QStringLiteral("appid=") + parameters->appid,
            QStringLiteral("partid=") + req.partnerId,
            QStringLiteral("prepayid=") + req.prepayId,
            QStringLiteral("noncestr=") + req.nonceStr,
            QStringLiteral("timestamp=") + QString::number(req.timeStamp),
            QStringLiteral("package=") + req.package,
            QStringLiteral("sign=") + req.sign,
    };
    qInfo().noquote() << lines.join(QLatin1Char('\n'));
}

void AppDelegate::onResp(const BaseResp &resp)
{
    m_isWeChatPay = false;
    if (dynamic_cast<const SendMessageToWXResp *>(&resp)) {
        if (resp.errCode != WXSuccess)
            platform::Hud::shared().showErrorWithStatus(QStringLiteral("分享失败"));
        else
            platform::Hud::shared().showSuccessWithStatus(QStringLiteral("分享成功"));
        return;
    }
    if (!dynamic_cast<const PayResp *>(&resp))
        return;
    // WeChat's title and message for the result stay unshown: the order screen's indicators
    // are what the user sees.
    const QString errStr = resp.errStr.isNull() ? objectDescription(QVariant()) : resp.errStr;
    if (resp.errCode == WXSuccess) {
        qInfo().noquote() << QStringLiteral("支付成功－PaySuccess，retcode = %1").arg(resp.errCode);
        callWeChatBlock(true);
    } else {
        qInfo().noquote()
                << QStringLiteral("错误，retcode = %1, retstr = %2").arg(resp.errCode).arg(errStr);
        callWeChatBlock(false);
    }
}

void AppDelegate::callWeChatBlock(bool mayHaveSucceeded)
{
    // Only the order screen starts payments, and it installs the callback first.
    if (m_weChatBlock)
        m_weChatBlock(mayHaveSucceeded);
    else
        qWarning("AppDelegate: a WeChat payment answered without an order screen to tell");
}
