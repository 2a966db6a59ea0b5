#pragma once

#include "platform/kits/ShareSDKTypes.h"
#include "platform/kits/WXApiObject.h"

#include <QList>
#include <QObject>

// One share in progress: the content going to each platform of a list in turn, with the result
// reported per platform. A WeChat share waits for WeChat's answer; coming back to the app without
// one (or with an answer that went elsewhere) counts as cancelled.
class ShareSession : public QObject
{
public:
    ShareSession(const ShareContent &content, const QList<ShareType> &targets,
                 const ShareResultFn &result);

    // The share waiting for WeChat, if any.
    static ShareSession *waitingForWeChat();

    void start();
    // WeChat's answer to the share waiting for it.
    void settleWeChat(const SendMessageToWXResp &resp);

private:
    void shareNext();
    void shareToWeibo();
    void shareToWeChat(ShareType type);
    void report(SSResponseState state, const ShareError &error = {});
    void abandonWeChatIfWaiting();

    ShareContent m_content;
    QList<ShareType> m_targets;
    ShareResultFn m_result;
    qsizetype m_index = -1;
    bool m_waitingForWeChat = false;
};
