// Arbitrary bytes as a store answer and as an upload answer: the parsers must never crash.
#include "service/NetWorkHelper.h"

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), qsizetype(size));
    const SuccessFn success = [](const QVariant &, const QVariant &) {};
    const FailureFn failure = [](const QVariant &, const QString &, const QVariant &) {};
    NetWorkHelper::parseResponse(bytes, success, failure);
    NetWorkHelper::parseQiNiuResponse(bytes, success, failure);
    return 0;
}
