#include "platform/kits/GeTuiService.h"

#include "platform/kits/Application.h"
#include "platform/kits/GeTuiSdk.h"
#include "platform/kits/KitStorage.h"
#include "platform/kits/SandboxClient.h"

#include <QJsonObject>
#include <QNetworkReply>

namespace {
constexpr qsizetype KeptPayloads = 50;
// The client's own limit on a held poll: the store's longest hold and some slack.
constexpr int PollTimeoutMs = (GeTuiSdk::LongPollSeconds + 10) * 1000;
// An empty answer sooner than this was not held (a store that does not hold polls, or one
// stopping): the next poll waits for the backoff instead of asking again at once.
constexpr qint64 ShortestHeldPollMs = 1000;
} // namespace

GeTuiService::GeTuiService()
{
    m_reconnect.setSingleShot(true);
    connect(&m_reconnect, &QTimer::timeout, this, &GeTuiService::reconnect);
}

GeTuiService &GeTuiService::shared()
{
    static GeTuiService service;
    return service;
}

bool GeTuiService::start(const QString &appId, const QString &appKey, const QString &appSecret,
                         GeTuiSdkDelegate *delegate, QString *error)
{
    if (appId.isEmpty() || appKey.isEmpty() || appSecret.isEmpty()) {
        if (error)
            *error = QStringLiteral("推送服务的 appId、appKey 和 appSecret 都不能为空");
        return false;
    }
    m_delegate = delegate;
    const bool running = m_status != SdkStatusStoped;
    if (running && appId == m_appId && appKey == m_appKey && appSecret == m_appSecret) {
        resume();
        return true;
    }
    m_appId = appId;
    m_appKey = appKey;
    m_appSecret = appSecret;
    m_background = false;
    pause();
    m_reconnectDelayMs = 0;
    setStatus(SdkStatusStarting);
    // The registration reads the device key from disk and asks the store: after the first frame.
    const quint64 generation = m_generation;
    platform::Application::shared().afterFirstFrame(this, [this, generation] {
        if (generation == m_generation && m_status == SdkStatusStarting)
            registerClient();
    });
    return true;
}

void GeTuiService::stop()
{
    pause();
    m_reconnectDelayMs = 0;
    if (m_status != SdkStatusStoped)
        setStatus(SdkStatusStoped);
}

void GeTuiService::destroy()
{
    m_delegate = nullptr;
    stop();
}

void GeTuiService::setStatus(SdkStatus status)
{
    m_status = status;
    if (m_delegate)
        m_delegate->GeTuiSDkDidNotifySdkState(status);
}

void GeTuiService::registerClient()
{
    const quint64 generation = m_generation;
    const QByteArray device = platform::KitStorage::deviceKey(QStringLiteral("getui:") + m_appId);
    QUrlQuery form;
    form.addQueryItem(QStringLiteral("device_token"), QString::fromLatin1(device.toHex()));
    platform::SandboxClient::shared().post(
            QStringLiteral("/sandbox/push/register"), form, this,
            [this, generation](const platform::SandboxClient::Answer &answer) {
                if (generation != m_generation)
                    return;
                const QJsonObject data = answer.data.toObject();
                const QString clientId = data.value(QStringLiteral("client_id")).toString();
                if (!answer.success || clientId.isEmpty()) {
                    reconnectLater();
                    return;
                }
                m_reconnectDelayMs = 0;
                m_clientId = clientId;
                m_after = platform::KitStorage::value(progressKey()).toLongLong();
                // A device registered before keeps its message ids: what it already handled
                // under an earlier client id is not delivered again.
                if (data.value(QStringLiteral("continued")).toBool())
                    m_after = qMax(m_after,
                                   platform::KitStorage::value(deviceProgressKey()).toLongLong());
                setStatus(SdkStatusStarted);
                if (m_delegate)
                    m_delegate->GeTuiSdkDidRegisterClient(clientId);
                startPolling();
            });
}

void GeTuiService::reconnectLater()
{
    m_reconnectDelayMs = m_reconnectDelayMs == 0
                                 ? GeTuiSdk::FirstReconnectDelayMs
                                 : qMin(m_reconnectDelayMs * 2, GeTuiSdk::LastReconnectDelayMs);
    m_reconnect.start(m_reconnectDelayMs);
}

void GeTuiService::reconnect()
{
    if (m_status == SdkStatusStarting)
        registerClient();
    else
        startPolling();
}

void GeTuiService::startPolling()
{
    if (m_status != SdkStatusStarted || m_background || m_reconnect.isActive())
        return;
    if (m_queue.isEmpty())
        poll();
    else
        deliverNext();
}

// Drops what is under way (an open poll is aborted); the messages not yet delivered come again
// with the next poll, as the progress only moves on delivery.
void GeTuiService::pause()
{
    ++m_generation;
    m_reconnect.stop();
    m_queue.clear();
    m_busy = false;
    if (m_openPoll)
        m_openPoll->abort();
    m_openPoll = nullptr;
}

// A registration under way goes on: its answer waits for resume to poll.
void GeTuiService::enterBackground()
{
    m_background = true;
    if (m_status == SdkStatusStarted)
        pause();
}

// Coming to the front tries a store that was away at once instead of at the end of the backoff.
void GeTuiService::resume()
{
    m_background = false;
    if (m_reconnect.isActive()) {
        m_reconnect.stop();
        reconnect();
        return;
    }
    startPolling();
}

void GeTuiService::poll()
{
    if (m_status != SdkStatusStarted || m_background || m_busy)
        return;
    m_busy = true;
    const quint64 generation = m_generation;
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("client_id"), m_clientId);
    query.addQueryItem(QStringLiteral("after"), QString::number(m_after));
    query.addQueryItem(QStringLiteral("wait"), QString::number(GeTuiSdk::LongPollSeconds));
    m_pollAge.start();
    m_openPoll = platform::SandboxClient::shared().get(
            QStringLiteral("/sandbox/push/poll"), query, this,
            [this, generation](const platform::SandboxClient::Answer &answer) {
                if (generation != m_generation)
                    return;
                m_busy = false;
                m_openPoll = nullptr;
                if (answer.httpStatus == 404) { // the service forgot this device
                    setStatus(SdkStatusStarting);
                    registerClient();
                    return;
                }
                const QJsonArray messages = answer.data.toArray();
                if (!answer.success
                    || (messages.isEmpty() && m_pollAge.elapsed() < ShortestHeldPollMs)) {
                    reconnectLater();
                    return;
                }
                m_reconnectDelayMs = 0;
                takeMessages(messages);
            },
            PollTimeoutMs);
}

void GeTuiService::takeMessages(const QJsonArray &messages)
{
    for (const QJsonValue &message : messages) {
        const qint64 id = message.toObject().value(QStringLiteral("id")).toInteger();
        if (id > m_after && !m_queue.contains(id))
            m_queue.append(id);
    }
    deliverNext();
}

// Delivers the queued messages one by one, then opens the next poll at once.
void GeTuiService::deliverNext()
{
    if (m_busy)
        return;
    if (m_queue.isEmpty()) {
        poll();
        return;
    }
    const qint64 id = m_queue.constFirst();
    if (m_pushModeOff) {
        m_queue.removeFirst();
        advanceTo(id);
        deliverNext();
        return;
    }
    m_busy = true;
    const quint64 generation = m_generation;
    QUrlQuery query; // the channel hands a payload only to the device it was sent to
    query.addQueryItem(QStringLiteral("client_id"), m_clientId);
    platform::SandboxClient::shared().get(
            QStringLiteral("/sandbox/push/payload/%1").arg(id), query, this,
            [this, generation, id](const platform::SandboxClient::Answer &answer) {
                if (generation != m_generation)
                    return;
                m_busy = false;
                if (answer.httpStatus == 0) { // the store is away: fetch it again once back
                    m_queue.clear();
                    reconnectLater();
                    return;
                }
                m_queue.removeAll(id);
                advanceTo(id);
                if (answer.httpStatus == 200) {
                    const QString payloadId = QString::number(id);
                    keepPayload(payloadId, answer.body);
                    if (m_delegate)
                        m_delegate->GeTuiSdkDidReceivePayload(
                                payloadId, QStringLiteral("GT_TASK_%1").arg(id),
                                QStringLiteral("GT_MSG_%1").arg(id), m_appId);
                }
                deliverNext();
            });
}

void GeTuiService::advanceTo(qint64 messageId)
{
    m_after = qMax(m_after, messageId);
    platform::KitStorage::setValue(progressKey(), m_after);
    platform::KitStorage::setValue(deviceProgressKey(), m_after);
}

void GeTuiService::keepPayload(const QString &payloadId, const QByteArray &payload)
{
    m_payloads.insert(payloadId, payload);
    m_payloadOrder.removeAll(payloadId);
    m_payloadOrder.append(payloadId);
    while (m_payloadOrder.size() > KeptPayloads)
        m_payloads.remove(m_payloadOrder.takeFirst());
}

QString GeTuiService::progressKey() const
{
    return QStringLiteral("getui/%1/after").arg(m_clientId);
}

QString GeTuiService::deviceProgressKey() const
{
    return QStringLiteral("getui/device/%1/after").arg(m_appId);
}

bool GeTuiService::setTags(const QStringList &tags)
{
    if (m_status == SdkStatusStoped)
        return false;
    m_tags = tags;
    return true;
}

QString GeTuiService::sendMessage(const QByteArray &body, QString *error)
{
    if (m_status != SdkStatusStarted) {
        if (error)
            *error = QStringLiteral("推送服务尚未启动");
        return {};
    }
    Q_UNUSED(body)
    const QString messageId = QStringLiteral("GT_UP_%1").arg(++m_sentMessages);
    // The sandbox channel carries messages to devices only: an upstream message is never
    // delivered, and the delegate hears so.
    const quint64 generation = m_generation;
    QTimer::singleShot(0, this, [this, generation, messageId] {
        if (generation == m_generation && m_delegate)
            m_delegate->GeTuiSdkDidSendMessage(messageId, 0);
    });
    return messageId;
}
