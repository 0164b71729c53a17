#include "api/http/HttpRoutes.hpp"

#include <gmock/gmock.h>

namespace ZorvNode {

class HttpRoutesTest : public ::testing::Test {
protected:
    HttpRoutesTest()
    {
        for (const auto& [method, pattern] :
             std::vector<std::pair<const char*, const char*>>{{"GET", "/v1/alarms"},
                                                              {"GET", "/v1/alarms/{id}"},
                                                              {"POST", "/v1/components/{name}/start"},
                                                              {"GET", "/v1/levels"},
                                                              {"PUT", "/v1/levels"}}) {
            routes.add(method, pattern, Permission::read,
                       [](const HttpRequest&, const std::string&) { return HttpResponse(); });
        }
    }

    /// "GET PATTERN NAME", or "STATUS reason".
    std::string find(const std::string& method, const std::string& path) const
    {
        try {
            const FoundRoute found = routes.find(method, path);
            return found.route->method + " " + found.route->pattern + " " + found.name;
        } catch (const HttpError& e) {
            return std::to_string(e.status) + " " + e.what();
        }
    }

    HttpRoutes routes;
};

TEST_F(HttpRoutesTest, aPathIsFoundWithItsMethod)
{
    EXPECT_EQ("GET /v1/alarms ", find("GET", "/v1/alarms"));
    EXPECT_EQ("GET /v1/levels ", find("GET", "/v1/levels"));
    EXPECT_EQ("PUT /v1/levels ", find("PUT", "/v1/levels"));
}

TEST_F(HttpRoutesTest, aNameStandsForAnyPartOfAPath)
{
    EXPECT_EQ("GET /v1/alarms/{id} 7", find("GET", "/v1/alarms/7"));
    EXPECT_EQ("GET /v1/alarms/{id} a b", find("GET", "/v1/alarms/a b"));
    EXPECT_EQ("POST /v1/components/{name}/start Fm", find("POST", "/v1/components/Fm/start"));
    EXPECT_EQ("POST /v1/components/{name}/start start", find("POST", "/v1/components/start/start"));
}

TEST_F(HttpRoutesTest, aNameIsNeitherEmptyNorSeveralParts)
{
    for (const char* path : {"/v1/alarms/", "/v1/alarms/1/2", "/v1/components//start", "/v1/components/a/b/start",
                             "/v1/components/start", "/v1/components/Fm/stop", "/v1/alarm", "/v1/alarmsx", "/", ""}) {
        EXPECT_EQ(std::string("404 no such path: ") + path, find("GET", path));
    }
}

TEST_F(HttpRoutesTest, anotherMethodIsToldWhatThePathTakes)
{
    EXPECT_EQ("405 DELETE is not for /v1/levels; it takes GET, PUT", find("DELETE", "/v1/levels"));
    EXPECT_EQ("405 HEAD is not for /v1/alarms; it takes GET", find("HEAD", "/v1/alarms"));
    EXPECT_EQ("405 get is not for /v1/alarms/7; it takes GET", find("get", "/v1/alarms/7"));
    EXPECT_EQ("GET, PUT", routes.methodsOf("/v1/levels"));
    EXPECT_EQ("", routes.methodsOf("/v1"));
}

}  // namespace ZorvNode
