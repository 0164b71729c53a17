#include "EventText.hpp"
#include "Follower.hpp"
#include "commands/Arguments.hpp"
#include "commands/Command.hpp"

namespace ZorvCtl {

namespace {

constexpr std::chrono::hours longWait(1);

struct NotificationsOptions {
    bool follow = false;
    bool json = false;
    int version = 3;
    std::string after;
};

Target targetOf(const NotificationsOptions& options, const std::string& after)
{
    Target target("/v1/notifications");
    target.parameter("version", std::to_string(options.version));
    if (!after.empty()) {
        target.parameter("after", after);
    }
    return target;
}

void print(const Console& console, const Event& event, bool asJson)
{
    console.out << (asJson ? eventJson(event) : eventText(console, event)) << "\n";
    console.flush();
}

void printHistory(const Context& context, NodeConnection& connection, const NotificationsOptions& options)
{
    Target target = targetOf(options, options.after.empty() ? "oldest" : options.after);
    const auto stream = connection.follow(target.parameter("follow", "false"), "");
    for (Event event; stream->next(event, longWait) == EventStream::Next::event; event = {}) {
        print(context.console, event, options.json);
    }
    context.interruption.waitFor({});
}

void showNotifications(const Context& context, const NotificationsOptions& options)
{
    NodeConnection connection = context.connect();
    if (!options.follow) {
        printHistory(context, connection, options);
        return;
    }
    Follower follower(connection, context.console, targetOf(options, options.after), targetOf(options, ""));
    for (Event event;; event = {}) {
        follower.next(event);
        print(context.console, event, options.json);
    }
}

}  // namespace

void addNotificationCommands(CLI::App& app, Context& context)
{
    const auto command =
        addCommand<NotificationsOptions>(app, context, "notifications", "Print northbound notifications, one line each",
                                         R"(Examples:
  zorvctl notifications                     # what the node's history has
  zorvctl notifications --after 120.7       # what it has after these sequence numbers
  zorvctl notifications --follow            # what comes from now on, until Ctrl-C
  zorvctl notifications --follow --after oldest
  zorvctl notifications --follow --json --version 2

Without --follow it ends when the history has been printed.
With --follow it connects again when the node restarts, and goes on where it was. "resync" says that
notifications are missing, "rebuilt" that the node has made its list anew: read zorvctl alarms then.)",
                                         &showNotifications);
    command.app.add_flag("--follow", command.options.follow, "Go on with what comes, until Ctrl-C");
    command.app.add_option("--version", command.options.version, "Northbound version, 3 (default) or 2")
        ->type_name("NUMBER")
        ->check(CLI::IsMember({3, 2}));
    command.app.add_option("--after", command.options.after, "Begin after these sequence numbers, or with the oldest")
        ->type_name("STATEFUL.STATELESS|oldest")
        ->check(checkedBy(&parsePlace));
    command.app.add_flag("--json", command.options.json, "One JSON object a line");
}

}  // namespace ZorvCtl
