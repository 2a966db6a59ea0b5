#include "http/Exchange.h"

#include "StoreContext.h"
#include "core/Crypto.h"
#include "http/ApiError.h"
#include "shop/Cart.h"

#include <httplib.h>

#include <algorithm>
#include <cctype>

#include <QDateTime>
#include <QJsonDocument>
#include <QNetworkCookie>
#include <QUrlQuery>

namespace {

QNetworkCookie sessionCookie(const QByteArray &value, qint64 lifetimeSeconds)
{
    QNetworkCookie cookie(Sessions::kCookieName, value);
    cookie.setPath(QStringLiteral("/"));
    cookie.setHttpOnly(true);
    // Strict: a link from another site carries no session (the app is not a browser).
    cookie.setSameSitePolicy(QNetworkCookie::SameSite::Strict);
    cookie.setExpirationDate(QDateTime::currentDateTimeUtc().addSecs(lifetimeSeconds));
    return cookie;
}

// A Host header that can go into links as it is: letters, digits, dots, dashes, colons, brackets.
bool isPlainHost(const std::string &host)
{
    if (host.empty() || host.size() > 255)
        return false;
    return std::all_of(host.begin(), host.end(), [](char c) {
        return std::isalnum(static_cast<unsigned char>(c)) || c == '.' || c == '-' || c == ':'
               || c == '[' || c == ']';
    });
}

} // namespace

Exchange::Exchange(StoreContext &store, const httplib::Request &request,
                   httplib::Response &response, Router::Params params)
    : m_store(store)
    , m_request(request)
    , m_response(response)
    , m_params(std::move(params))
{ }

qint64 Exchange::now() const
{
    return m_store.now();
}

QString Exchange::baseUrl() const
{
    if (!m_store.options().publicBaseUrl.isEmpty())
        return m_store.options().publicBaseUrl;
    const std::string host = m_request.get_header_value("Host");
    if (isPlainHost(host))
        return QStringLiteral("http://") + QString::fromStdString(host);
    return mailBaseUrl();
}

QString Exchange::mailBaseUrl() const
{
    if (!m_store.options().publicBaseUrl.isEmpty())
        return m_store.options().publicBaseUrl;
    const QString address = QString::fromStdString(m_request.local_addr);
    return QStringLiteral("http://%1:%2")
            .arg(address.contains(QLatin1Char(':')) ? QLatin1Char('[') + address + QLatin1Char(']')
                                                    : address)
            .arg(m_request.local_port);
}

QString Exchange::routeParam(const std::string &name) const
{
    for (const auto &[key, value] : m_params) {
        if (key == name)
            return QString::fromStdString(value);
    }
    return {};
}

qint64 Exchange::routeId(const std::string &name) const
{
    bool ok = false;
    const QString text = routeParam(name);
    const qint64 id = text.toLongLong(&ok);
    return ok && id > 0 && text.at(0).isDigit() ? id : -1;
}

bool Exchange::hasField(const std::string &name) const
{
    return m_request.has_param(name)
           || (m_request.has_file(name) && m_request.get_file_value(name).filename.empty());
}

QString Exchange::field(const std::string &name) const
{
    std::string value;
    if (m_request.has_param(name))
        value = m_request.get_param_value(name);
    else if (m_request.has_file(name) && m_request.get_file_value(name).filename.empty())
        value = m_request.get_file_value(name).content; // a plain field of a multipart form
    else
        return {};
    // Nothing the client sends is longer; a longer value is cut rather than stored whole.
    return QString::fromUtf8(value).left(4096);
}

QStringList Exchange::fieldList(const std::string &name) const
{
    // "name=1&name=2", "name[]=1&name[]=2", "name[0]=1&name[1]=2" and "name=1,2" all give 1 and 2.
    QStringList values;
    for (const auto &[key, value] : m_request.params) {
        const bool matches
                = key == name
                  || (key.size() > name.size() + 1 && key.compare(0, name.size(), name) == 0
                      && key[name.size()] == '[' && key.back() == ']');
        if (!matches)
            continue;
        for (const QString &piece : QString::fromUtf8(value).split(QLatin1Char(','))) {
            const QString trimmed = piece.trimmed();
            if (!trimmed.isEmpty())
                values.append(trimmed);
        }
    }
    return values;
}

QByteArray Exchange::requestCookie(const QByteArray &name) const
{
    const size_t count = m_request.get_header_value_count("Cookie");
    for (size_t i = 0; i < count; ++i) {
        const QByteArray header
                = QByteArray::fromStdString(m_request.get_header_value("Cookie", i));
        for (const QByteArray &pair : header.split(';')) {
            for (const QNetworkCookie &cookie : QNetworkCookie::parseCookies(pair.trimmed())) {
                if (cookie.name() == name)
                    return cookie.value();
            }
        }
    }
    return {};
}

const Session *Exchange::session()
{
    if (!m_sessionLoaded) {
        m_sessionLoaded = true;
        const QByteArray value = requestCookie(Sessions::kCookieName);
        if (!value.isEmpty()) {
            m_session = m_store.database().read(
                    [&](SQLite::Database &db) { return Sessions::find(db, value, now()); });
        }
    }
    return m_session ? &*m_session : nullptr;
}

const Session &Exchange::ensureSession()
{
    if (const Session *existing = session())
        return *existing;
    const QByteArray id = m_store.database().write(
            [&](SQLite::Database &db) { return Sessions::create(db, 0, now()); });
    setCookie(sessionCookie(id, Sessions::kAnonymousLifetimeSeconds));
    m_session = m_store.database().read(
            [&](SQLite::Database &db) { return Sessions::find(db, id, now()); });
    if (!m_session)
        throw std::runtime_error("a new session could not be read back");
    return *m_session;
}

const Session &Exchange::requireSignedIn()
{
    const Session *current = session();
    if (!current || !current->signedIn())
        throw ApiError::notSignedIn();
    return *current;
}

const Session &Exchange::requireToken()
{
    const Session &current = requireSignedIn();
    // Only a body carries the token: addresses end up in logs, histories and Referer headers.
    if (queryHas(QStringLiteral("authenticity_token")))
        throw ApiError::badToken();
    const QByteArray sent = field("authenticity_token").toUtf8();
    if (sent.isEmpty() || !Crypto::equalConstantTime(sent, current.token.toUtf8()))
        throw ApiError::badToken();
    return current;
}

QString Exchange::renewSession(qint64 accountId)
{
    QString token;
    const Session *previous = session();
    const QByteArray previousHash = previous ? previous->idHash : QByteArray();
    const QByteArray id = m_store.database().write([&](SQLite::Database &db) {
        if (!previousHash.isEmpty())
            Sessions::remove(db, previousHash);
        return Sessions::create(db, accountId, now(), &token);
    });
    setCookie(sessionCookie(id, Sessions::kLifetimeSeconds));
    m_session = m_store.database().read(
            [&](SQLite::Database &db) { return Sessions::find(db, id, now()); });
    return token;
}

bool Exchange::queryHas(const QString &name) const
{
    const size_t mark = m_request.target.find('?');
    if (mark == std::string::npos)
        return false;
    const QUrlQuery query(QString::fromStdString(m_request.target.substr(mark + 1)));
    for (const auto &[key, value] : query.queryItems(QUrl::FullyDecoded)) {
        if (key == name)
            return true;
    }
    return false;
}

Sessions::CaptchaCheck Exchange::checkCaptcha(const QString &answer, const QString &subject)
{
    const Session *current = session();
    if (!current)
        return Sessions::CaptchaCheck::Missing;
    const Session snapshot = *current;
    const auto result = m_store.database().write([&](SQLite::Database &db) {
        return Sessions::checkCaptcha(db, snapshot, answer, subject, now());
    });
    m_sessionLoaded = false; // the tries changed
    return result;
}

void Exchange::success(const QJsonValue &data)
{
    sendEnvelope(200, QJsonObject{{QStringLiteral("status"), QStringLiteral("success")},
                                  {QStringLiteral("data"), data},
                                  {QStringLiteral("message"), QStringLiteral("")}});
}

void Exchange::sendEnvelope(int status, const QJsonObject &envelope)
{
    sendJson(status, envelope);
}

void Exchange::sendJson(int status, const QJsonObject &object)
{
    sendBody(status, QJsonDocument(object).toJson(QJsonDocument::Compact),
             "application/json; charset=utf-8");
}

void Exchange::sendBody(int status, const QByteArray &body, const char *contentType)
{
    m_response.status = status;
    m_response.set_content(body.constData(), size_t(body.size()), contentType);
}

void Exchange::setCookie(const QNetworkCookie &cookie)
{
    m_response.set_header("Set-Cookie", cookie.toRawForm().toStdString());
}

void Exchange::refreshCartCookie(qint64 accountId)
{
    const qint64 count = m_store.database().read(
            [&](SQLite::Database &db) { return Cart::count(db, accountId); });
    QNetworkCookie cookie("cart_num", QByteArray::number(count));
    cookie.setPath(QStringLiteral("/"));
    cookie.setSameSitePolicy(QNetworkCookie::SameSite::Lax);
    setCookie(cookie);
}
