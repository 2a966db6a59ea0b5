#include "http/Router.h"

namespace {

std::vector<std::string_view> splitPath(std::string_view path)
{
    std::vector<std::string_view> parts;
    size_t start = 1; // paths begin with "/"
    while (start <= path.size()) {
        const size_t end = path.find('/', start);
        const size_t stop = end == std::string_view::npos ? path.size() : end;
        parts.push_back(path.substr(start, stop - start));
        if (end == std::string_view::npos)
            break;
        start = end + 1;
    }
    return parts;
}

void appendMethod(std::string &list, const std::string &method)
{
    if (list.find(method) != std::string::npos)
        return;
    if (!list.empty())
        list += ", ";
    list += method;
}

} // namespace

void Router::add(const std::string &method, const std::string &pattern, Handler handler)
{
    Route route{method, {}, std::move(handler)};
    bool literal = true;
    for (std::string_view part : splitPath(pattern)) {
        Segment segment;
        if (!part.empty() && part.front() == ':') {
            literal = false;
            segment.parameter = true;
            const size_t dot = part.find('.');
            segment.text = std::string(
                    part.substr(1, dot == std::string_view::npos ? part.npos : dot - 1));
            if (dot != std::string_view::npos)
                segment.suffix = std::string(part.substr(dot));
        } else {
            segment.text = std::string(part);
        }
        route.segments.push_back(std::move(segment));
    }
    m_routes.push_back(std::move(route));
    if (literal)
        m_literalRoutes[pattern].push_back(m_routes.size() - 1);
    else
        m_patternRoutes.push_back(m_routes.size() - 1);
}

bool Router::matches(const Route &route, const std::vector<std::string_view> &parts, Params *params)
{
    if (route.segments.size() != parts.size())
        return false;
    Params found;
    for (size_t i = 0; i < parts.size(); ++i) {
        const Segment &segment = route.segments[i];
        const std::string_view part = parts[i];
        if (!segment.parameter) {
            if (part != segment.text)
                return false;
            continue;
        }
        if (part.size() <= segment.suffix.size()
            || part.substr(part.size() - segment.suffix.size()) != segment.suffix)
            return false;
        found.emplace_back(segment.text,
                           std::string(part.substr(0, part.size() - segment.suffix.size())));
    }
    if (params)
        *params = std::move(found);
    return true;
}

Router::Match Router::match(std::string_view method, std::string_view path) const
{
    const std::string_view effective = method == "HEAD" ? std::string_view("GET") : method;
    Match result;
    auto consider = [&](size_t index, const std::vector<std::string_view> *parts) {
        const Route &route = m_routes[index];
        Params params;
        if (parts && !matches(route, *parts, &params))
            return false;
        if (route.method == effective) {
            result.outcome = Match::Outcome::Found;
            result.handler = &route.handler;
            result.params = std::move(params);
            return true;
        }
        result.outcome = Match::Outcome::MethodNotAllowed;
        appendMethod(result.allowedMethods, route.method);
        return false;
    };

    if (const auto literal = m_literalRoutes.find(std::string(path));
        literal != m_literalRoutes.end()) {
        for (size_t index : literal->second) {
            if (consider(index, nullptr))
                return result;
        }
    }
    if (path.empty() || path.front() != '/')
        return result;
    const std::vector<std::string_view> parts = splitPath(path);
    for (size_t index : m_patternRoutes) {
        if (consider(index, &parts))
            return result;
    }
    return result;
}
