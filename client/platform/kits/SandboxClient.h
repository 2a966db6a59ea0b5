#pragma once

#include <QByteArray>
#include <QJsonValue>
#include <QObject>
#include <QString>
#include <QUrlQuery>

#include <functional>

class QNetworkAccessManager;
class QNetworkReply;

namespace platform {

// The kits' own line to the outside parties that tarvel-store plays in its sandbox (WeChat
// payment, the push channel). It has a network manager of its own: nothing of the app's session
// (cookies) goes along, as nothing would go from the app to another company's server.
class SandboxClient : public QObject
{
    Q_OBJECT
public:
    static constexpr int TimeoutMs = 10000;

    struct Answer
    {
        int httpStatus = 0; // 0: no answer at all
        QByteArray body;
        bool success = false; // an envelope with "status" "success"
        QJsonValue data; // the envelope's "data"
        QString message; // the envelope's "message", or what went wrong on the way
    };
    using Handler = std::function<void(const Answer &answer)>;

    static SandboxClient &shared();

    // `path` is appended to the store's base address. `handler` runs on the main thread unless
    // `context` is gone by then. A request held open by the other side (a long poll) passes a
    // `timeoutMs` longer than it may be held; the reply may be aborted, its handler then hears
    // of no answer.
    QNetworkReply *get(const QString &path, const QUrlQuery &query, QObject *context,
                       Handler handler, int timeoutMs = TimeoutMs);
    void post(const QString &path, const QUrlQuery &form, QObject *context, Handler handler);

private:
    SandboxClient();
    void watch(QNetworkReply *reply, QObject *context, Handler handler);
    static Answer answerOf(QNetworkReply *reply);

    QNetworkAccessManager *m_manager;
};

} // namespace platform
