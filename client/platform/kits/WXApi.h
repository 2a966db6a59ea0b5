#pragma once

#include "platform/kits/WXApiObject.h"

#include <QString>
#include <QUrl>

// The WeChat client kit. Requests go to WeChat (on the desktop: the sandbox's payment sheet and
// the QR share sheet); WeChat answers by opening the app with an address of the app's WeChat
// scheme ("wx<appid>://pay/?returnKey=&ret=0"), which the app passes back to handleOpenURL.
class WXApi
{
public:
    WXApi() = delete;

    // The bundle id WeChat opens other apps as.
    static QString sourceApplication() { return QStringLiteral("com.tencent.xin"); }

    static bool registerApp(const QString &appid);
    static QString registeredAppId();
    static bool isWXAppInstalled();

    // Hands `req` (a PayReq or a SendMessageToWXReq) to WeChat; false when the app is not
    // registered, the request is of another kind, or WeChat is busy with another request.
    static bool sendReq(const BaseReq &req);

    // Reads WeChat's answer out of `url` and gives it to `delegate`; false when `url` is not a
    // WeChat answer for this app.
    static bool handleOpenURL(const QUrl &url, WXApiDelegate *delegate);

    // The addresses WeChat answers with.
    static QUrl payAnswerURL(int errCode, const QString &errStr = {});
    static QUrl shareAnswerURL(int errCode, const QString &errStr = {});
};
