#include "scenario/ScenarioReader.hpp"

#include <Poco/DateTimeFormat.h>
#include <Poco/DateTimeParser.h>
#include <Poco/JSON/Parser.h>
#include <regex.h>

#include <sstream>

#include "RegularExpression.hpp"
#include "files/InputError.hpp"
#include "files/TextFile.hpp"
#include "scenario/ActionReader.hpp"

namespace ZorvNode {

using namespace ZorvInput;

namespace {

/// The parser alone would take a great deal more for a time.
const char* const timePattern =
    "^[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9]{2}:[0-9]{2}:[0-9]{2}([.][0-9]+)?(Z|[+-][0-9]{2}:[0-9]{2})$";

JsonFields parse(const std::string& line)
{
    Poco::JSON::Parser parser;
    parser.setDepth(deepestScenarioLine);
    Poco::Dynamic::Var value;
    try {
        value = parser.parse(line);
    } catch (const Poco::Exception& e) {
        throw ValueError("not JSON: " + e.message());
    }
    if (value.isEmpty() || value.type() != typeid(Poco::JSON::Object::Ptr)) {
        throw ValueError("not a JSON object", line);
    }
    return JsonFields(value.extract<Poco::JSON::Object::Ptr>(), "");
}

std::uint64_t readStart(const std::string& text)
{
    int zone = 0;
    Poco::DateTime start;
    if (!Zorv::RegularExpression(timePattern, REG_EXTENDED | REG_NOSUB).match(text) ||
        !Poco::DateTimeParser::tryParse(Poco::DateTimeFormat::ISO8601_FORMAT, text, start, zone)) {
        throw ValueError("start: not a time like 2024-05-01T06:00:00Z", text);
    }
    start.makeUTC(zone);
    const auto microseconds = start.timestamp().epochMicroseconds();
    if (microseconds < 0) {
        throw ValueError("start: before 1970", text);
    }
    return static_cast<std::uint64_t>(microseconds) * 1000;
}

/// Reads the lines one after the other.
class Reader {
public:
    explicit Reader(const std::string& path) { scenario.file = path; }

    void read(const std::string& line)
    {
        ++number;
        try {
            if (line.size() > longestScenarioLine) {
                throw ValueError("line longer than " + std::to_string(longestScenarioLine) + " bytes");
            }
            if (line.find_first_not_of(" \t\r") != std::string::npos) {
                readObject(parse(line));
            }
        } catch (const ValueError& e) {
            throw InputError(scenario.file, number, e);
        }
    }

    Scenario take()
    {
        if (scenario.actions.empty()) {
            throw InputError(scenario.file, "no action in the file");
        }
        return std::move(scenario);
    }

private:
    void readObject(JsonFields fields)
    {
        if (fields.has("scenario")) {
            readHeader(fields);
            return;
        }
        ScenarioAction action = readAction(fields, startTime);
        action.line = number;
        if (!scenario.actions.empty() && action.at < scenario.actions.back().at) {
            throw ValueError("at: earlier than the line before", jsonText(fields.get("at")));
        }
        scenario.actions.push_back(std::move(action));
    }

    void readHeader(JsonFields& fields)
    {
        if (number != 1) {
            throw ValueError("scenario: only in the first line");
        }
        scenario.name = fields.text("scenario");
        fields.text("description", "");
        if (fields.has("start")) {
            startTime = readStart(fields.text("start"));
        }
        fields.expectNoOther();
    }

    Scenario scenario;
    unsigned long number = 0;
    std::uint64_t startTime = 0;
};

}  // namespace

Scenario readScenario(const std::string& path)
{
    std::istringstream text(readFile(path));
    Reader reader(path);
    for (std::string line; std::getline(text, line);) {
        reader.read(line);
    }
    return reader.take();
}

}  // namespace ZorvNode
