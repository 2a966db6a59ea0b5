#pragma once

#include <QString>

enum SdkStatus {
    SdkStatusStarting = 0,
    SdkStatusStarted = 1,
    SdkStatusStoped = 2,
};

// What the push kit tells the app.
class GeTuiSdkDelegate
{
public:
    virtual ~GeTuiSdkDelegate() = default;

    // The service knows this device under `clientId`.
    virtual void GeTuiSdkDidRegisterClient(const QString &clientId) { Q_UNUSED(clientId) }
    // A message arrived; its payload is read with GeTuiSdk::retrivePayloadById.
    virtual void GeTuiSdkDidReceivePayload(const QString &payloadId, const QString &taskId,
                                           const QString &msgId, const QString &appId)
    {
        Q_UNUSED(payloadId)
        Q_UNUSED(taskId)
        Q_UNUSED(msgId)
        Q_UNUSED(appId)
    }
    // The outcome of sendMessage: 1 delivered, 0 not.
    virtual void GeTuiSdkDidSendMessage(const QString &messageId, int result)
    {
        Q_UNUSED(messageId)
        Q_UNUSED(result)
    }
    virtual void GeTuiSDkDidNotifySdkState(SdkStatus status) { Q_UNUSED(status) }
    virtual void GeTuiSdkDidOccurError(const QString &error) { Q_UNUSED(error) }
};
