#include "service/NetWorkHelper.h"

#include "platform/HTTPCookieStorage.h"
#include "platform/SandboxPaths.h"
#include "service/ApplicationState.h"
#include "util/AppConfig.h"
#include "util/ObjectDescription.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QHttpMultiPart>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

namespace {

const QString UnreadableAnswerText = QStringLiteral("网络通信错误，数据异常");
const QString UploadFailedText = QStringLiteral("上传失败");
const QString UploadNetworkErrorText = QStringLiteral("网络错误，请检查网络情况");

// What came back for one request.
struct Answer
{
    bool succeeded = false; // no transport error and a 2xx status
    QVariant body; // the bytes, or invalid when nothing answered at all
    QVariant error; // QVariantMap{code, description} when not succeeded
};

Answer answerOf(QNetworkReply *reply)
{
    Answer answer;
    const QVariant status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
    // An aborted reply (time-out) is closed and has nothing left to read.
    const QByteArray bytes = reply->isOpen() ? reply->readAll() : QByteArray();
    if (status.isValid() || !bytes.isEmpty())
        answer.body = bytes;
    const int code = status.toInt();
    answer.succeeded = reply->error() == QNetworkReply::NoError && code >= 200 && code < 300;
    if (!answer.succeeded) {
        const bool transportFailed = reply->error() != QNetworkReply::NoError;
        answer.error = QVariantMap{
                {QStringLiteral("code"), transportFailed ? int(reply->error()) : code},
                {QStringLiteral("description"),
                 transportFailed ? reply->errorString() : QStringLiteral("HTTP %1").arg(code)}};
    }
    return answer;
}

// The decoded JSON of an answer; invalid for no body or anything that is not JSON (including
// documents nested deeper than the parser allows).
QVariant decodeJson(const QVariant &responseObject)
{
    if (!responseObject.isValid())
        return {};
    const QJsonDocument document = QJsonDocument::fromJson(responseObject.toByteArray());
    return document.isNull() ? QVariant() : document.toVariant();
}

bool isText(const QVariant &value, const QString &text)
{
    return value.typeId() == QMetaType::QString && value.toString() == text;
}

// A value shown as a message: text as it is, absent or null as no text, anything else as "%@".
QString messageText(const QVariant &value)
{
    if (!value.isValid() || value.isNull())
        return {};
    if (value.typeId() == QMetaType::QString)
        return value.toString();
    return objectDescription(value);
}

// The first message of a validation answer: the first value of "data" (in the dictionary's own
// order); of a list its first element, otherwise the value formatted with "%@".
QString firstValidationMessage(const QVariantMap &data)
{
    const QVariant first = data.first();
    if (first.typeId() == QMetaType::QVariantList)
        return messageText(first.toList().value(0));
    return objectDescription(first);
}

bool reachedStore(QNetworkReply *reply)
{
    return reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).isValid();
}

// Nothing answered because the store could not be reached (refused, unreachable, timed out, the
// connection dropped): the cases a kept answer stands in for. An HTTP error is the store's answer.
bool storeUnreachable(QNetworkReply *reply)
{
    const QNetworkReply::NetworkError error = reply->error();
    return !reachedStore(reply) && error != QNetworkReply::NoError
           && error < QNetworkReply::ContentAccessDenied;
}

QString keptAnswersDirectory()
{
    const QString caches = platform::SandboxPaths::caches();
    return caches.isEmpty() ? QString() : QDir(caches).filePath(QStringLiteral("answers"));
}

QString keyOf(const QNetworkRequest &request)
{
    return QStringLiteral("GET ") + request.url().toString(QUrl::FullyEncoded);
}

// Keeps a successful answer, or puts the kept one in place of no answer from an unreachable
// store. True when the answer now comes from the cache.
bool keepOrRecall(QNetworkReply *reply, Answer &answer, AnswerCache &cache)
{
    const QString key = keyOf(reply->request());
    if (answer.succeeded) {
        cache.store(key, answer.body.toByteArray());
        return false;
    }
    if (!storeUnreachable(reply))
        return false;
    const std::optional<QByteArray> kept = cache.lookup(key);
    if (!kept)
        return false;
    answer = Answer{true, *kept, QVariant()};
    return true;
}

} // namespace

NetWorkHelper *NetWorkHelper::shareInstance()
{
    static NetWorkHelper *const instance = new NetWorkHelper;
    return instance;
}

NetWorkHelper::NetWorkHelper()
    : QObject(QCoreApplication::instance())
    , m_networkManager(new QNetworkAccessManager(this))
    , m_answerCache(std::make_unique<AnswerCache>(keptAnswersDirectory()))
    , m_offlineState(new OfflineState(this))
    , m_clock([] { return QDateTime::currentMSecsSinceEpoch() / 1000.0; })
{
    platform::HTTPCookieStorage::attachTo(m_networkManager);
    m_networkManager->setTransferTimeout(DefaultTimeoutMs);
    m_offlineState->setProbe([this](std::function<void(bool)> done) { probeStore(done); });
}

void NetWorkHelper::probeStore(std::function<void(bool reached)> done)
{
    QNetworkRequest request{QUrl(apiUrl(QStringLiteral("/store.json")))};
    request.setTransferTimeout(ProbeTimeoutMs);
    QNetworkReply *reply = m_networkManager->get(request);
    connect(reply, &QNetworkReply::finished, this, [reply, done = std::move(done)] {
        reply->deleteLater();
        done(reachedStore(reply));
    });
}

void NetWorkHelper::setClock(std::function<double()> secondsSince1970)
{
    m_clock = std::move(secondsSince1970);
}

void NetWorkHelper::appendToken(RequestParams &params, TokenRule rule)
{
    const std::optional<Object_User> user = ApplicationState::shared().userLogin();
    if (!user)
        return;
    if (rule == TokenRule::IfSet && user->token.isEmpty())
        return;
    params.insert(QStringLiteral("authenticity_token"), user->token);
}

QNetworkReply *NetWorkHelper::send(Verb verb, const QString &url, const RequestParams &params)
{
    if (verb == Verb::Get) {
        QUrl address(url);
        if (!params.isEmpty()) {
            const QString query = QString::fromLatin1(params.toPercentEncoded());
            address.setQuery(address.hasQuery()
                                     ? address.query(QUrl::FullyEncoded) + QLatin1Char('&') + query
                                     : query,
                             QUrl::StrictMode);
        }
        return m_networkManager->get(QNetworkRequest(address));
    }
    QNetworkRequest request{QUrl(url)};
    request.setHeader(QNetworkRequest::ContentTypeHeader,
                      QByteArrayLiteral("application/x-www-form-urlencoded"));
    const QByteArray body = params.toPercentEncoded();
    return verb == Verb::Post ? m_networkManager->post(request, body)
                              : m_networkManager->put(request, body);
}

QNetworkReply *NetWorkHelper::sendMultipart(const QString &url, const RequestParams &params,
                                            const QList<Object_UpFile> &arrayFile)
{
    auto *multipart = new QHttpMultiPart(QHttpMultiPart::FormDataType);
    for (const auto &[key, value] : params.pairs()) {
        QHttpPart field;
        field.setHeader(QNetworkRequest::ContentDispositionHeader,
                        QStringLiteral("form-data; name=\"%1\"").arg(key));
        field.setBody(value.toUtf8());
        multipart->append(field);
    }
    for (const Object_UpFile &file : arrayFile) {
        QHttpPart part;
        part.setHeader(QNetworkRequest::ContentDispositionHeader,
                       QStringLiteral("form-data; name=\"%1\"; filename=\"%2\"")
                               .arg(file.uploadName, file.fileName));
        part.setHeader(QNetworkRequest::ContentTypeHeader, file.mimeType);
        part.setBody(file.uploadFile);
        multipart->append(part);
    }
    QNetworkReply *reply = m_networkManager->post(QNetworkRequest{QUrl(url)}, multipart);
    multipart->setParent(reply);
    return reply;
}

void NetWorkHelper::whenFinished(QNetworkReply *reply, Completion completion, Keep keep)
{
    connect(reply, &QNetworkReply::finished, this,
            [this, reply, keep, completion = std::move(completion)] {
                reply->deleteLater();
                Answer answer = answerOf(reply);
                if (keep == Keep::Yes && keepOrRecall(reply, answer, *m_answerCache))
                    m_offlineState->noteAnsweredFromCache();
                completion(answer.succeeded, answer.body, answer.error);
                // After the callbacks, so that what the network's return sets off comes last.
                if (reachedStore(reply))
                    m_offlineState->noteStoreReached();
            });
}

QString NetWorkHelper::apiUrl(const QString &path)
{
    return ApiBaseUrl() + path;
}

void NetWorkHelper::sendForEnvelope(Verb verb, const RequestParams &params, const QString &url,
                                    const EndFn &endFn, const SuccessFn &successFn,
                                    const FailureFn &failureFn, Keep keep)
{
    // Error statuses are judged by their envelope like any other answer; a failure without a body
    // ends in the parser's unreadable-answer branch.
    whenFinished(
            send(verb, url, params),
            [endFn, successFn, failureFn](bool, const QVariant &body, const QVariant &) {
                if (endFn)
                    endFn(body);
                parseResponse(body, successFn, failureFn);
            },
            keep);
}

void NetWorkHelper::responseWithParams(const RequestParams &params, const QString &url,
                                       const QList<Object_UpFile> &arrayFile,
                                       const StartFn &startFn, const EndFn &endFn,
                                       const SuccessFn &successFn, const FailureFn &failureFn)
{
    if (startFn)
        startFn(params.toVariantMap());
    if (arrayFile.isEmpty()) {
        sendForEnvelope(Verb::Post, params, url, endFn, successFn, failureFn);
        return;
    }
    // A failed upload is reported twice: the upload parser's own text first, then the network
    // text, which is the one left on the screen.
    whenFinished(sendMultipart(url, params, arrayFile),
                 [endFn, successFn, failureFn](bool succeeded, const QVariant &body,
                                               const QVariant &error) {
                     if (endFn)
                         endFn(body);
                     parseQiNiuResponse(body, successFn, failureFn);
                     if (!succeeded && failureFn)
                         failureFn(error, UploadNetworkErrorText, body);
                 });
}

void NetWorkHelper::getWithParams(const RequestParams &params, const QString &url,
                                  const StartFn &startFn, const EndFn &endFn,
                                  const SuccessFn &successFn, const FailureFn &failureFn)
{
    if (startFn)
        startFn(params.toVariantMap());
    sendForEnvelope(Verb::Get, params, url, endFn, successFn, failureFn);
}

void NetWorkHelper::putWithParams(const RequestParams &params, const QString &url,
                                  const StartFn &startFn, const EndFn &endFn,
                                  const SuccessFn &successFn, const FailureFn &failureFn)
{
    if (startFn)
        startFn(params.toVariantMap());
    sendForEnvelope(Verb::Put, params, url, endFn, successFn, failureFn);
}

QVariant NetWorkHelper::parseResponse(const QVariant &responseObject, const SuccessFn &successFn,
                                      const FailureFn &failureFn)
{
    const QVariant decoded = decodeJson(responseObject);
    if (decoded.typeId() != QMetaType::QVariantMap
        || !decoded.toMap().contains(QStringLiteral("status"))) {
        if (failureFn)
            failureFn(QVariant(), UnreadableAnswerText, QVariant());
        return {};
    }
    const QVariantMap envelope = decoded.toMap();
    const QVariant status = envelope.value(QStringLiteral("status"));
    if (isText(status, QStringLiteral("success"))) {
        if (successFn)
            successFn(envelope.value(QStringLiteral("data")), envelope);
        return envelope;
    }
    if (failureFn) {
        if (isText(status, QStringLiteral("fail"))) {
            // A validation answer names its first message; without a dictionary of messages
            // there is nothing to show and the failure stays silent.
            const QVariant data = envelope.value(QStringLiteral("data"));
            if (data.typeId() == QMetaType::QVariantMap && !data.toMap().isEmpty())
                failureFn(QVariant(), firstValidationMessage(data.toMap()), envelope);
        } else {
            failureFn(QVariant(), messageText(envelope.value(QStringLiteral("message"))), envelope);
        }
    }
    return QVariantMap();
}

QVariant NetWorkHelper::parseQiNiuResponse(const QVariant &responseObject,
                                           const SuccessFn &successFn, const FailureFn &failureFn)
{
    const QVariant decoded = decodeJson(responseObject);
    // A "dest_url" that is there counts even when it is JSON null: intended, only a missing one
    // is a failed upload.
    if (decoded.typeId() == QMetaType::QVariantMap
        && decoded.toMap().contains(QStringLiteral("dest_url"))) {
        if (successFn)
            successFn(decoded, decoded);
        return decoded;
    }
    if (failureFn)
        failureFn(QVariant(), UploadFailedText, decoded);
    return QVariantMap();
}

QString NetWorkHelper::encodingString(const QString &string)
{
    // Everything outside the unreserved set is escaped except the characters with a meaning in
    // a URL, so an address stays an address.
    return QString::fromLatin1(
            QUrl::toPercentEncoding(string, QByteArrayLiteral("!#$&'()*+,/:;=?@")));
}
