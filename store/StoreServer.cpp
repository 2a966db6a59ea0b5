#include "StoreServer.h"

#include "StoreContext.h"
#include "handlers/Handlers.h"
#include "http/ApiError.h"
#include "http/Exchange.h"
#include "http/GuardedServer.h"
#include "http/RequestLog.h"

#include <httplib.h>

#include <QHostAddress>
#include <QJsonDocument>

#include <sys/socket.h>

namespace {

bool isUrlEncodedForm(const httplib::Request &request)
{
    return QByteArray::fromStdString(request.get_header_value("Content-Type"))
            .trimmed()
            .toLower()
            .startsWith("application/x-www-form-urlencoded");
}

QString textForStatus(const httplib::Request &request, int status)
{
    switch (status) {
    case 400:
        return QStringLiteral("请求格式错误");
    case 404:
        return QStringLiteral("请求的接口不存在");
    case 405:
        return QStringLiteral("不支持的请求方法");
    case 413:
        return isUrlEncodedForm(request) ? QStringLiteral("表单内容超过%1KB上限")
                                                   .arg(StoreServer::kMaxFormBytes / 1024)
                                         : QStringLiteral("请求内容超过%1MB上限")
                                                   .arg(StoreServer::kMaxBodyBytes / (1024 * 1024));
    case 414:
        return QStringLiteral("请求地址过长");
    case 500:
        return QStringLiteral("服务器内部错误，请稍后再试");
    default:
        return QStringLiteral("请求无法处理");
    }
}

// Answers that the HTTP layer makes itself (malformed requests, bodies over the limit) still
// carry an envelope; the upload sandbox answers in its own shape.
void fillEmptyErrorAnswer(const httplib::Request &request, httplib::Response &response)
{
    if (!response.body.empty())
        return;
    const QString text = textForStatus(request, response.status);
    const QJsonObject body
            = request.path.rfind("/sandbox/qiniu/", 0) == 0
                      ? QJsonObject{{QStringLiteral("error"), text}}
                      : QJsonObject{{QStringLiteral("status"), QStringLiteral("error")},
                                    {QStringLiteral("data"), QJsonValue::Null},
                                    {QStringLiteral("message"), text}};
    response.set_content(QJsonDocument(body).toJson(QJsonDocument::Compact).toStdString(),
                         "application/json; charset=utf-8");
}

std::string effectiveMethod(const httplib::Request &request)
{
    // Forms cannot send DELETE or PUT; they post "_method" instead.
    if (request.method == "POST" && request.has_param("_method")) {
        const QByteArray wanted
                = QByteArray::fromStdString(request.get_param_value("_method")).toUpper();
        if (wanted == "DELETE" || wanted == "PUT" || wanted == "PATCH")
            return wanted.toStdString();
    }
    return request.method;
}

const StoreOptions &refuseExposedSandbox(const StoreOptions &options)
{
    if (options.sandbox && !StoreServer::isLoopback(options.host))
        throw std::runtime_error("--sandbox serves SMS codes, mail links and captcha answers and "
                                 "completes payments; it is only allowed on a loopback address, "
                                 "not on "
                                 + options.host.toStdString());
    return options;
}

} // namespace

StoreServer::StoreServer(Options options)
    : m_options(refuseExposedSandbox(options))
    , m_context(std::make_unique<StoreContext>(m_options))
    , m_server(std::make_unique<GuardedServer>(m_options.headerDeadline, m_options.bodyDeadline))
{
    installRoutes();
    configureServer();
}

StoreServer::~StoreServer() = default;

void StoreServer::installRoutes()
{
    Handlers::installCatalog(m_router);
    Handlers::installAccount(m_router);
    Handlers::installRecovery(m_router);
    Handlers::installSetting(m_router);
    Handlers::installCart(m_router);
    Handlers::installOrder(m_router);
    Handlers::installPicture(m_router);
    Handlers::installWebPages(m_router);
    if (m_options.sandbox) {
        SandboxHandlers::installOutbox(m_router);
        SandboxHandlers::installUpload(m_router);
        SandboxHandlers::installWeChat(m_router);
        SandboxHandlers::installPush(m_router);
    }
}

void StoreServer::configureServer()
{
    const int threads = std::max(2, m_options.threads);
    m_server->new_task_queue = [threads] { return new httplib::ThreadPool(size_t(threads)); };
    m_server->set_payload_max_length(kMaxBodyBytes);
    m_server->set_keep_alive_max_count(1000);
    m_server->set_keep_alive_timeout(5);
    m_server->set_tcp_nodelay(
            true); // head and body go out as two writes: no 40 ms wait between them
    // The library's default adds SO_REUSEPORT, which would let a second store share the port
    // silently instead of failing to start.
    m_server->set_socket_options([](socket_t socket) {
        int yes = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });

    auto handler = [this](const httplib::Request &request, httplib::Response &response) {
        dispatch(request, response);
    };
    m_server->Get(".*", handler);
    m_server->Post(".*", handler);
    m_server->Put(".*", handler);
    m_server->Delete(".*", handler);
    m_server->Patch(".*", handler);
    m_server->Options(".*", handler);

    m_server->set_pre_routing_handler(
            [](const httplib::Request &request, httplib::Response &response) {
                RequestLog::begin();
                size_t size = request.body.size();
                for (const auto &[name, part] : request.files)
                    size += part.content.size();
                if (size <= kMaxBodyBytes) // bodies without a length are only measured once read
                    return httplib::Server::HandlerResponse::Unhandled;
                response.status = 413;
                return httplib::Server::HandlerResponse::Handled;
            });
    m_server->set_error_handler([](const httplib::Request &request, httplib::Response &response) {
        fillEmptyErrorAnswer(request, response);
    });
    m_server->set_exception_handler(
            [](const httplib::Request &request, httplib::Response &response, std::exception_ptr) {
                response.status = 500;
                response.body.clear();
                fillEmptyErrorAnswer(request, response);
            });
    std::FILE *log = m_options.requestLog;
    m_server->set_logger([log](const httplib::Request &request, const httplib::Response &response) {
        RequestLog::write(log, request, response);
    });
}

void StoreServer::dispatch(const httplib::Request &request, httplib::Response &response)
{
    const Router::Match match = m_router.match(effectiveMethod(request), request.path);
    Exchange exchange(*m_context, request, response, match.params);
    try {
        if (match.outcome == Router::Match::Outcome::NotFound)
            throw ApiError::error(404, QStringLiteral("请求的接口不存在"));
        if (match.outcome == Router::Match::Outcome::MethodNotAllowed) {
            response.set_header("Allow", match.allowedMethods);
            throw ApiError::error(405, QStringLiteral("不支持的请求方法"));
        }
        (*match.handler)(exchange);
    } catch (const ApiError &refusal) {
        exchange.sendEnvelope(refusal.httpStatus(), refusal.envelope());
    } catch (const std::exception &failure) {
        if (m_options.requestLog)
            std::fprintf(m_options.requestLog, "error: %s %s: %s\n", request.method.c_str(),
                         request.path.c_str(), failure.what());
        response.body.clear();
        response.status = 500;
        fillEmptyErrorAnswer(request, response);
    }
}

bool StoreServer::isLoopback(const QString &host)
{
    if (host == QLatin1String("localhost"))
        return true;
    const QHostAddress address(host);
    return !address.isNull() && address.isLoopback();
}

bool StoreServer::bind()
{
    const std::string host = m_options.host.toStdString();
    if (m_options.port == 0) {
        m_port = m_server->bind_to_any_port(host);
    } else if (m_server->bind_to_port(host, m_options.port)) {
        m_port = m_options.port;
    }
    if (m_port <= 0)
        return false;
    static_cast<GuardedServer &>(*m_server).widenBacklog();
    return true;
}

void StoreServer::listen()
{
    if (!m_stopRequested)
        m_server->listen_after_bind();
}

void StoreServer::stop()
{
    m_stopRequested = true;
    m_context->pushBell().close(); // held polls answer now instead of keeping their threads
    m_server->stop();
}

bool StoreServer::isRunning() const
{
    return m_server->is_running();
}
