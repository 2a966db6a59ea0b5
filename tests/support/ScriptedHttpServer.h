#pragma once

#include <QByteArray>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTcpServer>
#include <QUrlQuery>

#include <utility>

class QTcpSocket;

namespace tarvel::test {

using HeaderList = QList<std::pair<QByteArray, QByteArray>>;

// One answer the server gives, byte for byte as the test describes it.
struct ScriptedResponse
{
    enum class Mode {
        Answer, // status line, headers and body, then keep the connection open
        Hang, // read the request and never answer
        CloseMidBody // announce the whole body, send its first half, close the connection
    };

    int status = 200;
    QByteArray statusLine; // the whole first line; built from `status` when empty
    HeaderList headers;
    QByteArray body;
    int delayMs = 0;
    Mode mode = Mode::Answer;
    bool addContentLength = true; // adds Content-Length unless `headers` already has one

    static ScriptedResponse json(const QByteArray &body, int status = 200);
    static ScriptedResponse text(const QByteArray &body, const QByteArray &contentType,
                                 int status = 200);
    static ScriptedResponse hang();
    static ScriptedResponse closeMidBody(const QByteArray &body);
    ScriptedResponse &withHeader(const QByteArray &name, const QByteArray &value);
    ScriptedResponse &withDelay(int ms);
};

// One part of a multipart/form-data body.
struct MultipartPart
{
    QString name;
    QString fileName; // null when the part is a plain field
    QByteArray contentType;
    QByteArray body;
};

// What the server received for one request.
struct RecordedRequest
{
    QByteArray method;
    QByteArray target; // the request target as sent: path and query, still encoded
    QString path; // decoded path
    QUrlQuery query;
    HeaderList headers; // in the order received
    QByteArray body;

    QByteArray header(const QByteArray &name) const; // case-insensitive; empty when absent
    bool hasHeader(const QByteArray &name) const;
    // Fields of an application/x-www-form-urlencoded body, in body order, decoded.
    QList<std::pair<QString, QString>> formFields() const;
    QString formValue(const QString &name) const;
    // Cookies of the Cookie header, in order.
    QList<std::pair<QByteArray, QByteArray>> cookies() const;
    QList<MultipartPart> multipartParts() const;
};

// A loopback HTTP/1.1 server for tests: answers each request with the next scripted response (or a
// route's response, or the fallback) and records every request.
class ScriptedHttpServer : public QObject
{
    Q_OBJECT
public:
    explicit ScriptedHttpServer(QObject *parent = nullptr);
    ~ScriptedHttpServer() override;

    bool listen(); // on 127.0.0.1 and a free port
    quint16 port() const;
    QString baseUrl() const; // "http://127.0.0.1:<port>", no trailing slash

    // Answers in the order given, one per request, before the routes and the fallback.
    void enqueue(const ScriptedResponse &response);
    // Answers every request for `path` (without query) while the queue is empty.
    void route(const QString &path, const ScriptedResponse &response);
    // Answers everything else; by default a 404 with an empty body.
    void setFallback(const ScriptedResponse &response);

    QList<RecordedRequest> requests() const { return m_requests; }
    int requestCount() const { return int(m_requests.size()); }
    RecordedRequest lastRequest() const;
    void clearRequests() { m_requests.clear(); }
    // Spins the event loop until `count` requests arrived; false on timeout.
    bool waitForRequests(int count, int timeoutMs = 5000);
    int openConnections() const;

signals:
    void requestReceived(const tarvel::test::RecordedRequest &request);

private:
    struct Connection;
    void onNewConnection();
    void processBuffer(QTcpSocket *socket);
    ScriptedResponse nextResponse(const RecordedRequest &request);
    void answer(QTcpSocket *socket, const ScriptedResponse &response);

    QTcpServer m_server;
    QList<ScriptedResponse> m_queue;
    QHash<QString, ScriptedResponse> m_routes;
    ScriptedResponse m_fallback;
    QList<RecordedRequest> m_requests;
    QHash<QTcpSocket *, Connection *> m_connections;
};

} // namespace tarvel::test
Q_DECLARE_METATYPE(tarvel::test::ScriptedResponse)
