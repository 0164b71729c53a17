#include "EventText.hpp"
#include "Follower.hpp"
#include "JsonAccess.hpp"
#include "Table.hpp"
#include "commands/Command.hpp"
#include "json/JsonWriter.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

namespace {

struct LogOptions {
    std::string name = "system";
    int lines = 100;
    bool follow = false;
};

struct LevelOptions {
    bool json = false;
};

struct LogLevelOptions {
    std::string level;
};

struct TraceLevelOptions {
    std::string group;
    int level = 0;
};

Target logTarget(const LogOptions& options, int lines)
{
    Target target = Target("/v1/logs").segment(options.name).parameter("lines", std::to_string(lines));
    return options.follow ? target.parameter("follow", "true") : target;
}

void showLog(const Context& context, const LogOptions& options)
{
    NodeConnection connection = context.connect();
    if (!options.follow) {
        const JsonDocumentT answer = connection.get(logTarget(options, options.lines));
        for (const JsonT* line : entriesOf(answer, "lines")) {
            context.console.out << cellOf(*line) << "\n";
        }
        return;
    }
    Follower follower(connection, context.console, logTarget(options, options.lines), logTarget(options, 0));
    for (Event event;; event = {}) {
        follower.next(event);
        context.console.out << eventText(context.console, event) << "\n";
        context.console.flush();
    }
}

void printLevels(const Context& context, const JsonT& levels)
{
    Table table({});
    table.add({"log", cellOf(levels, "log")});
    const JsonT* groups = find(levels, "trace");
    if (groups != nullptr && groups->IsObject()) {
        for (const auto& group : groups->GetObject()) {
            table.add({"trace " + cellOf(group.name), cellOf(group.value)});
        }
    }
    table.print(context.console);
}

void showLevels(const Context& context, const LevelOptions& options)
{
    const JsonDocumentT levels = context.connect().get(Target("/v1/levels"));
    if (options.json) {
        context.console.out << indentedJson(levels);
    } else {
        printLevels(context, levels);
    }
}

void setLogLevel(const Context& context, const LogLevelOptions& options)
{
    JsonWriter body;
    body.beginObject().member("log", options.level).endObject();
    printLevels(context, context.connect().put(Target("/v1/levels"), body.take()));
}

void setTraceLevel(const Context& context, const TraceLevelOptions& options)
{
    JsonWriter body;
    body.beginObject().key("trace").beginObject().member(options.group, options.level).endObject().endObject();
    printLevels(context, context.connect().put(Target("/v1/levels"), body.take()));
}

void addLevelCommands(CLI::App& app, Context& context)
{
    const auto level =
        addCommand<LevelOptions>(app, context, "level", "Show or change log and trace levels", R"(Examples:
  zorvctl level                        # as they are
  zorvctl level log information
  zorvctl level trace FM 8)",
                                 &showLevels);
    level.app.require_subcommand(0, 1);
    level.app.add_flag("--json", level.options.json, "As JSON");
    const auto log = addCommand<LogLevelOptions>(level.app, context, "log", "Change the log's level", R"(Examples:
  zorvctl level log warning)",
                                                 &setLogLevel);
    log.app.add_option("LEVEL", log.options.level, "error, warning, notice or information")
        ->required()
        ->check(CLI::IsMember({"error", "warning", "notice", "information"}));
    const auto trace =
        addCommand<TraceLevelOptions>(level.app, context, "trace", "Change a trace group's level", R"(Examples:
  zorvctl level trace FM 8
  zorvctl level trace FM 0         # off)",
                                      &setTraceLevel);
    trace.app.add_option("GROUP", trace.options.group, "Trace group")->required();
    trace.app.add_option("LEVEL", trace.options.level, "0 (off) to 8")->required()->check(CLI::Range(0, 8));
}

}  // namespace

void addLogCommands(CLI::App& app, Context& context)
{
    const auto log = addCommand<LogOptions>(
        app, context, "log", "Print the system log, the alarm log or the log of publications", R"(Examples:
  zorvctl log                          # the last 100 lines of the system log
  zorvctl log alarms --lines 1000
  zorvctl log system --follow          # until Ctrl-C)",
        &showLog);
    log.app.add_option("NAME", log.options.name, "system (default), alarms or publications")
        ->check(CLI::IsMember({"system", "alarms", "publications"}));
    log.app.add_option("--lines", log.options.lines, "How many of the latest lines (default 100)")
        ->type_name("NUMBER")
        ->check(CLI::Range(0, 10000));
    log.app.add_flag("--follow", log.options.follow, "Go on with what is written later, until Ctrl-C");
    addLevelCommands(app, context);
}

}  // namespace ZorvCtl
