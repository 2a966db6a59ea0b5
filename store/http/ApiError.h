#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>

#include <exception>

// One rejected form field: shown by the client as `message` followed by `human_name`, so the
// two are phrased to read as one sentence ("请输入正确的" + "手机号").
struct FieldError
{
    QString field;
    QString message;
    QString humanName;
};

// A refusal on its way to the client as an envelope. Handlers throw it; the dispatcher answers
// it, and any transaction it passes through is rolled back, so a refused request changes nothing.
class ApiError : public std::exception
{
public:
    // status "error" with a Chinese "message"
    static ApiError error(int httpStatus, const QString &message);
    // status "fail": "data" maps each field to [{"message", "human_name"}]
    static ApiError fail(const QList<FieldError> &errors);
    static ApiError fail(const QString &field, const QString &message, const QString &humanName);

    static ApiError notSignedIn();
    static ApiError badToken();
    static ApiError gameNotFound();
    static ApiError orderNotFound();

    // Adds a top-level key next to status, data and message (the lock answer's "code").
    ApiError &with(const QString &key, const QJsonValue &value);

    int httpStatus() const { return m_httpStatus; }
    QJsonObject envelope() const { return m_envelope; }
    const char *what() const noexcept override { return "request refused"; }

private:
    ApiError(int httpStatus, QJsonObject envelope);

    int m_httpStatus;
    QJsonObject m_envelope;
};

// Collects every problem of a form before answering, so the user sees all of them at once.
class FieldErrors
{
public:
    void add(const QString &field, const QString &message, const QString &humanName);
    bool has(const QString &field) const;
    bool isEmpty() const { return m_errors.isEmpty(); }
    void raiseIfAny() const; // throws ApiError::fail

private:
    QList<FieldError> m_errors;
};
