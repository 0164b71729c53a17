#include "api/JsonBody.hpp"
#include "api/resources/Resources.hpp"

namespace ZorvNode {

namespace {

struct ReasonName {
    const char* name;
    ZorvStateChangeReason reason;
};

const ReasonName reasonNames[] = {{"activate", ZORV_STATE_CHANGE_ACTIVATE},
                                  {"deactivate", ZORV_STATE_CHANGE_DEACTIVATE},
                                  {"fail-over", ZORV_STATE_CHANGE_FAIL_OVER},
                                  {"switch-over", ZORV_STATE_CHANGE_SWITCH_OVER}};

ZorvStateChangeReason readReason(const HttpRequest& request, const std::string& fallback)
{
    std::string name = fallback;
    if (!request.body.empty()) {
        readBody(request, [&](JsonFields& fields) { name = fields.text("reason", fallback); });
    }
    for (const ReasonName& candidate : reasonNames) {
        if (name == candidate.name) {
            return candidate.reason;
        }
    }
    throw HttpError(400, "not activate, deactivate, fail-over or switch-over", "reason");
}

const char* nameOf(ComponentState state)
{
    switch (state) {
    case ComponentState::started:
        return "started";
    case ComponentState::failed:
        return "failed";
    default:
        return "stopped";
    }
}

void writeComponent(JsonWriter& json, const ComponentStatus& component)
{
    json.beginObject().member("name", component.name).member("state", nameOf(component.state)).endObject();
}

HttpResponse change(Node& node, const HttpRequest& request, const std::string& name, bool start)
{
    const ZorvStateChangeReason reason = readReason(request, start ? "activate" : "deactivate");
    JsonWriter json;
    try {
        writeComponent(json, start ? node.startComponent(name, reason) : node.stopComponent(name, reason));
    } catch (const NoSuchComponent& e) {
        throw HttpError(404, e.what());
    } catch (const WrongState& e) {
        throw HttpError(409, e.what());
    } catch (const StartError& e) {
        throw HttpError(422, e.what());
    }
    node.log(ZORV_LOG_NOTICE, "component " + name + (start ? " started" : " stopped") + ", by " + request.caller.text);
    HttpResponse response;
    response.body = json.take();
    return response;
}

}  // namespace

void writeComponents(JsonWriter& json, const std::vector<ComponentStatus>& components)
{
    json.key("components").beginArray();
    for (const ComponentStatus& component : components) {
        writeComponent(json, component);
    }
    json.endArray();
}

void addComponents(HttpRoutes& routes, Node& node)
{
    routes.add("GET", "/v1/components", Permission::read, [&](const HttpRequest&, const std::string&) {
        JsonWriter json;
        json.beginObject();
        writeComponents(json, node.getComponents());
        json.endObject();
        HttpResponse response;
        response.body = json.take();
        return response;
    });
    routes.add("POST", "/v1/components/{name}/start", Permission::manage,
               [&](const HttpRequest& request, const std::string& name) { return change(node, request, name, true); });
    routes.add("POST", "/v1/components/{name}/stop", Permission::manage,
               [&](const HttpRequest& request, const std::string& name) { return change(node, request, name, false); });
}

}  // namespace ZorvNode
