#pragma once

#include <QString>

#include <memory>

namespace httplib {
class Server;
}

// The store service: one HTTP server answering the client's API on a loopback or public address.
class StoreServer
{
public:
    struct Options
    {
        QString host = QStringLiteral("127.0.0.1");
        int port = 8080; // 0 picks a free port
        QString databasePath;
    };

    explicit StoreServer(Options options);
    ~StoreServer();

    // Binds the socket; returns false when the address is taken. port() is valid afterwards.
    bool bind();
    // Serves until stop(); blocks the calling thread.
    void listen();
    void stop();
    int port() const { return m_port; }

private:
    void installRoutes();

    Options m_options;
    std::unique_ptr<httplib::Server> m_server;
    int m_port = 0;
};
