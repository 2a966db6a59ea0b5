#include "platform/kits/GeTuiSdk.h"

#include "platform/kits/GeTuiService.h"

bool GeTuiSdk::startSdkWithAppId(const QString &appId, const QString &appKey,
                                 const QString &appSecret, GeTuiSdkDelegate *delegate,
                                 QString *error)
{
    return GeTuiService::shared().start(appId, appKey, appSecret, delegate, error);
}

void GeTuiSdk::stopSdk()
{
    GeTuiService::shared().stop();
}

void GeTuiSdk::destroy()
{
    GeTuiService::shared().destroy();
}

GeTuiSdkDelegate *GeTuiSdk::delegate()
{
    return GeTuiService::shared().delegate();
}

SdkStatus GeTuiSdk::status()
{
    return GeTuiService::shared().status();
}

QString GeTuiSdk::clientId()
{
    return GeTuiService::shared().clientId();
}

void GeTuiSdk::registerDeviceToken(const QString &deviceToken)
{
    GeTuiService::shared().setDeviceToken(deviceToken);
}

QString GeTuiSdk::deviceToken()
{
    return GeTuiService::shared().deviceToken();
}

QByteArray GeTuiSdk::retrivePayloadById(const QString &payloadId)
{
    return GeTuiService::shared().payload(payloadId);
}

void GeTuiSdk::setPushModeForOff(bool isOff)
{
    GeTuiService::shared().setPushModeOff(isOff);
}

bool GeTuiSdk::isPushModeOff()
{
    return GeTuiService::shared().isPushModeOff();
}

void GeTuiSdk::enterBackground()
{
    GeTuiService::shared().enterBackground();
}

void GeTuiSdk::resume()
{
    GeTuiService::shared().resume();
}

bool GeTuiSdk::isInBackground()
{
    return GeTuiService::shared().isInBackground();
}

bool GeTuiSdk::setTags(const QStringList &tags)
{
    return GeTuiService::shared().setTags(tags);
}

QStringList GeTuiSdk::tags()
{
    return GeTuiService::shared().tags();
}

QString GeTuiSdk::sendMessage(const QByteArray &body, QString *error)
{
    return GeTuiService::shared().sendMessage(body, error);
}

void GeTuiSdk::runBackgroundEnable(bool isEnable)
{
    GeTuiService::shared().setRunBackground(isEnable);
}

bool GeTuiSdk::isRunBackgroundEnabled()
{
    return GeTuiService::shared().runsInBackground();
}

void GeTuiSdk::lbsLocationEnable(bool isEnable, bool isVerify)
{
    Q_UNUSED(isVerify) // the desktop asks nobody: there is no location to share
    GeTuiService::shared().setLbsLocation(isEnable);
}

bool GeTuiSdk::isLbsLocationEnabled()
{
    return GeTuiService::shared().isLbsLocationEnabled();
}
