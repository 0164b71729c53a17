/// A scenario: any file is refused with one line, or makes actions in the order of their times, whose notifications and
/// changes are as well-formed as what a program sends.
#include "InputErrors.hpp"
#include "InputFile.hpp"
#include "scenario/ActionReader.hpp"
#include "scenario/ScenarioReader.hpp"
#include "json/Json.hpp"

using namespace ZorvFuzz;
using namespace ZorvCtl;
using ZorvInput::InputError;

namespace {

void check(const PublishAction& action)
{
    const ZorvInput::FmNotification& notification = action.notification;
    require(action.kind == "raise" || action.kind == "clear" || action.kind == "alert", "a notification has its kind");
    require(action.kind != "clear" || notification.severity == 0, "a clear is cleared");
    require(notification.version == 1 || notification.version == 2 || notification.version == 4, "a version exists");
    require(notification.info.empty() || notification.version == 4, "additional information is in version 4");
    require(notification.dn.find('\0') == std::string::npos, "a DN has no end inside");
    require(notification.text.find('\0') == std::string::npos, "a text has no end inside");
}

void check(const ChangeAction& action)
{
    ZorvInput::JsonDocumentT document;
    ZorvInput::parseJson(action.json, deepestScenarioLine, document);
    require(document.IsObject() && document.MemberCount() == 1, "a change is an object with one member");
}

void check(const SettleAction& action)
{
    require(action.quietSeconds >= 0.05 && action.quietSeconds <= 600, "settling ends");
}

void check(const SuppressAction&)
{
}

void check(const Scenario& scenario)
{
    double latest = 0;
    unsigned long line = 0;
    require(!scenario.actions.empty(), "a scenario has an action");
    for (const ScenarioAction& action : scenario.actions) {
        require(action.at >= latest && action.at <= longestScenario, "times do not go back");
        require(action.line > line, "lines go on");
        latest = action.at;
        line = action.line;
        std::visit([](const auto& what) { check(what); }, action.what);
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const InputFile file;
    const std::string path = file.write(textOf(data, size));
    try {
        check(readScenario(path));
    } catch (const InputError& e) {
        requireOneLine(e, path);
    }
    return 0;
}
