/// A listener on a socket of the test's own, with a few routes.
#pragma once

#include <gmock/gmock.h>

#include <future>
#include <thread>

#include "LogRecorder.hpp"
#include "RawClient.hpp"
#include "TemporaryDirectory.hpp"
#include "api/http/HttpListener.hpp"
#include "json/JsonWriter.hpp"

namespace ZorvNode {

class ListenerFixture : public ::testing::Test {
protected:
    ListenerFixture()
    {
        settings.socket = directory.path("s");
        settings.requestTime = std::chrono::seconds(20);
        for (const char* method : {"GET", "POST"}) {
            routes.add(method, "/v1/echo", method[0] == 'G' ? Permission::read : Permission::publish,
                       [](const HttpRequest& request, const std::string&) { return echo(request); });
        }
        routes.add("PUT", "/v1/items/{name}", Permission::manage,
                   [](const HttpRequest&, const std::string& name) { return answer("\"" + name + "\""); });
        routes.add("GET", "/v1/stream", Permission::read, [](const HttpRequest&, const std::string&) {
            HttpResponse response;
            response.stream = [](EventSink& sink) {
                sink.send("hello", "7", "{}");
                for (bool open = true; open;) {
                    std::this_thread::sleep_for(std::chrono::milliseconds(5));  // as a stream waits for its next event
                    open = sink.sendNothing();
                }
            };
            return response;
        });
    }

    static HttpResponse answer(const std::string& body)
    {
        HttpResponse response;
        response.body = body;
        return response;
    }

    static HttpResponse echo(const HttpRequest& request)
    {
        ZorvInput::JsonWriter json;
        json.beginObject();
        for (const auto& [name, value] : request.query) {
            json.member(name, value);
        }
        return answer(json.member("body", request.body).endObject().take());
    }

    RawClient connect() const { return RawClient(settings.socket); }

    /// What one request on a connection of its own is answered with.
    std::string ask(const std::string& request) const { return statusAndBody(connect().ask(request)); }

    static std::string get(const std::string& target) { return "GET " + target + " HTTP/1.1\r\nHost: node\r\n\r\n"; }

    static std::string post(const std::string& body, const std::string& fields = "")
    {
        return "POST /v1/echo HTTP/1.1\r\nHost: node\r\nContent-Type: application/json\r\n" + fields +
               (fields.find("Transfer-Encoding") == std::string::npos &&
                        fields.find("Content-Length") == std::string::npos
                    ? "Content-Length: " + std::to_string(body.size()) + "\r\n"
                    : "") +
               "\r\n" + body;
    }

    static std::string error(const std::string& reason) { return "{\"error\":{\"reason\":\"" + reason + "\"}}"; }

    void start()
    {
        listener.emplace(settings, routes, log.sink());
        listener->start();
    }

    /// Whether its end takes less time than what it grants connections that do not end by themselves. The machine may be
    /// busy, so it may be tried some times.
    bool stopsSoon()
    {
        const auto before = std::chrono::steady_clock::now();
        listener->stop();
        return std::chrono::steady_clock::now() - before < std::chrono::seconds(1);
    }
    static constexpr int attempts = 4;

    const ZorvTest::TemporaryDirectory directory;
    ApiSettings settings;
    HttpRoutes routes;
    LogRecorder log;
    std::optional<HttpListener> listener;
};

}  // namespace ZorvNode
