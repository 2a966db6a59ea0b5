#pragma once

// Shared by the NetWorkHelper tests: a recorder of the four callbacks and a scripted store.

#include "ScriptedHttpServer.h"
#include "platform/HTTPCookieStorage.h"
#include "service/ApplicationState.h"
#include "service/NetWorkHelper.h"

#include <QNetworkAccessManager>
#include <QTest>

#include <functional>

namespace tarvel::test {

struct Failure
{
    QVariant error;
    QString message;
    QVariant response;
};

// Records what the callbacks of one request receive and in which order.
class CallbackRecorder
{
public:
    explicit CallbackRecorder(const ScriptedHttpServer *server = nullptr)
        : m_server(server)
    { }

    QStringList order; // "start", "end", "success", "failure" as they happened
    QVariantMap startParams;
    int requestsSeenAtStart = -1; // requests the server had received when StartFn ran
    QVariant endBody;
    QVariant successData;
    QVariant successWhole;
    QList<Failure> failures;

    StartFn start()
    {
        return [this](const QVariantMap &params) {
            order.append(QStringLiteral("start"));
            startParams = params;
            requestsSeenAtStart = m_server ? m_server->requestCount() : -1;
        };
    }
    EndFn end()
    {
        return [this](const QVariant &body) {
            order.append(QStringLiteral("end"));
            endBody = body;
        };
    }
    SuccessFn success()
    {
        return [this](const QVariant &data, const QVariant &whole) {
            order.append(QStringLiteral("success"));
            successData = data;
            successWhole = whole;
        };
    }
    FailureFn failure()
    {
        return [this](const QVariant &error, const QString &message, const QVariant &response) {
            order.append(QStringLiteral("failure"));
            failures.append({error, message, response});
        };
    }

    // Waits for EndFn; SuccessFn/FailureFn follow it in the same turn of the event loop.
    bool waitForEnd(int timeoutMs = 10000)
    {
        return QTest::qWaitFor([this] { return order.contains(QStringLiteral("end")); }, timeoutMs);
    }

    QString lastMessage() const { return failures.isEmpty() ? QString() : failures.last().message; }

private:
    const ScriptedHttpServer *m_server;
};

// One operation of NetWorkHelper called with a recorder's callbacks.
using Operation = std::function<void(NetWorkHelper *, CallbackRecorder &)>;

inline void callWith(const Operation &operation, CallbackRecorder &recorder)
{
    operation(NetWorkHelper::shareInstance(), recorder);
}

// A scripted store that NetWorkHelper talks to: ApiBaseUrl() points at it while it lives.
class ScriptedStore
{
public:
    ScriptedStore()
    {
        m_listening = server.listen();
        qputenv("TARVEL_API_BASE_URL", server.baseUrl().toUtf8());
    }
    bool isListening() const { return m_listening; }

    ScriptedHttpServer server;

private:
    bool m_listening = false;
};

inline void clearSharedCookies()
{
    auto *storage = platform::HTTPCookieStorage::shared();
    for (const QNetworkCookie &cookie : storage->cookies())
        storage->deleteCookie(cookie);
}

inline Object_User userWithToken(const QString &token)
{
    Object_User user;
    user.account_id = QStringLiteral("1001");
    user.token = token;
    return user;
}

// "key=value" texts of a request's query, decoded, in order.
inline QStringList queryTexts(const RecordedRequest &request)
{
    QStringList texts;
    for (const auto &[key, value] : request.query.queryItems(QUrl::FullyDecoded))
        texts.append(key + QLatin1Char('=') + value);
    return texts;
}

// "key=value" texts of a request's form body, decoded, in order.
inline QStringList formTexts(const RecordedRequest &request)
{
    QStringList texts;
    for (const auto &[key, value] : request.formFields())
        texts.append(key + QLatin1Char('=') + value);
    return texts;
}

} // namespace tarvel::test

Q_DECLARE_METATYPE(tarvel::test::Operation)
