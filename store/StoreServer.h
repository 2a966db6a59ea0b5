#pragma once

#include "StoreOptions.h"
#include "http/Router.h"

#include <atomic>
#include <memory>

class GuardedServer;
class StoreContext;

namespace httplib {
struct Request;
struct Response;
} // namespace httplib

// The store service: one HTTP server answering the client's API (and, unless switched off, the
// sandbox parties) from one SQLite database.
class StoreServer
{
public:
    using Options = StoreOptions;
    static constexpr size_t kMaxBodyBytes = 8 * 1024 * 1024;
    // The HTTP library's own limit for application/x-www-form-urlencoded bodies.
    static constexpr size_t kMaxFormBytes = 8 * 1024;

    // Opens (and on first start seeds) the database; throws when that fails, and when the sandbox
    // is asked for on an address other parties could reach.
    explicit StoreServer(Options options);
    // 127.0.0.0/8, ::1 and "localhost".
    static bool isLoopback(const QString &host);
    ~StoreServer();

    // Binds the socket; returns false when the address is taken. port() is valid afterwards.
    bool bind();
    // Serves until stop(); blocks the calling thread. Returns at once after an earlier stop().
    void listen();
    void stop();
    bool isRunning() const;
    int port() const { return m_port; }
    StoreContext &context() { return *m_context; }

private:
    void installRoutes();
    void configureServer();
    void dispatch(const httplib::Request &request, httplib::Response &response);

    Options m_options;
    std::unique_ptr<StoreContext> m_context;
    Router m_router;
    std::unique_ptr<GuardedServer> m_server;
    int m_port = 0;
    std::atomic<bool> m_stopRequested{false};
};
