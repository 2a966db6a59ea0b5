#pragma once

#include <QString>
#include <QVariant>
#include <QVariantMap>

#include <functional>

// The tail of every NetWorkHelper operation. An empty std::function means "not given".
// StartFn: the parameters about to be sent, called before the request goes out.
using StartFn = std::function<void(const QVariantMap &params)>;
// The catalogue's list, detail and search operations hand StartFn the very dictionary that is
// sent: what it adds or changes there goes out with the request.
using MutableStartFn = std::function<void(QVariantMap &params)>;
// EndFn: the raw answer (a QByteArray), or an invalid QVariant when no answer came at all.
using EndFn = std::function<void(const QVariant &body)>;
// SuccessFn: the envelope's "data" and the whole envelope.
using SuccessFn = std::function<void(const QVariant &data, const QVariant &whole)>;
// FailureFn: the transport error (QVariantMap{code, description}) or invalid, the text for the
// user, and the envelope or invalid.
using FailureFn = std::function<void(const QVariant &error, const QString &message,
                                     const QVariant &response)>;
