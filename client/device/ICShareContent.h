#pragma once

#include <QList>
#include <QString>

// What the share panel hands to the sharing kit: one content with its own form for WeChat
// moments and for Sina Weibo, the target and how to share.
struct ICShareContent
{
    // The sharing kit's target codes.
    enum Platform {
        SinaWeibo = 1,
        WeChatSession = 22,
        WeChatTimeline = 23,
        WeChatFavorite = 24,
        QQFriend = 6
    };
    // The kit's media types.
    enum MediaType { MediaNews = 2 };

    struct WeChatTimelineUnit
    {
        MediaType type = MediaNews;
        QString text;
        QString title;
        QString url;
        QString imageUrl;
        bool operator==(const WeChatTimelineUnit &) const = default;
    };
    struct SinaWeiboUnit
    {
        QString text;
        QString imageUrl;
        bool operator==(const SinaWeiboUnit &) const = default;
    };

    QString text;
    QString defaultText;
    QString imageUrl; // the kit makes the picture from this address
    QString title;
    QString url;
    QString description;
    MediaType mediaType = MediaNews;
    WeChatTimelineUnit weChatTimeline;
    SinaWeiboUnit sinaWeibo;

    bool operator==(const ICShareContent &) const = default;
};

// One share as the panel asks for it: straight to the target's client, or the one-key share over
// a list of targets.
struct ICShareRequest
{
    bool oneKey = false;
    int platformType = 0; // the target of a direct share
    QList<int> shareList; // the targets of a one-key share
    ICShareContent content;
    bool statusBarTips = true;

    bool operator==(const ICShareRequest &) const = default;
};

// How a share ended, as the kit reports it.
struct ICShareResult
{
    enum State { Begin = 0, Success = 1, Fail = 2, Cancel = 3 };

    State state = Begin;
    int errorCode = 0;
    QString errorDescription;
};
