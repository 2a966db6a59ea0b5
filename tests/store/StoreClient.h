#pragma once

// A synchronous HTTP client for the store tests: Qt's network stack and cookie jar, as the app
// uses them, with the envelope already decoded.

#include <QEventLoop>
#include <QHttpMultiPart>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkAccessManager>
#include <QNetworkCookie>
#include <QNetworkCookieJar>
#include <QNetworkReply>
#include <QTimer>
#include <QUrl>

#include <utility>

namespace tarvel::test {

using Form = QList<std::pair<QString, QString>>;

struct Answer
{
    int status = 0; // HTTP status, 0 when there was no answer
    QByteArray body;
    QByteArray contentType;
    QList<QByteArray> setCookies; // raw Set-Cookie headers
    QJsonObject json; // the decoded body when it is a JSON object

    QString envelopeStatus() const { return json.value(QStringLiteral("status")).toString(); }
    bool ok() const { return envelopeStatus() == QLatin1String("success"); }
    QJsonValue data() const { return json.value(QStringLiteral("data")); }
    QJsonObject object() const { return data().toObject(); }
    QJsonArray array() const { return data().toArray(); }
    QString message() const { return json.value(QStringLiteral("message")).toString(); }
    // The first message of a "fail" answer's field.
    QString failMessage(const QString &field) const
    {
        const QJsonObject first = object().value(field).toArray().first().toObject();
        return first.value(QStringLiteral("message")).toString()
               + first.value(QStringLiteral("human_name")).toString();
    }
    QByteArray setCookie(const QByteArray &name) const
    {
        for (const QByteArray &raw : setCookies) {
            if (raw.startsWith(name + '='))
                return raw;
        }
        return {};
    }
};

class StoreClient
{
public:
    explicit StoreClient(QString baseUrl)
        : m_baseUrl(std::move(baseUrl))
    { }

    QString baseUrl() const { return m_baseUrl; }
    QString token() const { return m_token; }
    QNetworkCookieJar &cookies() { return *m_manager.cookieJar(); }

    static QByteArray encode(const Form &fields)
    {
        QByteArray encoded;
        for (const auto &[key, value] : fields) {
            if (!encoded.isEmpty())
                encoded += '&';
            encoded += QUrl::toPercentEncoding(key) + '=' + QUrl::toPercentEncoding(value);
        }
        return encoded;
    }

    Answer get(const QString &path, const Form &query = {})
    {
        QString target = m_baseUrl + path;
        if (!query.isEmpty())
            target += QLatin1Char('?') + QString::fromLatin1(encode(query));
        return wait(m_manager.get(request(target)));
    }

    Answer post(const QString &path, const Form &fields)
    {
        QNetworkRequest form = request(m_baseUrl + path);
        form.setHeader(QNetworkRequest::ContentTypeHeader, "application/x-www-form-urlencoded");
        return wait(m_manager.post(form, encode(fields)));
    }

    Answer put(const QString &path, const Form &fields)
    {
        QNetworkRequest form = request(m_baseUrl + path);
        form.setHeader(QNetworkRequest::ContentTypeHeader, "application/x-www-form-urlencoded");
        return wait(m_manager.put(form, encode(fields)));
    }

    Answer send(const QByteArray &verb, const QString &path, const QByteArray &body,
                const QByteArray &contentType)
    {
        QNetworkRequest raw = request(m_baseUrl + path);
        if (!contentType.isEmpty())
            raw.setHeader(QNetworkRequest::ContentTypeHeader, contentType);
        return wait(m_manager.sendCustomRequest(raw, verb, body));
    }

    Answer upload(const QString &path, const Form &fields, const QByteArray &file,
                  const QByteArray &mimeType = "image/jpeg")
    {
        auto *parts = new QHttpMultiPart(QHttpMultiPart::FormDataType);
        for (const auto &[name, value] : fields) {
            QHttpPart part;
            part.setHeader(QNetworkRequest::ContentDispositionHeader,
                           QStringLiteral("form-data; name=\"%1\"").arg(name));
            part.setBody(value.toUtf8());
            parts->append(part);
        }
        QHttpPart filePart;
        filePart.setHeader(QNetworkRequest::ContentDispositionHeader,
                           QStringLiteral("form-data; name=\"file\"; filename=\"jpg\""));
        filePart.setHeader(QNetworkRequest::ContentTypeHeader, mimeType);
        filePart.setBody(file);
        parts->append(filePart);
        QNetworkReply *reply = m_manager.post(request(m_baseUrl + path), parts);
        parts->setParent(reply);
        return wait(reply);
    }

    // Signs in and keeps the token for "authenticity_token".
    Answer signIn(const QString &login, const QString &password)
    {
        Answer answer = post(QStringLiteral("/sign_in.json"),
                             {{QStringLiteral("account[login_name]"), login},
                              {QStringLiteral("account[password]"), password}});
        if (answer.ok())
            m_token = answer.object().value(QStringLiteral("token")).toString();
        return answer;
    }

    // Loads a captcha picture and reads its text from the sandbox.
    QString captcha()
    {
        get(QStringLiteral("/captcha"), {{QStringLiteral("_"), QStringLiteral("1")}});
        return get(QStringLiteral("/sandbox/captcha.json"))
                .object()
                .value(QStringLiteral("captcha"))
                .toString();
    }

    // The newest SMS code or mail link sent to `recipient`.
    QJsonObject lastMessage(const QString &recipient)
    {
        return get(QStringLiteral("/sandbox/outbox.json"), {{QStringLiteral("to"), recipient}})
                .array()
                .first()
                .toObject();
    }
    QString lastCode(const QString &phone)
    {
        return lastMessage(phone).value(QStringLiteral("code")).toString();
    }

    Form withToken(Form fields) const
    {
        fields.prepend({QStringLiteral("authenticity_token"), m_token});
        return fields;
    }

private:
    static QNetworkRequest request(const QString &url)
    {
        QNetworkRequest request{QUrl(url)};
        request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                             QNetworkRequest::ManualRedirectPolicy);
        return request;
    }

    static Answer wait(QNetworkReply *reply)
    {
        QEventLoop loop;
        QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
        QTimer::singleShot(30000, &loop, &QEventLoop::quit);
        if (!reply->isFinished())
            loop.exec();
        Answer answer;
        answer.status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        answer.body = reply->readAll();
        answer.contentType = reply->header(QNetworkRequest::ContentTypeHeader).toByteArray();
        for (const auto &[name, value] : reply->rawHeaderPairs()) {
            if (name.compare("Set-Cookie", Qt::CaseInsensitive) == 0)
                answer.setCookies += value.split('\n');
        }
        answer.json = QJsonDocument::fromJson(answer.body).object();
        reply->deleteLater();
        return answer;
    }

    QString m_baseUrl;
    QNetworkAccessManager m_manager;
    QString m_token;
};

} // namespace tarvel::test
