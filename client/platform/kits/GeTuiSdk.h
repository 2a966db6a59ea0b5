#pragma once

#include "platform/kits/GeTuiSdkDelegate.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

// The push kit. Started with the app's three credentials it registers this device with the push
// service, which gives it a client id, and then delivers the messages sent to it: the delegate
// hears of each by its payload id and reads the payload with retrivePayloadById.
//
// On the desktop the service is tarvel-store's push channel: while the kit runs and the app is in
// front it keeps one request open that the store holds until a message comes (a long poll), and
// opens the next as soon as it answers. When the store cannot be reached it tries again after
// a delay that doubles from FirstReconnectDelayMs up to LastReconnectDelayMs and starts over once
// the store answers. Entering the background pauses it, resume goes on.
class GeTuiSdk
{
public:
    GeTuiSdk() = delete;

    static constexpr int LongPollSeconds = 25;
    static constexpr int FirstReconnectDelayMs = 500;
    static constexpr int LastReconnectDelayMs = 30000;

    // False (with `error` set) when a credential is missing. Starting again while running only
    // takes the new delegate and goes on from the background.
    static bool startSdkWithAppId(const QString &appId, const QString &appKey,
                                  const QString &appSecret, GeTuiSdkDelegate *delegate,
                                  QString *error = nullptr);
    static void stopSdk();
    // Stops without telling anyone and forgets the delegate (which is going away).
    static void destroy();
    static GeTuiSdkDelegate *delegate();
    static SdkStatus status();
    // Empty until the service registered this device.
    static QString clientId();

    // The system's push token, linked with this client.
    static void registerDeviceToken(const QString &deviceToken);
    static QString deviceToken();

    // The payload of a delivered message; null when the id is unknown.
    static QByteArray retrivePayloadById(const QString &payloadId);

    // With push mode off the service delivers nothing; messages sent meanwhile are dropped.
    static void setPushModeForOff(bool isOff);
    static bool isPushModeOff();

    static void enterBackground();
    static void resume();
    static bool isInBackground();

    // Tags the service may address this device by; false unless started.
    static bool setTags(const QStringList &tags);
    static QStringList tags();

    // An upstream message to the service; the delegate hears of its outcome. Null (with
    // `error`) unless started.
    static QString sendMessage(const QByteArray &body, QString *error = nullptr);

    static void runBackgroundEnable(bool isEnable);
    static bool isRunBackgroundEnabled();
    static void lbsLocationEnable(bool isEnable, bool isVerify);
    static bool isLbsLocationEnabled();
};
