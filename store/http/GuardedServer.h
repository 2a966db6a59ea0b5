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

    // Lets the listening socket queue a burst of new connections: the library listens with a
    // queue of five, and the kernel resets connections past the queue while they are accepted.
    // Call after binding.
    bool widenListenQueue();

private:
    bool process_and_close_socket(socket_t sock) override;
    // Whether the next request has begun to arrive before the keep-alive time runs out.
    bool awaitRequest(socket_t sock) const;

    std::chrono::milliseconds m_headerDeadline;
    std::chrono::milliseconds m_bodyDeadline;
};
