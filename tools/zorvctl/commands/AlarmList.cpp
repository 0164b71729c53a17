#include "commands/AlarmList.hpp"

#include "JsonAccess.hpp"
#include "Names.hpp"
#include "Table.hpp"
#include "commands/Arguments.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

namespace {

Target targetOf(const AlarmFilter& filter, const std::string& after)
{
    Target target("/v1/alarms");
    if (!filter.severity.empty()) {
        target.parameter("severity", parseSeverityNames(filter.severity));
    }
    if (!filter.dn.empty()) {
        target.parameter("dnPrefix", filter.dn);
    }
    if (!filter.type.empty()) {
        const AlarmType type = parseType(filter.type);
        target.parameter("majorType", std::to_string(type.major));
        if (type.minor) {
            target.parameter("minorType", std::to_string(*type.minor));
        }
    }
    if (!after.empty()) {
        target.parameter("after", after);
    }
    return target;
}

Table::RowT rowOf(const JsonT& alarm)
{
    const std::string severity = cellOf(alarm, "activeSeverity");
    return {cellOf(alarm, "fmAlarmId"),
            {severity, colourOf(severity)},
            cellOf(alarm, "lastEventTime"),
            cellOf(alarm, "source"),
            cellOf(alarm, "majorType") + "/" + cellOf(alarm, "minorType"),
            cellOf(alarm, "specificProblem"),
            cellOf(alarm, "additionalText")};
}

}  // namespace

void readAlarms(NodeConnection& connection, const AlarmFilter& filter, const std::function<void(const JsonT&)>& take)
{
    std::string after;
    do {
        const JsonDocumentT page = connection.get(targetOf(filter, after));
        for (const JsonT* alarm : entriesOf(page, "alarms")) {
            take(*alarm);
        }
        after = textOr(page, "next", "");
    } while (!after.empty());
}

void printAlarms(const Console& console, NodeConnection& connection, const AlarmFilter& filter)
{
    Table table({"ID", "SEVERITY", "LAST EVENT", "RESOURCE", "TYPE", "PROBLEM", "TEXT"});
    readAlarms(connection, filter, [&](const JsonT& alarm) { table.add(rowOf(alarm)); });
    if (table.size() > 0) {
        table.print(console);
    }
    const bool isFiltered = !(filter.severity + filter.dn + filter.type).empty();
    console.out << (table.size() == 0 ? "no" : std::to_string(table.size())) << " active alarm"
                << (table.size() == 1 ? "" : "s") << (isFiltered ? " that match" : "")
                << (isFiltered && table.size() == 1 ? "es" : "") << "\n";
}

}  // namespace ZorvCtl
