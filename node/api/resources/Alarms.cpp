#include <Poco/StringTokenizer.h>

#include <algorithm>

#include "api/QueryParameters.hpp"
#include "api/resources/ObjectView.hpp"
#include "api/resources/Resources.hpp"
#include "files/Number.hpp"
#include "model/Dn.hpp"
#include "model/ValueText.hpp"

namespace ZorvNode {

namespace {

constexpr std::uint64_t largestPage = 10000;
constexpr std::uint64_t usualPage = 1000;
constexpr std::uint64_t largestType = 4294967295;
const char* const alarmClass = "FmAlarm";
const char* const summaryClass = "Fm";

struct AlarmQuery {
    std::vector<std::string> severities;
    std::optional<std::string> dnPrefix;
    std::optional<std::uint64_t> majorType;
    std::optional<std::uint64_t> minorType;
    std::uint64_t limit = usualPage;
    std::uint64_t after = 0;

    bool hasFilter() const { return !severities.empty() || dnPrefix || majorType || minorType; }
};

AlarmQuery readQuery(const HttpRequest& request)
{
    QueryParameters parameters(request);
    AlarmQuery query;
    if (const auto names = parameters.text("severity")) {
        const Poco::StringTokenizer words(*names, ",");
        query.severities.assign(words.begin(), words.end());
        for (const std::string& name : query.severities) {
            if (name != "INDETERMINATE" && name != "WARNING" && name != "MINOR" && name != "MAJOR" &&
                name != "CRITICAL" && name != "CLEARED") {
                throw HttpError(400, "no severity: " + name, "severity");
            }
        }
    }
    query.dnPrefix = parameters.text("dnPrefix");
    query.majorType = parameters.number("majorType", 0, largestType);
    query.minorType = parameters.number("minorType", 0, largestType);
    query.limit = parameters.number("limit", 1, largestPage).value_or(usualPage);
    query.after = parameters.number("after", 0, std::numeric_limits<std::uint64_t>::max()).value_or(0);
    parameters.expectNoOther();
    return query;
}

std::uint64_t idOf(const std::string& dn)
{
    const std::string part = lastPartOf(dn);
    std::uint64_t id = 0;
    parseUnsigned(part.substr(part.find('=') + 1), id);
    return id;
}

/// DNs of the active alarms by their ids.
std::vector<std::pair<std::uint64_t, std::string>> alarmsIn(const ObjectView& view)
{
    std::vector<std::pair<std::uint64_t, std::string>> alarms;
    for (const std::string& dn : view.instancesOf(alarmClass)) {
        alarms.emplace_back(idOf(dn), dn);
    }
    std::sort(alarms.begin(), alarms.end());
    return alarms;
}

/// Compares an alarm's values with a query.
class AlarmFilter {
public:
    AlarmFilter(const ClassDescription& alarmDescription, const AlarmQuery& alarmQuery)
        : description(alarmDescription),
          query(alarmQuery)
    {
    }

    bool accepts(const std::vector<MoValue>& values) const
    {
        const auto& severities = query.severities;
        return (severities.empty() ||
                std::find(severities.begin(), severities.end(), text(values, "activeSeverity")) != severities.end()) &&
               (!query.dnPrefix || text(values, "source").compare(0, query.dnPrefix->size(), *query.dnPrefix) == 0) &&
               (!query.majorType || text(values, "majorType") == std::to_string(*query.majorType)) &&
               (!query.minorType || text(values, "minorType") == std::to_string(*query.minorType));
    }

private:
    std::string text(const std::vector<MoValue>& values, const char* name) const
    {
        for (std::size_t index = 0; index < values.size(); ++index) {
            if (description.attributes[index].name == name) {
                return toText(description.attributes[index], values[index]);
            }
        }
        return "";
    }

    const ClassDescription& description;
    const AlarmQuery& query;
};

void writeAlarm(JsonWriter& json, const ObjectView& view, const std::string& dn)
{
    json.beginObject().member("dn", dn);
    view.write(json, dn);
    json.endObject();
}

/// Writes one page; all alarms that match are counted.
void writePage(JsonWriter& json, const ObjectView& view, const AlarmQuery& query)
{
    const AlarmFilter filter(view.classNamed(alarmClass), query);
    std::uint64_t total = 0;
    std::uint64_t written = 0;
    std::uint64_t last = 0;
    bool more = false;
    json.beginObject().key("alarms").beginArray();
    for (const auto& [id, dn] : alarmsIn(view)) {
        if (query.hasFilter() && !filter.accepts(view.read(dn))) {
            continue;
        }
        ++total;
        if (id <= query.after && query.after != 0) {
            continue;
        }
        if (written == query.limit) {
            more = true;
            continue;
        }
        writeAlarm(json, view, dn);
        ++written;
        last = id;
    }
    json.endArray().member("total", total);
    if (more) {
        json.member("next", std::to_string(last));
    }
    json.endObject();
}

HttpResponse view(Node& node, const std::function<void(JsonWriter&, const ObjectView&)>& write)
{
    JsonWriter json;
    try {
        viewObjects(node.management, node.objects, node.store,
                    [&](const ObjectView& objects) { write(json, objects); });
    } catch (const MoError& e) {
        throw refusalOf(e);
    }
    HttpResponse response;
    response.body = json.take();
    return response;
}

void writeOneAlarm(JsonWriter& json, const ObjectView& objects, const std::string& id)
{
    for (const std::string& parent : objects.parentsOf(alarmClass)) {
        const std::string dn = joinDn(parent, std::string(alarmClass) + "=" + id);
        if (isKeyValue(id) && objects.exists(dn)) {
            writeAlarm(json, objects, dn);
            return;
        }
    }
    throw HttpError(404, "no active alarm has the id " + id);
}

void writeSummary(JsonWriter& json, const ObjectView& objects)
{
    const auto found = objects.instancesOf(summaryClass);
    if (found.empty()) {
        throw HttpError(404, "the node has no object of class Fm");
    }
    json.beginObject();
    objects.write(json, found.front());
    json.endObject();
}

}  // namespace

void addAlarms(HttpRoutes& routes, Node& node)
{
    routes.add("GET", "/v1/alarms", Permission::read, [&](const HttpRequest& request, const std::string&) {
        const AlarmQuery query = readQuery(request);
        return view(node, [&](JsonWriter& json, const ObjectView& objects) { writePage(json, objects, query); });
    });
    routes.add("GET", "/v1/alarms/{id}", Permission::read, [&](const HttpRequest&, const std::string& id) {
        return view(node, [&](JsonWriter& json, const ObjectView& objects) { writeOneAlarm(json, objects, id); });
    });
    routes.add("GET", "/v1/summary", Permission::read, [&](const HttpRequest&, const std::string&) {
        return view(node, [](JsonWriter& json, const ObjectView& objects) { writeSummary(json, objects); });
    });
}

}  // namespace ZorvNode
