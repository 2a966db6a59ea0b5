#include "http/ApiError.h"

#include <QJsonArray>

ApiError::ApiError(int httpStatus, QJsonObject envelope)
    : m_httpStatus(httpStatus)
    , m_envelope(std::move(envelope))
{ }

ApiError ApiError::error(int httpStatus, const QString &message)
{
    return ApiError(httpStatus, QJsonObject{{QStringLiteral("status"), QStringLiteral("error")},
                                            {QStringLiteral("data"), QJsonValue::Null},
                                            {QStringLiteral("message"), message}});
}

ApiError ApiError::fail(const QList<FieldError> &errors)
{
    QJsonObject data;
    QString summary;
    for (const FieldError &error : errors) {
        QJsonArray messages = data.value(error.field).toArray();
        messages.append(QJsonObject{{QStringLiteral("message"), error.message},
                                    {QStringLiteral("human_name"), error.humanName}});
        data.insert(error.field, messages);
        if (summary.isEmpty())
            summary = error.message + error.humanName;
    }
    return ApiError(422, QJsonObject{{QStringLiteral("status"), QStringLiteral("fail")},
                                     {QStringLiteral("data"), data},
                                     {QStringLiteral("message"), summary}});
}

ApiError ApiError::fail(const QString &field, const QString &message, const QString &humanName)
{
    return fail(QList<FieldError>{{field, message, humanName}});
}

ApiError ApiError::notSignedIn()
{
    return error(401, QStringLiteral("请先登录"));
}

ApiError ApiError::badToken()
{
    return error(403, QStringLiteral("登录状态已失效，请重新登录"));
}

ApiError ApiError::gameNotFound()
{
    return error(404, QStringLiteral("RecordNotFound: 游戏不存在"));
}

ApiError ApiError::orderNotFound()
{
    return error(404, QStringLiteral("RecordNotFound: 订单不存在"));
}

ApiError &ApiError::with(const QString &key, const QJsonValue &value)
{
    m_envelope.insert(key, value);
    return *this;
}

void FieldErrors::add(const QString &field, const QString &message, const QString &humanName)
{
    m_errors.append({field, message, humanName});
}

bool FieldErrors::has(const QString &field) const
{
    for (const FieldError &error : m_errors) {
        if (error.field == field)
            return true;
    }
    return false;
}

void FieldErrors::raiseIfAny() const
{
    if (!m_errors.isEmpty())
        throw ApiError::fail(m_errors);
}
