#pragma once

#include <QString>

#include <cstdint>

// The requests the app sends to WeChat and the answers WeChat comes back with.

enum WXErrCode {
    WXSuccess = 0,
    WXErrCodeCommon = -1,
    WXErrCodeUserCancel = -2,
    WXErrCodeSentFail = -3,
    WXErrCodeAuthDeny = -4,
    WXErrCodeUnsupport = -5,
};

// Where a shared message goes: a chat, or the user's moments.
enum WXScene {
    WXSceneSession = 0,
    WXSceneTimeline = 1,
};

class BaseReq
{
public:
    virtual ~BaseReq() = default;
    int type = 0;
    QString openID; // the user's id at WeChat for this app
};

// A payment request with the parameters the merchant's server signed.
class PayReq : public BaseReq
{
public:
    QString partnerId;
    QString prepayId;
    QString nonceStr;
    uint32_t timeStamp = 0;
    QString package;
    QString sign;
};

// A web page to share: title, description, picture address and the page's address.
class SendMessageToWXReq : public BaseReq
{
public:
    QString title;
    QString description;
    QString thumbImageUrl;
    QString webpageUrl;
    int scene = WXSceneSession;
};

class BaseResp
{
public:
    virtual ~BaseResp() = default;
    int errCode = WXSuccess;
    QString errStr; // null when WeChat gave none
    int type = 0;
};

class PayResp : public BaseResp
{
public:
    QString returnKey;
};

class SendMessageToWXResp : public BaseResp
{
public:
    QString lang;
    QString country;
};

// Receives WeChat's answers (handleOpenURL).
class WXApiDelegate
{
public:
    virtual ~WXApiDelegate() = default;
    virtual void onResp(const BaseResp &resp) = 0;
};
