#include <map>

#include "api/JsonBody.hpp"
#include "api/QueryParameters.hpp"
#include "api/resources/Resources.hpp"

namespace ZorvNode {

namespace {

constexpr std::uint64_t mostLines = 10000;
constexpr std::uint64_t usualLines = 100;
constexpr std::chrono::milliseconds stopCheck(250);
constexpr unsigned checksBetweenProbes = 40;

const std::map<std::string, std::int32_t> levelNames = {{"error", ZORV_LOG_ERROR},
                                                        {"warning", ZORV_LOG_WARNING},
                                                        {"notice", ZORV_LOG_NOTICE},
                                                        {"information", ZORV_LOG_INFORMATION}};

HttpResponse levels(Node& node)
{
    JsonWriter json;
    json.beginObject();
    for (const auto& [name, level] : levelNames) {
        if (level == node.logs.getSystemLevel()) {
            json.member("log", name);
        }
    }
    json.key("trace").beginObject();
    for (const auto& [group, level] : node.trace.getLevels()) {
        json.member(group, level);
    }
    json.endObject().endObject();
    HttpResponse response;
    response.body = json.take();
    return response;
}

HttpResponse setLevels(Node& node, const HttpRequest& request)
{
    std::optional<std::int32_t> logLevel;
    std::map<std::string, std::int32_t> traceLevels;
    readBody(request, [&](JsonFields& fields) {
        if (fields.has("log")) {
            const auto found = levelNames.find(fields.text("log"));
            if (found == levelNames.end()) {
                throw FieldError("log", "not error, warning, notice or information", fields.text("log"));
            }
            logLevel = found->second;
        }
        if (fields.has("trace")) {
            JsonFields groups = fields.fields("trace");
            for (const auto& group : groups.json().GetObject()) {
                const std::string name = jsonText(group.name);
                traceLevels[name] = static_cast<std::int32_t>(groups.integer(name.c_str(), 0, 8));
            }
        }
    });
    if (logLevel) {
        node.logs.setSystemLevel(*logLevel);
    }
    for (const auto& [group, level] : traceLevels) {
        if (node.trace.setLevel(group, level) != ZORV_RETURN_OK) {
            throw HttpError(400, "too many trace groups", "trace." + group);
        }
    }
    node.log(ZORV_LOG_NOTICE, "levels changed, by " + request.caller.text);
    return levels(node);
}

std::string lineEvent(const std::string& line)
{
    return JsonWriter().beginObject().member("line", line).endObject().take();
}

void streamLines(const LogTail& tail, std::uint64_t position, EventSink& sink)
{
    unsigned quietChecks = 0;
    std::string line;
    for (bool open = true; open;) {
        if (tail.next(position, stopCheck, line)) {
            quietChecks = 0;
            open = sink.send("line", "", lineEvent(line));
        } else {
            open = ++quietChecks % checksBetweenProbes == 0 ? sink.sendNothing() : sink.isOpen();
        }
    }
}

HttpResponse readLog(Node& node, const HttpRequest& request, const std::string& name)
{
    const LogTail* const tail = node.logs.findTail(name);
    if (tail == nullptr) {
        throw HttpError(404, "no such log: " + name + "; there are system, alarms and publications");
    }
    QueryParameters query(request);
    const std::uint64_t lines = query.number("lines", 0, mostLines).value_or(usualLines);
    const bool follow = query.flag("follow", false);
    query.expectNoOther();
    const std::uint64_t begin = tail->beginOf(lines);
    HttpResponse response;
    if (follow) {
        response.stream = [tail, begin](EventSink& sink) { streamLines(*tail, begin, sink); };
        return response;
    }
    JsonWriter json;
    json.beginObject().key("lines").beginArray();
    std::string line;
    for (std::uint64_t position = begin; tail->next(position, std::chrono::milliseconds(0), line);) {
        json.value(line);
    }
    json.endArray().endObject();
    response.body = json.take();
    return response;
}

}  // namespace

void addLogs(HttpRoutes& routes, Node& node)
{
    routes.add("GET", "/v1/levels", Permission::read,
               [&](const HttpRequest&, const std::string&) { return levels(node); });
    routes.add("PUT", "/v1/levels", Permission::manage,
               [&](const HttpRequest& request, const std::string&) { return setLevels(node, request); });
    routes.add("GET", "/v1/logs/{name}", Permission::read,
               [&](const HttpRequest& request, const std::string& name) { return readLog(node, request, name); });
}

}  // namespace ZorvNode
