#include "StoreServer.h"

#include <httplib.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

void sendEnvelope(httplib::Response &res, const QJsonObject &envelope)
{
    res.set_content(QJsonDocument(envelope).toJson(QJsonDocument::Compact).toStdString(),
                    "application/json; charset=utf-8");
}

} // namespace

StoreServer::StoreServer(Options options)
    : m_options(std::move(options))
    , m_server(std::make_unique<httplib::Server>())
{
    installRoutes();
}

StoreServer::~StoreServer() = default;

bool StoreServer::bind()
{
    const std::string host = m_options.host.toStdString();
    if (m_options.port == 0) {
        m_port = m_server->bind_to_any_port(host.c_str());
        return m_port > 0;
    }
    if (!m_server->bind_to_port(host.c_str(), m_options.port))
        return false;
    m_port = m_options.port;
    return true;
}

void StoreServer::listen()
{
    m_server->listen_after_bind();
}

void StoreServer::stop()
{
    m_server->stop();
}

void StoreServer::installRoutes()
{
    m_server->Get("/store.json", [](const httplib::Request &, httplib::Response &res) {
        sendEnvelope(res, QJsonObject{{"status", "success"},
                                      {"data", QJsonObject{{"focus_recs", QJsonArray{}}}}});
    });
    m_server->set_error_handler([](const httplib::Request &, httplib::Response &res) {
        sendEnvelope(res, QJsonObject{{"status", "error"}, {"message", "请求的资源不存在"}});
    });
}
