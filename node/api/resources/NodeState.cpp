#include <Poco/DateTimeFormat.h>
#include <Poco/DateTimeFormatter.h>
#include <unistd.h>

#include "api/JsonBody.hpp"
#include "api/resources/ObjectView.hpp"
#include "api/resources/OpenApi.hpp"
#include "api/resources/Resources.hpp"
#include "json/ModelValue.hpp"

namespace ZorvNode {

namespace {

constexpr double longestSettling = 600;

/// totalActive of the FM object, when there is one to read.
std::optional<std::string> activeAlarms(Node& node)
{
    std::optional<std::string> number;
    try {
        viewObjects(node.management, node.objects, node.store, [&](const ObjectView& view) {
            const auto found = view.instancesOf("Fm");
            const auto values = found.empty() ? std::vector<MoValue>() : view.read(found.front());
            for (std::size_t index = 0; index < values.size(); ++index) {
                const AttributeDescription& attribute = view.classAt(found.front()).attributes[index];
                if (attribute.name == "totalActive") {
                    JsonWriter json;
                    writeJson(json, attribute, values[index]);
                    number = json.take();
                }
            }
        });
    } catch (const MoError&) {
        return std::nullopt;
    }
    return number;
}

HttpResponse describe(Node& node)
{
    const NodeConfiguration& configuration = node.getConfiguration();
    const bool isDurable = configuration.store.kind == StoreKind::sqlite;
    JsonWriter json;
    json.beginObject()
        .member("version", ZORV_VERSION)
        .member("processId", std::int64_t(getpid()))
        .member("startTime", Poco::DateTimeFormatter::format(node.getStartTime(), Poco::DateTimeFormat::ISO8601_FORMAT))
        .member("uptimeSeconds", std::int64_t(node.getStartTime().elapsed() / Poco::Timestamp::resolution()))
        .member("store", isDurable ? "sqlite" : "memory")
        .member("durability", !isDurable                                            ? "none"
                              : configuration.store.durability == Durability::power ? "power"
                                                                                    : "process")
        .member("stateDirectory", configuration.store.directory)
        .member("logDirectory", configuration.logDirectory)
        .member("model", configuration.model);
    if (const auto number = activeAlarms(node)) {
        json.key("activeAlarms").raw(*number);
    }
    json.member("suppression", node.source.isSuppressed());
    writeComponents(json, node.getComponents());
    json.endObject();
    HttpResponse response;
    response.body = json.take();
    return response;
}

HttpResponse health(Node& node)
{
    const std::vector<std::string> reasons = node.getTroubles();
    JsonWriter json;
    json.beginObject().member("health", reasons.empty() ? "ok" : "degraded").key("reasons").beginArray();
    for (const std::string& reason : reasons) {
        json.value(reason);
    }
    json.endArray().endObject();
    HttpResponse response;
    response.status = reasons.empty() ? 200 : 503;
    response.body = json.take();
    return response;
}

HttpResponse lists(Node& node)
{
    JsonWriter json;
    json.beginObject().key("lists").beginArray();
    for (const ListDescription& list : node.state.getLists().describeAll()) {
        json.beginObject()
            .member("name", list.name)
            .member("itemSize", list.itemSize)
            .member("items", std::uint64_t(list.numberOfItems))
            .endObject();
    }
    json.endArray().endObject();
    HttpResponse response;
    response.body = json.take();
    return response;
}

HttpResponse counters(Node& node, const ConnectionCounters& connections, const StreamCounters& streams)
{
    JsonWriter json;
    json.beginObject();
    for (const auto& [name, number] : node.getCounters()) {
        json.member(name, number);
    }
    json.member("connectionsAccepted", connections.accepted.load())
        .member("connectionsRefused", connections.refused.load())
        .member("requests", connections.requests.load())
        .member("requestsRefused", connections.refusedRequests.load())
        .member("streams", connections.streams.load())
        .member("streamsRefused", connections.refusedStreams.load())
        .member("streamsCutOff", streams.cutOff.load() + connections.stalledStreams.load())
        .endObject();
    HttpResponse response;
    response.body = json.take();
    return response;
}

HttpResponse settle(Node& node, const HttpRequest& request)
{
    double quiet = 0.5;
    double timeOut = 120;
    if (!request.body.empty()) {
        readBody(request, [&](JsonFields& fields) {
            quiet = fields.has("quietSeconds") ? fields.number("quietSeconds", 0, longestSettling) : quiet;
            timeOut = fields.has("timeoutSeconds") ? fields.number("timeoutSeconds", 0, longestSettling) : timeOut;
        });
    }
    const bool isQuiet = node.settle(std::chrono::duration<double>(quiet), std::chrono::duration<double>(timeOut));
    HttpResponse response;
    response.body = JsonWriter().beginObject().member("quiet", isQuiet).endObject().take();
    return response;
}

}  // namespace

void addNode(HttpRoutes& routes, Node& node, const ConnectionCounters& connections, const StreamCounters& streams)
{
    const auto get = [&routes](const std::string& path, std::function<HttpResponse()> handler) {
        routes.add("GET", path, Permission::read,
                   [handler = std::move(handler)](const HttpRequest&, const std::string&) { return handler(); });
    };
    get("/v1/node", [&] { return describe(node); });
    get("/v1/health", [&] { return health(node); });
    get("/v1/lists", [&] { return lists(node); });
    get("/v1/counters", [&] { return counters(node, connections, streams); });
    get("/v1/openapi.json", [] {
        HttpResponse response;
        response.body = openApiDocument;
        return response;
    });
    routes.add("POST", "/v1/settle", Permission::read,
               [&](const HttpRequest& request, const std::string&) { return settle(node, request); });
}

}  // namespace ZorvNode
