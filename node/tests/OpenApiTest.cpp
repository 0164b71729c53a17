#include "api/resources/OpenApi.hpp"

#include <gmock/gmock.h>

#include <algorithm>
#include <cctype>
#include <set>

#include "TemporaryDirectory.hpp"
#include "api/Api.hpp"
#include "json/Json.hpp"

namespace ZorvNode {

using namespace ZorvInput;

namespace {

using NamesT = std::set<std::string>;

/// What the handlers answer besides what any of their kind may.
const std::map<std::string, NamesT> ownStatuses = {
    {"POST /v1/notifications", {"422"}},
    {"PUT /v1/suppression", {"409"}},
    {"GET /v1/alarms", {"404", "422"}},
    {"GET /v1/alarms/{id}", {"422"}},
    {"GET /v1/summary", {"404", "422"}},
    {"GET /v1/objects", {"404", "422"}},
    {"POST /v1/objects", {"404", "409", "422"}},
    {"POST /v1/model/reload", {"422"}},
    {"POST /v1/components/{name}/start", {"409", "422"}},
    {"POST /v1/components/{name}/stop", {"409", "422"}},
};

const char* textOf(Permission permission)
{
    return permission == Permission::read ? "read" : permission == Permission::publish ? "publish" : "manage";
}

}  // namespace

/// Holds the description of the interface against the interface.
class OpenApiTest : public ::testing::Test {
protected:
    OpenApiTest()
    {
        parseJson(openApiDocument, 32, document);
        for (const auto& path : document["paths"].GetObject()) {
            for (const auto& operation : path.value.GetObject()) {
                std::string method = jsonText(operation.name);
                std::transform(method.begin(), method.end(), method.begin(),
                               [](char it) { return static_cast<char>(std::toupper(it)); });
                operations[method + " " + jsonText(path.name)] = &operation.value;
            }
        }
    }

    NodeConfiguration configure() const
    {
        NodeConfiguration it;
        it.logDirectory = directory.path();
        it.runDirectory = directory.path();
        it.store.kind = StoreKind::memory;
        it.api.socket = directory.path("s");
        return it;
    }

    static NamesT parametersOf(const JsonT& operation, const std::string& place)
    {
        NamesT names;
        if (operation.HasMember("parameters")) {
            for (const JsonT& parameter : operation["parameters"].GetArray()) {
                if (place == parameter["in"].GetString()) {
                    names.insert(parameter["name"].GetString());
                }
            }
        }
        return names;
    }

    static NamesT statusesOf(const JsonT& operation)
    {
        NamesT statuses;
        for (const auto& response : operation["responses"].GetObject()) {
            statuses.insert(jsonText(response.name));
        }
        return statuses;
    }

    /// Whether a handler knows a parameter: it may not like the value.
    static bool takes(const HttpRoute& route, const std::string& parameter)
    {
        HttpRequest request;
        request.method = route.method;
        request.query[parameter] = "?";
        try {
            route.handler(request, "system");
        } catch (const HttpError& e) {
            return std::string(e.what()) != "no such parameter";
        }
        return true;
    }

    const ZorvTest::TemporaryDirectory directory;
    JsonDocumentT document;
    std::map<std::string, const JsonT*> operations;
    const NodeConfiguration configuration = configure();
    Node node{configuration, readModel(directory.write("model.xml", "<ZorvModel><class name='Node'/></ZorvModel>"))};
    const Api api{node};
};

TEST_F(OpenApiTest, itDescribesEachRouteAndNoOther)
{
    std::map<std::string, std::string> described;
    for (const auto& [name, operation] : operations) {
        described[name] = (*operation)["x-permission"].GetString();
    }
    std::map<std::string, std::string> offered;
    for (const HttpRoute& route : api.getRoutes().getAll()) {
        offered[route.method + " " + route.pattern] = textOf(route.permission);
    }

    EXPECT_EQ(offered, described);
}

TEST_F(OpenApiTest, itListsEachStatusThatARouteMayAnswer)
{
    for (const auto& [name, operation] : operations) {
        NamesT expected = {"200", "401", "403", "408", "503", "default"};
        const bool hasBody = operation->HasMember("requestBody");
        if (hasBody || !parametersOf(*operation, "query").empty()) {
            expected.insert("400");
        }
        if (hasBody) {
            expected.insert({"413", "415"});
        }
        if (!parametersOf(*operation, "path").empty()) {
            expected.insert("404");
        }
        const auto own = ownStatuses.find(name);
        if (own != ownStatuses.end()) {
            expected.insert(own->second.begin(), own->second.end());
        }
        EXPECT_EQ(expected, statusesOf(*operation)) << name;
    }
}

TEST_F(OpenApiTest, itListsTheParametersThatAHandlerTakesAndNoOther)
{
    NamesT all = {"colour"};
    for (const auto& [name, operation] : operations) {
        const NamesT parameters = parametersOf(*operation, "query");
        all.insert(parameters.begin(), parameters.end());
    }
    for (const HttpRoute& route : api.getRoutes().getAll()) {
        const NamesT described = parametersOf(*operations.at(route.method + " " + route.pattern), "query");
        NamesT taken;
        for (const std::string& parameter : all) {
            if (!described.empty() && takes(route, parameter)) {
                taken.insert(parameter);
            }
        }
        EXPECT_EQ(described, taken) << route.method << " " << route.pattern;
    }
}

TEST_F(OpenApiTest, aNameInAPathIsAParameter)
{
    for (const auto& [name, operation] : operations) {
        const std::size_t open = name.find('{');
        const NamesT expected =
            open == std::string::npos ? NamesT() : NamesT{name.substr(open + 1, name.find('}') - open - 1)};
        EXPECT_EQ(expected, parametersOf(*operation, "path")) << name;
    }
}

TEST_F(OpenApiTest, itIsGivenAwayAsItIs)
{
    EXPECT_EQ(openApiDocument, api.getRoutes().find("GET", "/v1/openapi.json").route->handler({}, "").body);
}

}  // namespace ZorvNode
