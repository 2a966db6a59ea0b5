#pragma once

#include "accounts/Sessions.h"
#include "http/Router.h"

#include <QJsonObject>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <optional>
#include <string>

class QNetworkCookie;
class StoreContext;

namespace httplib {
struct Request;
struct Response;
} // namespace httplib

// One request being answered: its fields, its session and the ways to answer it.
class Exchange
{
public:
    Exchange(StoreContext &store, const httplib::Request &request, httplib::Response &response,
             Router::Params params);

    StoreContext &store() { return m_store; }
    const httplib::Request &request() const { return m_request; }
    httplib::Response &response() { return m_response; }
    qint64 now() const;
    // Where this service is reached from the client's side, no trailing slash.
    QString baseUrl() const;
    // The base of links in mails: the configured public address, else the address the request
    // arrived at; never the request's Host header, which the sender chooses.
    QString mailBaseUrl() const;

    QString routeParam(const std::string &name) const;
    // A route parameter that must be a positive id; -1 otherwise.
    qint64 routeId(const std::string &name) const;

    // Query or form fields. An absent field is a null string.
    bool hasField(const std::string &name) const;
    QString field(const std::string &name) const;
    // Every value sent as `name` or `name[]`, each split at commas.
    QStringList fieldList(const std::string &name) const;

    // The request's session, if its cookie names a live one.
    const Session *session();
    // The session, made (anonymous) when there is none; the cookie goes with the answer.
    const Session &ensureSession();
    const Session &requireSignedIn(); // throws ApiError (401)
    const Session &requireToken(); // also checks "authenticity_token"; throws ApiError (403)
    // Replaces the session by a new one for the account (a new id, against session fixation);
    // returns the new authenticity token.
    QString renewSession(qint64 accountId);
    // Commits the captcha check on its own, so wrong answers count even when the request fails.
    // `subject` is the number or address the answer is given for (see Sessions::checkCaptcha).
    Sessions::CaptchaCheck checkCaptcha(const QString &answer, const QString &subject);

    void success(const QJsonValue &data = QJsonValue::Null);
    void sendEnvelope(int status, const QJsonObject &envelope);
    void sendJson(int status, const QJsonObject &object); // without envelope (outside parties)
    void sendBody(int status, const QByteArray &body, const char *contentType);
    void setCookie(const QNetworkCookie &cookie);
    // The "cart_num" cookie with the account's current number of cart lines.
    void refreshCartCookie(qint64 accountId);

private:
    QByteArray requestCookie(const QByteArray &name) const;
    bool queryHas(const QString &name) const;

    StoreContext &m_store;
    const httplib::Request &m_request;
    httplib::Response &m_response;
    Router::Params m_params;
    bool m_sessionLoaded = false;
    std::optional<Session> m_session;
};
