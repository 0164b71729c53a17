#include "api/http/HttpRoutes.hpp"

namespace ZorvNode {

namespace {

/// Whether the path fits; name is what stands for the pattern's "{...}".
bool matches(const std::string& pattern, const std::string& path, std::string& name)
{
    const std::size_t open = pattern.find('{');
    if (open == std::string::npos) {
        return pattern == path;
    }
    const std::string behind = pattern.substr(pattern.find('}') + 1);
    if (path.size() <= open + behind.size() || path.compare(0, open, pattern, 0, open) != 0 ||
        path.compare(path.size() - behind.size(), behind.size(), behind) != 0) {
        return false;
    }
    name = path.substr(open, path.size() - open - behind.size());
    return name.find('/') == std::string::npos;
}

}  // namespace

FoundRoute HttpRoutes::find(const std::string& method, const std::string& path) const
{
    for (const HttpRoute& route : routes) {
        FoundRoute found{&route, ""};
        if (route.method == method && matches(route.pattern, path, found.name)) {
            return found;
        }
    }
    const std::string methods = methodsOf(path);
    if (methods.empty()) {
        throw HttpError(404, "no such path: " + path);
    }
    throw HttpError(405, method + " is not for " + path + "; it takes " + methods);
}

std::string HttpRoutes::methodsOf(const std::string& path) const
{
    std::string methods;
    std::string ignored;
    for (const HttpRoute& route : routes) {
        if (matches(route.pattern, path, ignored)) {
            methods += (methods.empty() ? "" : ", ") + route.method;
        }
    }
    return methods;
}

}  // namespace ZorvNode
