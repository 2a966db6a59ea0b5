#include "platform/kits/GeTuiService.h"

#include "platform/kits/GeTuiSdk.h"
#include "platform/kits/KitStorage.h"
#include "platform/kits/SandboxClient.h"

#include <QJsonArray>
#include <QJsonObject>

namespace {
constexpr qsizetype KeptPayloads = 50;
} // namespace

GeTuiService::GeTuiService()
{
    m_timer.setInterval(GeTuiSdk::DefaultPollIntervalMs);
    connect(&m_timer, &QTimer::timeout, this, &GeTuiService::poll);
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
    ++m_generation;
    m_timer.stop();
    m_queue.clear();
    m_busy = false;
    setStatus(SdkStatusStarting);
    registerClient();
    return true;
}

void GeTuiService::stop()
{
    ++m_generation;
    m_timer.stop();
    m_queue.clear();
    m_busy = false;
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
                const QString clientId
                        = answer.data.toObject().value(QStringLiteral("client_id")).toString();
                if (!answer.success || clientId.isEmpty()) {
                    retryRegistrationLater();
                    return;
                }
                m_clientId = clientId;
                m_after = platform::KitStorage::value(progressKey()).toLongLong();
                setStatus(SdkStatusStarted);
                if (m_delegate)
                    m_delegate->GeTuiSdkDidRegisterClient(clientId);
                startPolling();
            });
}

void GeTuiService::retryRegistrationLater()
{
    const quint64 generation = m_generation;
    QTimer::singleShot(m_timer.interval(), this, [this, generation] {
        if (generation == m_generation && m_status == SdkStatusStarting)
            registerClient();
    });
}

void GeTuiService::startPolling()
{
    if (m_status != SdkStatusStarted || m_background)
        return;
    m_timer.start();
    poll();
}

void GeTuiService::enterBackground()
{
    m_background = true;
    m_timer.stop();
}

void GeTuiService::resume()
{
    m_background = false;
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
    platform::SandboxClient::shared().get(
            QStringLiteral("/sandbox/push/poll"), query, this,
            [this, generation](const platform::SandboxClient::Answer &answer) {
                if (generation != m_generation)
                    return;
                m_busy = false;
                if (answer.httpStatus == 404) { // the service forgot this device
                    m_timer.stop();
                    setStatus(SdkStatusStarting);
                    registerClient();
                    return;
                }
                if (!answer.success)
                    return;
                for (const QJsonValue &message : answer.data.toArray()) {
                    const qint64 id = message.toObject().value(QStringLiteral("id")).toInteger();
                    if (id > m_after && !m_queue.contains(id))
                        m_queue.append(id);
                }
                deliverNext();
            });
}

void GeTuiService::deliverNext()
{
    if (m_busy || m_queue.isEmpty())
        return;
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
                if (answer.httpStatus == 0) { // try again with the next poll
                    m_queue.clear();
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
