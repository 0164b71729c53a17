/// Which handler answers which request, and what a caller needs for it.
///
/// Threads: unchangeable once the server runs.
/// Failure: find throws HttpError 404 or 405.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "api/http/HttpMessage.hpp"

namespace ZorvNode {

enum class Permission { read, publish, manage };

/// @param name what stands for "{...}" in the pattern.
using HttpHandlerT = std::function<HttpResponse(const HttpRequest& request, const std::string& name)>;

struct HttpRoute {
    std::string method;
    std::string pattern;  ///< "/v1/alarms/{id}"
    Permission permission;
    HttpHandlerT handler;
};

struct FoundRoute {
    const HttpRoute* route = nullptr;
    std::string name;
};

class HttpRoutes {
public:
    void add(const std::string& method, const std::string& pattern, Permission permission, HttpHandlerT handler)
    {
        routes.push_back({method, pattern, permission, std::move(handler)});
    }

    FoundRoute find(const std::string& method, const std::string& path) const;

    /// "GET, POST": what can be done with a path; "" when there is no such path.
    std::string methodsOf(const std::string& path) const;

    const std::vector<HttpRoute>& getAll() const { return routes; }

private:
    std::vector<HttpRoute> routes;
};

}  // namespace ZorvNode
