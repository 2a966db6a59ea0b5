#pragma once

#include "platform/kits/GeTuiSdkDelegate.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QHash>
#include <QJsonArray>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>
#include <QTimer>

class QNetworkReply;

// The push kit's desktop engine over tarvel-store's push channel: registration, one long poll
// held open at a time, payload fetching, reconnection with backoff and the kit's state. GeTuiSdk
// is its public face.
class GeTuiService : public QObject
{
public:
    static GeTuiService &shared();

    bool start(const QString &appId, const QString &appKey, const QString &appSecret,
               GeTuiSdkDelegate *delegate, QString *error);
    void stop();
    void destroy();
    GeTuiSdkDelegate *delegate() const { return m_delegate; }
    SdkStatus status() const { return m_status; }
    QString clientId() const { return m_clientId; }

    void setDeviceToken(const QString &token) { m_deviceToken = token; }
    QString deviceToken() const { return m_deviceToken; }
    QByteArray payload(const QString &payloadId) const { return m_payloads.value(payloadId); }

    void setPushModeOff(bool off) { m_pushModeOff = off; }
    bool isPushModeOff() const { return m_pushModeOff; }
    void enterBackground();
    void resume();
    bool isInBackground() const { return m_background; }

    bool setTags(const QStringList &tags);
    QStringList tags() const { return m_tags; }
    QString sendMessage(const QByteArray &body, QString *error);

    void setRunBackground(bool enabled) { m_runBackground = enabled; }
    bool runsInBackground() const { return m_runBackground; }
    void setLbsLocation(bool enabled) { m_lbsLocation = enabled; }
    bool isLbsLocationEnabled() const { return m_lbsLocation; }
    // Until the next attempt after the store could not be reached; 0 while it answers.
    int reconnectDelayMs() const { return m_reconnectDelayMs; }

private:
    GeTuiService();
    void setStatus(SdkStatus status);
    void registerClient();
    void reconnectLater();
    void reconnect();
    void startPolling();
    void pause();
    void poll();
    void takeMessages(const QJsonArray &messages);
    void deliverNext();
    void advanceTo(qint64 messageId);
    void keepPayload(const QString &payloadId, const QByteArray &payload);
    QString progressKey() const;
    QString deviceProgressKey() const;

    GeTuiSdkDelegate *m_delegate = nullptr;
    SdkStatus m_status = SdkStatusStoped;
    QString m_appId;
    QString m_appKey;
    QString m_appSecret;
    QString m_clientId;
    QString m_deviceToken;
    QStringList m_tags;
    bool m_pushModeOff = false;
    bool m_runBackground = false;
    bool m_lbsLocation = false;
    bool m_background = false;
    bool m_busy = false; // a poll or a delivery is under way: at most one request at a time
    quint64 m_generation = 0;
    qint64 m_after = 0; // the last message id handled
    QList<qint64> m_queue; // message ids waiting for their payload
    QHash<QString, QByteArray> m_payloads;
    QList<QString> m_payloadOrder;
    int m_sentMessages = 0;
    QPointer<QNetworkReply> m_openPoll;
    QElapsedTimer m_pollAge;
    QTimer m_reconnect;
    int m_reconnectDelayMs = 0;
};
