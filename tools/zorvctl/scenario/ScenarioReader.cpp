#include "scenario/ScenarioReader.hpp"

#include <sstream>

#include "TimeText.hpp"
#include "files/InputError.hpp"
#include "files/TextFile.hpp"
#include "scenario/ActionReader.hpp"
#include "json/JsonFields.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

namespace {

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
                readObject(line);
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
    void readObject(const std::string& line)
    {
        JsonDocumentT document;
        parseJson(line, deepestScenarioLine, document);
        if (!document.IsObject()) {
            throw ValueError("not a JSON object", line);
        }
        JsonFields fields(document);
        if (fields.has("scenario")) {
            readHeader(fields);
            return;
        }
        ScenarioAction action = readAction(fields, startTime);
        action.line = number;
        if (!scenario.actions.empty() && action.at < scenario.actions.back().at) {
            throw FieldError("at", "earlier than the line before", jsonText(fields.get("at")));
        }
        scenario.actions.push_back(std::move(action));
    }

    void readHeader(JsonFields& fields)
    {
        if (number != 1) {
            throw FieldError("scenario", "only in the first line");
        }
        scenario.name = fields.text("scenario");
        fields.text("description", "");
        if (fields.has("start")) {
            startTime = readStart(fields.text("start"));
        }
        fields.expectNoOther();
    }

    static std::uint64_t readStart(const std::string& text)
    {
        try {
            return parseTime(text);
        } catch (const ValueError& e) {
            throw ValueError(std::string("start: ") + e.what());
        }
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

}  // namespace ZorvCtl
