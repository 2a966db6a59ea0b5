#include "http/RequestLog.h"

#include "core/TimeText.h"

#include <httplib.h>

#include <QDateTime>

#include <chrono>
#include <mutex>

namespace RequestLog {

namespace {
thread_local std::chrono::steady_clock::time_point started;
thread_local bool timing = false;
std::mutex output;

// Formatting a time is slow next to the rest of a line; each thread keeps its current second.
const QByteArray &stampOfNow()
{
    thread_local qint64 second = -1;
    thread_local QByteArray stamp;
    const qint64 now = QDateTime::currentSecsSinceEpoch();
    if (now != second) {
        second = now;
        stamp = TimeText::logStamp(now).toLatin1();
    }
    return stamp;
}
} // namespace

std::string redacted(const std::string &target)
{
    const size_t mark = target.find('?');
    if (mark == std::string::npos)
        return target;
    QList<QByteArray> pairs = QByteArray::fromStdString(target.substr(mark + 1)).split('&');
    for (QByteArray &pair : pairs) {
        const qsizetype equals = pair.indexOf('=');
        const QByteArray key = equals < 0 ? pair : pair.left(equals);
        if (QByteArray::fromPercentEncoding(key).toLower().endsWith("token"))
            pair = key + "=[hidden]";
    }
    return target.substr(0, mark + 1) + pairs.join('&').toStdString();
}

void begin()
{
    started = std::chrono::steady_clock::now();
    timing = true;
}

void write(std::FILE *out, const httplib::Request &request, const httplib::Response &response)
{
    if (!out)
        return;
    char duration[32] = "-";
    if (timing) {
        const auto elapsed = std::chrono::steady_clock::now() - started;
        std::snprintf(duration, sizeof duration, "%.1fms",
                      std::chrono::duration<double, std::milli>(elapsed).count());
        timing = false;
    }
    const std::string target = redacted(request.target.empty() ? request.path : request.target);
    const QByteArray &stamp = stampOfNow();
    std::lock_guard lock(output);
    std::fprintf(out, "%s %s \"%s %.300s\" %d %zuB %s\n", stamp.constData(),
                 request.remote_addr.c_str(), request.method.c_str(), target.c_str(),
                 response.status, response.body.size(), duration);
    std::fflush(out);
}

} // namespace RequestLog
