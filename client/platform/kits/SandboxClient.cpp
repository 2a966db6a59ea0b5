#include "platform/kits/SandboxClient.h"

#include "util/AppConfig.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPointer>
#include <QUrl>

namespace platform {

SandboxClient::SandboxClient()
    : m_manager(new QNetworkAccessManager(this))
{
    m_manager->setTransferTimeout(TimeoutMs);
}

SandboxClient &SandboxClient::shared()
{
    static SandboxClient client;
    return client;
}

QNetworkReply *SandboxClient::get(const QString &path, const QUrlQuery &query, QObject *context,
                                  Handler handler, int timeoutMs)
{
    QUrl url(ApiBaseUrl() + path);
    url.setQuery(query);
    QNetworkRequest request(url);
    request.setTransferTimeout(timeoutMs);
    QNetworkReply *reply = m_manager->get(request);
    watch(reply, context, std::move(handler));
    return reply;
}

void SandboxClient::post(const QString &path, const QUrlQuery &form, QObject *context,
                         Handler handler)
{
    QNetworkRequest request(QUrl(ApiBaseUrl() + path));
    request.setHeader(QNetworkRequest::ContentTypeHeader,
                      QByteArrayLiteral("application/x-www-form-urlencoded"));
    const QByteArray body = form.toString(QUrl::FullyEncoded).toUtf8();
    watch(m_manager->post(request, body), context, std::move(handler));
}

void SandboxClient::watch(QNetworkReply *reply, QObject *context, Handler handler)
{
    QPointer<QObject> guard = context;
    connect(reply, &QNetworkReply::finished, this,
            [reply, guard, hasContext = context != nullptr, handler = std::move(handler)] {
                reply->deleteLater();
                if (hasContext && !guard)
                    return;
                if (handler)
                    handler(answerOf(reply));
            });
}

SandboxClient::Answer SandboxClient::answerOf(QNetworkReply *reply)
{
    Answer answer;
    answer.httpStatus = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (reply->isOpen()) // an aborted reply is closed: nothing to read
        answer.body = reply->readAll();
    const QJsonObject envelope = QJsonDocument::fromJson(answer.body).object();
    answer.success
            = envelope.value(QStringLiteral("status")).toString() == QLatin1String("success");
    answer.data = envelope.value(QStringLiteral("data"));
    answer.message = envelope.value(QStringLiteral("message")).toString();
    if (answer.httpStatus == 0)
        answer.message = reply->errorString();
    return answer;
}

} // namespace platform
