#pragma once

#include <cstdio>
#include <string>

namespace httplib {
struct Request;
struct Response;
} // namespace httplib

// One line per request: time, client, request line, status, size and duration.
namespace RequestLog {
// Marks the start of the request handled by this thread.
void begin();
void write(std::FILE *out, const httplib::Request &request, const httplib::Response &response);
// The request target with the value of every query field named "...token" hidden: tokens and
// mail links' secrets never reach the log.
std::string redacted(const std::string &target);
} // namespace RequestLog
