#include "StoreContext.h"
#include "handlers/Handlers.h"
#include "http/ApiError.h"
#include "http/Exchange.h"
#include "sandbox/PushChannel.h"

#include <algorithm>
#include <chrono>

// The push channel's endpoints under /sandbox/push/.
namespace {

void requireRegistered(Exchange &exchange, const QString &clientId)
{
    const bool known = exchange.store().database().read(
            [&](SQLite::Database &db) { return PushChannel::isRegistered(db, clientId); });
    if (!known)
        throw ApiError::error(404, QStringLiteral("RecordNotFound: 未注册的推送客户端"));
}

// POST /sandbox/push/register: device_token -> client_id, and whether the token was known
void registerDevice(Exchange &exchange)
{
    const QString deviceToken = exchange.field("device_token").trimmed();
    if (deviceToken.isEmpty() || deviceToken.size() > 256)
        throw ApiError::fail(QStringLiteral("device_token"), QStringLiteral("请提供有效的"),
                             QStringLiteral("设备令牌"));
    bool continued = false;
    const QString clientId = exchange.store().database().write([&](SQLite::Database &db) {
        return PushChannel::registerDevice(db, deviceToken, exchange.now(), &continued);
    });
    exchange.success(QJsonObject{{QStringLiteral("client_id"), clientId},
                                 {QStringLiteral("continued"), continued}});
}

constexpr int MaxWaitSeconds = 25;
constexpr int PollLimit = 50;

QJsonArray messagesFor(Exchange &exchange, const QString &clientId, qint64 after)
{
    return exchange.store().database().read([&](SQLite::Database &db) {
        return PushChannel::poll(db, clientId, after, PollLimit);
    });
}

// GET /sandbox/push/poll?client_id=&after=[&wait=seconds]: with `wait` (at most 25) the request is
// held until a message for this client arrives or the time is up; without it the answer is
// immediate.
void poll(Exchange &exchange)
{
    const QString clientId = exchange.field("client_id").trimmed();
    requireRegistered(exchange, clientId);
    const qint64 after = exchange.field("after").toLongLong();
    const int wait = std::clamp(exchange.field("wait").toInt(), 0, MaxWaitSeconds);
    const PushBell::Clock::time_point deadline
            = PushBell::Clock::now() + std::chrono::seconds(wait);
    // The mark is read before the messages, so one sent in between is never slept through.
    qint64 seen = exchange.store().database().read(PushChannel::newestMessageId);
    QJsonArray messages = messagesFor(exchange, clientId, after);
    while (messages.isEmpty() && wait > 0) {
        const std::optional<qint64> newer = exchange.store().pushBell().waitPast(seen, deadline);
        if (!newer)
            break;
        seen = *newer;
        messages = messagesFor(exchange, clientId, after);
    }
    exchange.success(messages);
}

// GET /sandbox/push/payload/<id>?client_id=: the payload itself, as the device receives it; only
// the device it was sent to gets it.
void payload(Exchange &exchange)
{
    const QString clientId = exchange.field("client_id").trimmed();
    const auto found = exchange.store().database().read([&](SQLite::Database &db) {
        return PushChannel::payload(db, exchange.routeId("id"), clientId);
    });
    if (!found)
        throw ApiError::error(404, QStringLiteral("RecordNotFound: 推送消息不存在"));
    exchange.sendJson(200, *found);
}

} // namespace

void SandboxHandlers::installPush(Router &router)
{
    router.add("POST", "/sandbox/push/register", registerDevice);
    router.add("GET", "/sandbox/push/poll", poll);
    router.add("GET", "/sandbox/push/payload/:id", payload);
}
