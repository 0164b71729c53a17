#include "api/JsonBody.hpp"
#include "api/QueryParameters.hpp"
#include "api/resources/Resources.hpp"
#include "notification/NotificationReader.hpp"

namespace ZorvNode {

namespace {

constexpr std::chrono::seconds longestDelivery(25);

struct Rejected {
    std::size_t item;
    std::string field;
    std::string reason;
};

/// The items that are right, in their order; what is wrong with the others.
struct Batch {
    std::vector<FmNotification> notifications;
    std::vector<Rejected> rejected;
};

void readItem(const JsonT& item, std::size_t position, Batch& batch)
{
    try {
        if (!item.IsObject()) {
            throw ValueError("not an object");
        }
        JsonFields fields(item);
        FmNotification notification = readNotification(fields, 0);
        fields.expectNoOther();
        batch.notifications.push_back(std::move(notification));
    } catch (const FieldError& e) {
        batch.rejected.push_back({position, e.getField(), e.getReason()});
    } catch (const ValueError& e) {
        batch.rejected.push_back({position, "", e.what()});
    }
}

Batch readBatch(const HttpRequest& request, std::size_t bound)
{
    JsonDocumentT document;
    parseBody(request, document);
    Batch batch;
    if (!document.IsArray()) {
        readItem(document, 0, batch);
        return batch;
    }
    if (document.Size() > bound) {
        throw HttpError(413, "a batch of more than " + std::to_string(bound) + " notifications");
    }
    batch.notifications.reserve(document.Size());
    for (const JsonT& item : document.GetArray()) {
        readItem(item, static_cast<std::size_t>(&item - document.Begin()), batch);
    }
    return batch;
}

HttpResponse answerFor(const Batch& batch, std::size_t accepted, bool isDurable)
{
    JsonWriter json;
    json.beginObject().member("accepted", std::uint64_t(accepted)).key("rejected").beginArray();
    for (const Rejected& rejected : batch.rejected) {
        json.beginObject().member("item", std::uint64_t(rejected.item));
        if (!rejected.field.empty()) {
            json.member("field", rejected.field);
        }
        json.member("reason", rejected.reason).endObject();
    }
    json.endArray();
    if (!isDurable) {
        json.member("durable", false);
    }
    json.endObject();
    HttpResponse response;
    response.status = accepted == 0 && !batch.rejected.empty() ? 422 : 200;
    response.body = json.take();
    return response;
}

std::optional<PublicationId> readPublicationId(const HttpRequest& request)
{
    auto id = PublicationId::fromText(request.publicationId);
    if (!id && !request.publicationId.empty()) {
        throw HttpError(400, "not CLIENT/NUMBER", "Publication-ID");
    }
    return id;
}

HttpResponse publish(Node& node, const ApiSettings& settings, const HttpRequest& request)
{
    QueryParameters query(request);
    const std::string wait = query.text("wait").value_or("routed");
    query.expectNoOther();
    if (wait != "routed" && wait != "delivered") {
        throw HttpError(400, "not routed or delivered", "wait");
    }
    const auto id = readPublicationId(request);
    Batch batch = readBatch(request, settings.batchBound);
    const std::size_t accepted = batch.notifications.size();
    bool isDurable = true;
    if (accepted > 0) {
        try {
            isDurable = node.source.publish(std::move(batch.notifications), id);
        } catch (const SourceBusy& e) {
            throw HttpError(503, e.what());
        }
    }
    node.countPublished(accepted, batch.rejected.size());
    node.logs.writePublication("published " + std::to_string(accepted) + ", rejected " +
                               std::to_string(batch.rejected.size()) + ", by " + request.caller.text);
    if (wait == "delivered" && !node.router.waitUntilIdle(longestDelivery)) {
        throw HttpError(503, "accepted, but not delivered in time");
    }
    return answerFor(batch, accepted, isDurable);
}

HttpResponse suppress(Node& node, const HttpRequest& request)
{
    bool on = false;
    readBody(request, [&](JsonFields& fields) { on = fields.boolean("on"); });
    if (!node.source.suppress(on)) {
        throw HttpError(409, "the alarm handling is not started; suppression is as it was");
    }
    node.router.waitUntilIdle(longestDelivery);
    node.log(ZORV_LOG_NOTICE,
             std::string("northbound suppression ") + (on ? "on" : "off") + ", by " + request.caller.text);
    HttpResponse response;
    response.body = JsonWriter().beginObject().member("on", on).endObject().take();
    return response;
}

}  // namespace

void addPublishing(HttpRoutes& routes, Node& node, const ApiSettings& settings)
{
    routes.add("POST", "/v1/notifications", Permission::publish,
               [&](const HttpRequest& request, const std::string&) { return publish(node, settings, request); });
    routes.add("PUT", "/v1/suppression", Permission::manage,
               [&](const HttpRequest& request, const std::string&) { return suppress(node, request); });
}

}  // namespace ZorvNode
