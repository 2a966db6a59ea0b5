#pragma once

#include <httplib.h>

#include <chrono>

// The HTTP server with deadlines per request: a client has `headerDeadline` from the moment its
// connection (or, on a kept-alive connection, its next request) starts to deliver the request
// line and headers, and `bodyDeadline` from then on for the body. A client that trickles bytes
// slower than that is cut off, so slow clients cannot keep the worker threads to themselves.
// Range headers are ignored: every answer is whole and bounded by what the handler made.
class GuardedServer : public httplib::Server
{
public:
    GuardedServer(std::chrono::milliseconds headerDeadline, std::chrono::milliseconds bodyDeadline);

    // After binding: lets the system queue as many new connections as it allows while the
    // accepting thread is busy. The library asks for 5, so a burst of clients on a loaded
    // machine has its connections dropped.
    void widenBacklog();

private:
    bool process_and_close_socket(socket_t sock) override;
    // Whether the next request has begun to arrive before the keep-alive time runs out.
    bool awaitRequest(socket_t sock) const;

    std::chrono::milliseconds m_headerDeadline;
    std::chrono::milliseconds m_bodyDeadline;
};
