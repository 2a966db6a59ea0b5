#pragma once

#include <QString>

#include <functional>
#include <optional>

// The sharing kit's vocabulary, with its own numbers for platforms and states.

enum ShareType {
    ShareTypeSinaWeibo = 1,
    ShareTypeQQSpace = 6,
    ShareTypeWeixiSession = 22, // a WeChat chat
    ShareTypeWeixiTimeline = 23, // WeChat moments
    ShareTypeQQ = 24,
};

enum SSResponseState {
    SSResponseStateBegin = 0,
    SSResponseStateSuccess = 1,
    SSResponseStateFail = 2,
    SSResponseStateCancel = 3,
};

enum SSPublishContentMediaType {
    SSPublishContentMediaTypeText = 0,
    SSPublishContentMediaTypeImage = 1,
    SSPublishContentMediaTypeNews = 2,
};

// The kit's own error codes; WeChat's answers keep WeChat's code.
enum ShareErrorCode {
    ShareErrorPlatformNotConnected = 20001,
    ShareErrorBrowserUnavailable = 20002,
    ShareErrorClientBusy = 20003,
};

struct ShareError
{
    int errorCode = 0;
    QString errorDescription;
};

// A user's identity at a platform.
struct ShareUser
{
    ShareType type = ShareTypeWeixiSession;
    QString uid;
    QString nickname;
};

// One platform's own form of the content (a WeChat-moments or a Weibo unit).
struct ShareContentUnit
{
    QString content;
    QString title;
    QString url;
    QString image; // picture address
    SSPublishContentMediaType type = SSPublishContentMediaTypeNews;
};

// What is shared: text, a picture address, a title, a page address; platforms may have their
// own unit.
struct ShareContent
{
    QString content;
    QString defaultContent;
    QString image;
    QString title;
    QString url;
    QString description;
    SSPublishContentMediaType mediaType = SSPublishContentMediaTypeNews;
    std::optional<ShareContentUnit> weixinTimelineUnit;
    std::optional<ShareContentUnit> sinaWeiboUnit;
};

// Called with Begin first and then the outcome (end = true).
using ShareResultFn = std::function<void(ShareType type, SSResponseState state,
                                         const ShareError &error, bool end)>;
using UserInfoResultFn
        = std::function<void(bool result, const ShareUser &user, const ShareError &error)>;
