#include "http/GuardedServer.h"

#include <netdb.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace {

using Clock = std::chrono::steady_clock;

// Waits up to `timeout` for `events` on the socket; false on time-out, error or hang-up without
// data.
bool waitFor(socket_t sock, short events, std::chrono::milliseconds timeout)
{
    pollfd entry{sock, events, 0};
    const int milliseconds = int(std::max<std::chrono::milliseconds::rep>(0, timeout.count()));
    int ready = 0;
    do {
        ready = ::poll(&entry, 1, milliseconds);
    } while (ready < 0 && errno == EINTR);
    return ready > 0 && (entry.revents & (events | POLLHUP)) != 0;
}

void addressOf(const sockaddr_storage &address, socklen_t length, std::string &ip, int &port)
{
    std::array<char, NI_MAXHOST> host{};
    if (getnameinfo(reinterpret_cast<const sockaddr *>(&address), length, host.data(), host.size(),
                    nullptr, 0, NI_NUMERICHOST)
        == 0)
        ip = host.data();
    if (address.ss_family == AF_INET)
        port = ntohs(reinterpret_cast<const sockaddr_in &>(address).sin_port);
    else if (address.ss_family == AF_INET6)
        port = ntohs(reinterpret_cast<const sockaddr_in6 &>(address).sin6_port);
}

// The connection as httplib reads and writes it, with reads bounded by the request's deadline.
class DeadlineStream : public httplib::Stream
{
public:
    DeadlineStream(socket_t sock, std::chrono::milliseconds readTimeout,
                   std::chrono::milliseconds writeTimeout)
        : m_socket(sock)
        , m_readTimeout(readTimeout)
        , m_writeTimeout(writeTimeout)
    { }

    void setDeadline(Clock::time_point deadline) { m_deadline = deadline; }

    bool is_readable() const override
    {
        const auto left
                = std::chrono::duration_cast<std::chrono::milliseconds>(m_deadline - Clock::now());
        if (left.count() <= 0)
            return false;
        return waitFor(m_socket, POLLIN, std::min(left, m_readTimeout));
    }

    bool is_writable() const override { return waitFor(m_socket, POLLOUT, m_writeTimeout); }

    ssize_t read(char *ptr, size_t size) override
    {
        if (m_offset >= m_filled) {
            if (!is_readable())
                return -1;
            ssize_t received = 0;
            do {
                received = ::recv(m_socket, m_buffer.data(), m_buffer.size(), 0);
            } while (received < 0 && errno == EINTR);
            if (received <= 0)
                return received;
            m_offset = 0;
            m_filled = size_t(received);
        }
        const size_t taken = std::min(size, m_filled - m_offset);
        std::memcpy(ptr, m_buffer.data() + m_offset, taken);
        m_offset += taken;
        return ssize_t(taken);
    }

    ssize_t write(const char *ptr, size_t size) override
    {
        if (!is_writable())
            return -1;
        ssize_t sent = 0;
        do {
            sent = ::send(m_socket, ptr, size, MSG_NOSIGNAL);
        } while (sent < 0 && errno == EINTR);
        return sent;
    }

    void get_remote_ip_and_port(std::string &ip, int &port) const override
    {
        sockaddr_storage address{};
        socklen_t length = sizeof address;
        if (getpeername(m_socket, reinterpret_cast<sockaddr *>(&address), &length) == 0)
            addressOf(address, length, ip, port);
    }

    void get_local_ip_and_port(std::string &ip, int &port) const override
    {
        sockaddr_storage address{};
        socklen_t length = sizeof address;
        if (getsockname(m_socket, reinterpret_cast<sockaddr *>(&address), &length) == 0)
            addressOf(address, length, ip, port);
    }

    socket_t socket() const override { return m_socket; }

private:
    socket_t m_socket;
    std::chrono::milliseconds m_readTimeout;
    std::chrono::milliseconds m_writeTimeout;
    Clock::time_point m_deadline = Clock::now();
    std::array<char, 16 * 1024> m_buffer{};
    size_t m_offset = 0;
    size_t m_filled = 0;
};

std::chrono::milliseconds millisecondsOf(time_t seconds, time_t microseconds)
{
    return std::chrono::milliseconds(seconds * 1000 + microseconds / 1000);
}

} // namespace

GuardedServer::GuardedServer(std::chrono::milliseconds headerDeadline,
                             std::chrono::milliseconds bodyDeadline)
    : m_headerDeadline(headerDeadline)
    , m_bodyDeadline(bodyDeadline)
{ }

void GuardedServer::widenBacklog()
{
    if (svr_sock_ != INVALID_SOCKET)
        ::listen(svr_sock_, SOMAXCONN);
}

bool GuardedServer::awaitRequest(socket_t sock) const
{
    // In slices, so that a stopping server is noticed soon.
    const auto until = Clock::now() + std::chrono::seconds(keep_alive_timeout_sec_);
    while (svr_sock_ != INVALID_SOCKET) {
        const auto left
                = std::chrono::duration_cast<std::chrono::milliseconds>(until - Clock::now());
        if (left.count() <= 0)
            return false;
        pollfd entry{sock, POLLIN, 0};
        const int ready = ::poll(&entry, 1, int(std::min<long>(left.count(), 100)));
        if (ready > 0)
            return (entry.revents & (POLLIN | POLLHUP)) != 0;
        if (ready < 0 && errno != EINTR)
            return false;
    }
    return false;
}

bool GuardedServer::process_and_close_socket(socket_t sock)
{
    bool served = false;
    // A new connection's wait for its first request counts against the header deadline; a kept
    // alive one may rest for the keep-alive time, and its deadline starts with the next request.
    const auto connected = Clock::now();
    for (size_t left = keep_alive_max_count_; left > 0; --left) {
        const bool first = left == keep_alive_max_count_;
        if (!awaitRequest(sock))
            break;
        // One stream per request, as the library does: bytes read past a request are dropped.
        DeadlineStream stream(sock, millisecondsOf(read_timeout_sec_, read_timeout_usec_),
                              millisecondsOf(write_timeout_sec_, write_timeout_usec_));
        stream.setDeadline((first ? connected : Clock::now()) + m_headerDeadline);
        bool closed = false;
        served = process_request(stream, left == 1, closed, [&](httplib::Request &request) {
            // The headers are in; the body has its own time from here.
            stream.setDeadline(Clock::now() + m_bodyDeadline);
            request.ranges.clear();
        });
        if (!served || closed)
            break;
    }
    ::shutdown(sock, SHUT_RDWR);
    ::close(sock);
    return served;
}
