#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

class Exchange;

// Method and path dispatch without regular expressions. A pattern is a path whose segments are
// literal text, ":name" (any one segment) or ":name.json" (a segment ending in ".json"). A path
// that exists under other methods only is told apart from one that does not exist at all.
class Router
{
public:
    using Handler = std::function<void(Exchange &)>;
    using Params = std::vector<std::pair<std::string, std::string>>;

    struct Match
    {
        enum class Outcome { Found, NotFound, MethodNotAllowed };
        Outcome outcome = Outcome::NotFound;
        const Handler *handler = nullptr;
        Params params;
        std::string allowedMethods; // "GET, POST" for MethodNotAllowed
    };

    void add(const std::string &method, const std::string &pattern, Handler handler);
    Match match(std::string_view method, std::string_view path) const;

private:
    struct Segment
    {
        std::string text; // literal text, or the parameter's name
        std::string suffix; // for parameters: what the segment must end with
        bool parameter = false;
    };
    struct Route
    {
        std::string method;
        std::vector<Segment> segments;
        Handler handler;
    };

    static bool matches(const Route &route, const std::vector<std::string_view> &parts,
                        Params *params);

    std::vector<Route> m_routes;
    std::unordered_map<std::string, std::vector<size_t>> m_literalRoutes; // by path
    std::vector<size_t> m_patternRoutes;
};
