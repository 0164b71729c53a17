#include "Failure.hpp"
#include "Publishing.hpp"
#include "TimeText.hpp"
#include "commands/Arguments.hpp"
#include "commands/Command.hpp"
#include "files/LineText.hpp"
#include "notification/NotificationReader.hpp"
#include "notification/NotificationWriter.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

namespace {

struct PublishOptions {
    std::string kind;
    std::string dn;
    std::string type;
    std::string severity = "cleared";
    std::string text;
    std::vector<std::string> info;
    std::string time;
    std::string framework = "yalt";
    int version = 0;  // 0: the framework's newest
};

FmNotification notificationOf(const PublishOptions& options)
{
    const AlarmType type = parseFullType(options.type);
    FmNotification notification;
    notification.framework = options.framework == "zorv" ? FmFramework::zorv : FmFramework::yalt;
    notification.version = options.framework == "zorv" ? 2 : 4;
    if (options.version != 0) {
        notification.version = options.version;
    }
    notification.dn = options.dn;
    notification.majorType = type.major;
    notification.minorType = *type.minor;
    notification.severity = parseSeverity(options.severity);
    notification.text = options.text;
    notification.eventTime = options.time.empty() ? timeNow() : parseEventTime(options.time);
    for (const std::string& pair : options.info) {
        notification.info.push_back(parsePair(pair));
    }
    return notification;
}

void publishOne(const Context& context, const PublishOptions& options)
{
    const FmNotification notification = notificationOf(options);
    NodeConnection connection = context.connect();
    if (const auto rejection = publish(connection, ZorvInput::notificationJson(options.kind, notification), "routed")) {
        throw Failure(refused, rejection->reason);
    }
    const std::string severity = options.kind == "clear" ? "" : severityText(notification.severity) + " ";
    context.console.out << "published: " << options.kind << " " << severity << toLineText(options.dn) << " "
                        << notification.majorType << "/" << notification.minorType << "\n";
}

CLI::App& addPublishCommand(CLI::App& app, Context& context, const std::string& kind, const std::string& description,
                            const std::string& examples)
{
    const auto command = addCommand<PublishOptions>(app, context, kind, description, examples, &publishOne);
    PublishOptions& options = command.options;
    options.kind = kind;
    command.app.add_option("DN", options.dn, "Distinguished name of the alarming resource")->required();
    command.app.add_option("TYPE", options.type, "MAJOR/MINOR, the numbers of the alarm type")
        ->required()
        ->check(checkedBy(&parseFullType));
    if (kind != "clear") {
        command.app
            .add_option("--severity", options.severity,
                        "critical, major, minor, warning, indeterminate, cleared, or a number")
            ->required()
            ->type_name("SEVERITY")
            ->check(checkedBy(&parseSeverity));
    }
    command.app.add_option("--text", options.text, "Additional text")->type_name("TEXT");
    command.app.add_option("--info", options.info, "Additional information; may be given more than once")
        ->type_name("NAME=VALUE")
        ->expected(1)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->check(checkedBy(&parsePair));
    command.app.add_option("--time", options.time, "When it happened, RFC 3339 or ns since 1970 (default: now)")
        ->type_name("TIME")
        ->check(checkedBy(&parseEventTime));
    command.app.add_option("--framework", options.framework, "Event framework, yalt (default) or zorv")
        ->type_name("NAME")
        ->check(CLI::IsMember({"yalt", "zorv"}));
    command.app.add_option("--version", options.version, "Structure version, 1, 2 or 4 (default: the newest)")
        ->type_name("NUMBER")
        ->check(CLI::IsMember({1, 2, 4}));
    return command.app;
}

}  // namespace

void addPublishCommands(CLI::App& app, Context& context)
{
    addPublishCommand(app, context, "raise", "Raise an alarm", R"(Examples:
  zorvctl raise ManagedElement=1,Port=4 32473/101 --severity major --text 'no light'
  zorvctl raise ManagedElement=1,Fan=2 32473/205 --severity minor --info rpm=300 --info wanted=2400
  zorvctl raise ManagedElement=1,Port=4 32473/101 --severity major --time 2024-05-01T06:00:00Z

The alarm model decides what becomes of it: stateful or not, with which severity and cause.
The answer comes when the node's event router has taken it; look with zorvctl alarms.)");
    addPublishCommand(app, context, "clear", "Clear an alarm, or all whose DN matches a regular expression",
                      R"(Examples:
  zorvctl clear ManagedElement=1,Port=4 32473/101
  zorvctl clear 'ManagedElement=1,Slot=2,.*' 32473/101 --text 'card reset')");
    addPublishCommand(app, context, "alert", "Tell an event that is not to be cleared later", R"(Examples:
  zorvctl alert ManagedElement=1 32473/901 --severity warning --text 'login failed' --info user=root

raise and alert publish the same; which it becomes is decided by the alarm model.)");
}

}  // namespace ZorvCtl
