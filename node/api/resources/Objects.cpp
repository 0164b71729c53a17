#include "api/JsonBody.hpp"
#include "api/QueryParameters.hpp"
#include "api/resources/ObjectView.hpp"
#include "api/resources/Resources.hpp"
#include "model/Dn.hpp"
#include "json/ModelValue.hpp"

namespace ZorvNode {

namespace {

constexpr std::uint64_t deepestTree = 64;

void writeTree(JsonWriter& json, const ObjectView& view, const std::string& dn, std::uint64_t depth, bool attributes)
{
    if (!dn.empty()) {
        json.beginObject().member("dn", dn).member("class", view.classAt(dn).name);
        if (attributes) {
            json.key("attributes").beginObject();
            view.write(json, dn);
            json.endObject();
        }
        json.endObject();
    }
    if (depth > 0) {
        for (const std::string& child : view.childrenOf(dn)) {
            writeTree(json, view, child, depth - 1, attributes);
        }
    }
}

HttpResponse readObjects(Node& node, const HttpRequest& request)
{
    QueryParameters query(request);
    const std::string dn = query.text("dn").value_or("");
    const std::uint64_t depth = query.number("depth", 0, deepestTree).value_or(dn.empty() ? 1 : 0);
    const bool attributes = query.flag("attributes", true);
    query.expectNoOther();
    JsonWriter json;
    try {
        viewObjects(node.management, node.objects, node.store, [&](const ObjectView& view) {
            if (!dn.empty() && !view.exists(dn)) {
                throw HttpError(404, "no such object, \"" + dn + "\"");
            }
            json.beginObject().key("objects").beginArray();
            writeTree(json, view, dn, depth, attributes);
            json.endArray().endObject();
        });
    } catch (const MoError& e) {
        throw refusalOf(e);
    }
    HttpResponse response;
    response.body = json.take();
    return response;
}

std::vector<MoNamedValue> readAttributes(JsonFields& fields, const Model& model, const std::string& dn)
{
    const ClassDescription* description = model.findClass(classOf(lastPartOf(dn)));
    if (description == nullptr) {
        throw FieldError(fields.pathOf("dn"), "unknown class", classOf(lastPartOf(dn)));
    }
    std::vector<MoNamedValue> values;
    if (!fields.has("attributes")) {
        return values;
    }
    const JsonFields attributes = fields.fields("attributes");
    for (const auto& member : attributes.json().GetObject()) {
        const std::string name = jsonText(member.name);
        const AttributeDescription* attribute = description->findAttribute(name);
        if (attribute == nullptr) {
            throw FieldError(attributes.pathOf(name), "class " + description->name + " has no such attribute");
        }
        try {
            values.push_back({name, fromJson(*attribute, member.value)});
        } catch (const ValueError& e) {
            throw FieldError(attributes.pathOf(name), e.what());
        }
    }
    return values;
}

MoRequest readChange(JsonFields& change, const Model& model)
{
    MoRequest request;
    const char* found = nullptr;
    for (const char* kind : {"set", "create", "delete"}) {
        if (change.has(kind)) {
            if (found != nullptr) {
                throw FieldError(change.pathOf(kind), std::string("beside ") + found);
            }
            found = kind;
        }
    }
    if (found == nullptr) {
        throw FieldError(change.pathOf("set"), "missing; so are create and delete");
    }
    const std::string kind = found;
    JsonFields fields = change.fields(found);
    request.kind = kind == "set"      ? MoRequest::Kind::set
                   : kind == "create" ? MoRequest::Kind::create
                                      : MoRequest::Kind::remove;
    request.dn = fields.text("dn");
    if (request.kind != MoRequest::Kind::remove) {
        request.attributes = readAttributes(fields, model, request.dn);
    }
    fields.expectNoOther();
    return request;
}

std::vector<MoRequest> readChanges(const HttpRequest& request, const Model& model)
{
    std::vector<MoRequest> changes;
    readBody(request, [&](JsonFields& fields) {
        const JsonT& list = fields.get("changes");
        if (!list.IsArray() || list.Empty()) {
            throw FieldError("changes", "not an array of changes");
        }
        for (const JsonT& item : list.GetArray()) {
            if (!item.IsObject()) {
                throw FieldError("changes", "not an object", jsonText(item));
            }
            JsonFields change(item);
            changes.push_back(readChange(change, model));
            change.expectNoOther();
        }
    });
    return changes;
}

HttpResponse changeObjects(Node& node, const HttpRequest& request)
{
    const std::vector<MoRequest> changes = readChanges(request, *node.store.snapshot().model);
    try {
        node.management.change(changes);
    } catch (const MoError& e) {
        throw refusalOf(e);
    }
    for (const MoRequest& change : changes) {
        node.log(ZORV_LOG_NOTICE, std::string(change.kind == MoRequest::Kind::set      ? "changed "
                                              : change.kind == MoRequest::Kind::create ? "created "
                                                                                       : "deleted ") +
                                      change.dn + ", by " + request.caller.text);
    }
    HttpResponse response;
    response.body = JsonWriter().beginObject().member("changed", std::uint64_t(changes.size())).endObject().take();
    return response;
}

HttpResponse reloadModel(Node& node, const HttpRequest& request)
{
    try {
        node.rereadModel();
    } catch (const InputError& e) {
        throw HttpError(422, e.what());
    }
    node.log(ZORV_LOG_NOTICE, "model reread, by " + request.caller.text);
    HttpResponse response;
    response.body = JsonWriter().beginObject().member("model", node.getConfiguration().model).endObject().take();
    return response;
}

}  // namespace

HttpError refusalOf(const MoError& error)
{
    switch (error.code) {
    case ZORV_RETURN_NOT_FOUND:
        return HttpError(404, error.what());
    case ZORV_RETURN_EXISTS:
        return HttpError(409, error.what());
    case ZORV_RETURN_NO_RESOURCES:
        return HttpError(503, error.what());
    default:
        return HttpError(422, error.what());
    }
}

void addObjects(HttpRoutes& routes, Node& node)
{
    routes.add("GET", "/v1/objects", Permission::read,
               [&](const HttpRequest& request, const std::string&) { return readObjects(node, request); });
    routes.add("POST", "/v1/objects", Permission::manage,
               [&](const HttpRequest& request, const std::string&) { return changeObjects(node, request); });
    routes.add("POST", "/v1/model/reload", Permission::manage,
               [&](const HttpRequest& request, const std::string&) { return reloadModel(node, request); });
}

}  // namespace ZorvNode
