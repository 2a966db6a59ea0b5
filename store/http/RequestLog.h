#pragma once

#include <cstdio>

namespace httplib {
struct Request;
struct Response;
} // namespace httplib

// One line per request: time, client, request line, status, size and duration.
namespace RequestLog {
// Marks the start of the request handled by this thread.
void begin();
void write(std::FILE *out, const httplib::Request &request, const httplib::Response &response);
} // namespace RequestLog
