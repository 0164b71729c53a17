/// Drives a server that takes alarms over HTTP, on one connection, and prints what was measured.

#include <CLI/CLI.hpp>
#include <cstdio>

#include "ListingRun.hpp"
#include "RaiseRun.hpp"

namespace {

using namespace ZorvBench;

struct Choice {
    std::string scenario;
    std::string server = "node";
    Address address;
    int alarms = 100000;
    int batch = 100;
};

void define(CLI::App& app, Choice& choice)
{
    app.add_option("scenario", choice.scenario, "singles, batches: raise alarms; listing: read those that are active")
        ->required()
        ->check(CLI::IsMember({"singles", "batches", "listing"}));
    app.add_option("--server", choice.server, "what it is: node or alertmanager")
        ->check(CLI::IsMember({"node", "alertmanager"}));
    CLI::App* where = app.add_option_group("address")->require_option(1);
    where->add_option("--socket", choice.address.socket, "Unix-domain socket of the server");
    where->add_option("--port", choice.address.port, "TCP port of the server on this machine");
    app.add_option("--alarms", choice.alarms, "how many")->check(CLI::Range(1, 999999))->capture_default_str();
    app.add_option("--batch", choice.batch, "alarms in a request")->check(CLI::Range(1, 1000))->capture_default_str();
}

void perform(const Choice& choice)
{
    const auto server = makeServer(choice.server);
    if (choice.scenario == "listing") {
        measureListing(*server, choice.address, choice.alarms);
    } else {
        const int batch = choice.scenario == "singles" ? 1 : choice.batch;
        RaiseRun(*server, choice.address, choice.alarms, batch).perform();
    }
}

int run(int argc, char** argv)
{
    CLI::App app("Raises or lists alarms over HTTP; prints name, value and unit of each figure.");
    Choice choice;
    define(app, choice);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& e) {
        return app.exit(e) == 0 ? 0 : 1;
    }
    perform(choice);
    return 0;
}

}  // namespace

int main(int argc, char** argv)
{
    try {
        return run(argc, argv);
    } catch (const std::exception& e) {
        std::fprintf(stderr, "zorv-bench-http: %s\n", e.what());
        return 1;
    }
}
