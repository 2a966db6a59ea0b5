#include "ScriptedHttpServer.h"

#include <QDeadlineTimer>
#include <QHostAddress>
#include <QRegularExpression>
#include <QTcpSocket>
#include <QTest>
#include <QTimer>
#include <QUrl>

namespace tarvel::test {

namespace {

QByteArray reasonPhrase(int status)
{
    switch (status) {
    case 200:
        return "OK";
    case 201:
        return "Created";
    case 204:
        return "No Content";
    case 301:
        return "Moved Permanently";
    case 302:
        return "Found";
    case 400:
        return "Bad Request";
    case 401:
        return "Unauthorized";
    case 403:
        return "Forbidden";
    case 404:
        return "Not Found";
    case 413:
        return "Payload Too Large";
    case 422:
        return "Unprocessable Entity";
    case 500:
        return "Internal Server Error";
    case 502:
        return "Bad Gateway";
    case 503:
        return "Service Unavailable";
    default:
        return "Status";
    }
}

QByteArray headerValue(const HeaderList &headers, const QByteArray &name)
{
    for (const auto &[key, value] : headers) {
        if (key.compare(name, Qt::CaseInsensitive) == 0)
            return value;
    }
    return {};
}

bool containsHeader(const HeaderList &headers, const QByteArray &name)
{
    for (const auto &header : headers) {
        if (header.first.compare(name, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

QString decodeFormComponent(QByteArray text)
{
    text.replace('+', ' ');
    return QUrl::fromPercentEncoding(text);
}

// The value of `key` inside a header such as `form-data; name="file"; filename="jpg"`.
QString headerParameter(const QByteArray &header, const QByteArray &key)
{
    const QRegularExpression pattern(
            QStringLiteral("(?:^|;)\\s*%1=(?:\"([^\"]*)\"|([^;]*))").arg(QString::fromLatin1(key)));
    const auto match = pattern.match(QString::fromUtf8(header));
    if (!match.hasMatch())
        return {};
    return match.capturedLength(1) > 0 || match.captured(2).isNull() ? match.captured(1)
                                                                     : match.captured(2).trimmed();
}

} // namespace

ScriptedResponse ScriptedResponse::json(const QByteArray &body, int status)
{
    return text(body, "application/json; charset=utf-8", status);
}

ScriptedResponse ScriptedResponse::text(const QByteArray &body, const QByteArray &contentType,
                                        int status)
{
    ScriptedResponse response;
    response.status = status;
    response.body = body;
    response.headers.append({"Content-Type", contentType});
    return response;
}

ScriptedResponse ScriptedResponse::hang()
{
    ScriptedResponse response;
    response.mode = Mode::Hang;
    return response;
}

ScriptedResponse ScriptedResponse::closeMidBody(const QByteArray &body)
{
    ScriptedResponse response = json(body);
    response.mode = Mode::CloseMidBody;
    return response;
}

ScriptedResponse &ScriptedResponse::withHeader(const QByteArray &name, const QByteArray &value)
{
    headers.append({name, value});
    return *this;
}

ScriptedResponse &ScriptedResponse::withDelay(int ms)
{
    delayMs = ms;
    return *this;
}

QByteArray RecordedRequest::header(const QByteArray &name) const
{
    return headerValue(headers, name);
}

bool RecordedRequest::hasHeader(const QByteArray &name) const
{
    return containsHeader(headers, name);
}

QList<std::pair<QString, QString>> RecordedRequest::formFields() const
{
    QList<std::pair<QString, QString>> fields;
    if (body.isEmpty())
        return fields;
    for (const QByteArray &pair : body.split('&')) {
        const qsizetype equals = pair.indexOf('=');
        const QByteArray key = equals < 0 ? pair : pair.left(equals);
        const QByteArray value = equals < 0 ? QByteArray() : pair.mid(equals + 1);
        fields.append({decodeFormComponent(key), decodeFormComponent(value)});
    }
    return fields;
}

QString RecordedRequest::formValue(const QString &name) const
{
    for (const auto &[key, value] : formFields()) {
        if (key == name)
            return value;
    }
    return {};
}

QList<std::pair<QByteArray, QByteArray>> RecordedRequest::cookies() const
{
    QList<std::pair<QByteArray, QByteArray>> result;
    for (const QByteArray &item : header("Cookie").split(';')) {
        const QByteArray trimmed = item.trimmed();
        if (trimmed.isEmpty())
            continue;
        const qsizetype equals = trimmed.indexOf('=');
        result.append({trimmed.left(equals), equals < 0 ? QByteArray() : trimmed.mid(equals + 1)});
    }
    return result;
}

QList<MultipartPart> RecordedRequest::multipartParts() const
{
    QList<MultipartPart> parts;
    const QString boundary = headerParameter(header("Content-Type"), "boundary");
    if (boundary.isEmpty())
        return parts;
    const QByteArray delimiter = "--" + boundary.toLatin1();
    qsizetype position = body.indexOf(delimiter);
    while (position >= 0) {
        position += delimiter.size();
        if (body.mid(position, 2) == "--")
            break;
        position += 2; // CRLF after the delimiter
        const qsizetype headEnd = body.indexOf("\r\n\r\n", position);
        const qsizetype next = body.indexOf("\r\n" + delimiter, position);
        if (headEnd < 0 || next < 0)
            break;
        MultipartPart part;
        for (const QByteArray &line : body.mid(position, headEnd - position).split('\n')) {
            const qsizetype colon = line.indexOf(':');
            const QByteArray name = line.left(colon).trimmed();
            const QByteArray value = line.mid(colon + 1).trimmed();
            if (name.compare("Content-Disposition", Qt::CaseInsensitive) == 0) {
                part.name = headerParameter(value, "name");
                part.fileName = headerParameter(value, "filename");
            } else if (name.compare("Content-Type", Qt::CaseInsensitive) == 0) {
                part.contentType = value;
            }
        }
        part.body = body.mid(headEnd + 4, next - headEnd - 4);
        parts.append(part);
        position = next + 2;
    }
    return parts;
}

struct ScriptedHttpServer::Connection
{
    QByteArray buffer;
    bool busy = false; // an answer is pending (delayed) or will never come (hang)
};

ScriptedHttpServer::ScriptedHttpServer(QObject *parent)
    : QObject(parent)
{
    m_fallback.status = 404;
    connect(&m_server, &QTcpServer::newConnection, this, &ScriptedHttpServer::onNewConnection);
}

ScriptedHttpServer::~ScriptedHttpServer()
{
    for (auto it = m_connections.begin(); it != m_connections.end(); ++it) {
        it.key()->disconnect(this);
        delete it.key();
        delete it.value();
    }
}

bool ScriptedHttpServer::listen()
{
    return m_server.listen(QHostAddress::LocalHost, 0);
}

quint16 ScriptedHttpServer::port() const
{
    return m_server.serverPort();
}

QString ScriptedHttpServer::baseUrl() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(port());
}

void ScriptedHttpServer::enqueue(const ScriptedResponse &response)
{
    m_queue.append(response);
}

void ScriptedHttpServer::route(const QString &path, const ScriptedResponse &response)
{
    m_routes.insert(path, response);
}

void ScriptedHttpServer::setFallback(const ScriptedResponse &response)
{
    m_fallback = response;
}

RecordedRequest ScriptedHttpServer::lastRequest() const
{
    return m_requests.isEmpty() ? RecordedRequest() : m_requests.constLast();
}

bool ScriptedHttpServer::waitForRequests(int count, int timeoutMs)
{
    return QTest::qWaitFor([&] { return requestCount() >= count; }, timeoutMs);
}

int ScriptedHttpServer::openConnections() const
{
    return int(m_connections.size());
}

void ScriptedHttpServer::onNewConnection()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        m_connections.insert(socket, new Connection);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket] { processBuffer(socket); });
        connect(socket, &QTcpSocket::disconnected, this, [this, socket] {
            delete m_connections.take(socket);
            socket->deleteLater();
        });
    }
}

void ScriptedHttpServer::processBuffer(QTcpSocket *socket)
{
    Connection *connection = m_connections.value(socket);
    if (!connection)
        return;
    connection->buffer += socket->readAll();
    while (!connection->busy) {
        const qsizetype headEnd = connection->buffer.indexOf("\r\n\r\n");
        if (headEnd < 0)
            return;
        const QList<QByteArray> lines = connection->buffer.left(headEnd).split('\n');
        RecordedRequest request;
        const QList<QByteArray> requestLine = lines.value(0).trimmed().split(' ');
        request.method = requestLine.value(0);
        request.target = requestLine.value(1);
        for (qsizetype i = 1; i < lines.size(); ++i) {
            const qsizetype colon = lines[i].indexOf(':');
            if (colon > 0)
                request.headers.append(
                        {lines[i].left(colon).trimmed(), lines[i].mid(colon + 1).trimmed()});
        }
        const qsizetype length = request.header("Content-Length").toLongLong();
        if (connection->buffer.size() < headEnd + 4 + length)
            return; // wait for the rest of the body
        request.body = connection->buffer.mid(headEnd + 4, length);
        connection->buffer.remove(0, headEnd + 4 + length);

        const QUrl url(QString::fromLatin1("http://host" + request.target));
        request.path = url.path();
        request.query = QUrlQuery(url);
        m_requests.append(request);
        emit requestReceived(request);

        const ScriptedResponse response = nextResponse(request);
        if (response.mode == ScriptedResponse::Mode::Hang) {
            connection->busy = true;
            return;
        }
        if (response.delayMs > 0) {
            connection->busy = true;
            QTimer::singleShot(response.delayMs, socket, [this, socket, response] {
                if (Connection *c = m_connections.value(socket)) {
                    c->busy = false;
                    answer(socket, response);
                    processBuffer(socket);
                }
            });
            return;
        }
        answer(socket, response);
        // A close in the middle of the body may already have dropped the connection.
        connection = m_connections.value(socket);
        if (!connection)
            return;
    }
}

ScriptedResponse ScriptedHttpServer::nextResponse(const RecordedRequest &request)
{
    if (!m_queue.isEmpty())
        return m_queue.takeFirst();
    return m_routes.value(request.path, m_fallback);
}

void ScriptedHttpServer::answer(QTcpSocket *socket, const ScriptedResponse &response)
{
    QByteArray head = response.statusLine.isEmpty()
                              ? "HTTP/1.1 " + QByteArray::number(response.status) + ' '
                                        + reasonPhrase(response.status)
                              : response.statusLine;
    head += "\r\n";
    for (const auto &[name, value] : response.headers)
        head += name + ": " + value + "\r\n";
    if (response.addContentLength && !containsHeader(response.headers, "Content-Length"))
        head += "Content-Length: " + QByteArray::number(response.body.size()) + "\r\n";
    head += "\r\n";
    socket->write(head);
    if (response.mode == ScriptedResponse::Mode::CloseMidBody) {
        socket->write(response.body.left(response.body.size() / 2));
        socket->flush();
        socket->disconnectFromHost();
        return;
    }
    socket->write(response.body);
}

} // namespace tarvel::test
