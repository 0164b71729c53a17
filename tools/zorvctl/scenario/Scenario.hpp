/// A scenario: timed actions on a node (docs/formats/scenario.md).
#pragma once

#include <string>
#include <variant>
#include <vector>

#include "notification/FmNotification.hpp"

namespace ZorvCtl {

struct PublishAction {
    std::string kind;  ///< raise, clear or alert
    ZorvInput::FmNotification notification;
};

struct SuppressAction {
    bool on = false;
};

/// set, create or delete of a managed object, as the JSON that stands in the line: {"set": {...}}.
/// What its values mean depends on the node's model at the time.
struct ChangeAction {
    std::string json;
};

struct SettleAction {
    double quietSeconds = 0.5;
};

struct ScenarioAction {
    unsigned long line = 0;
    double at = 0;  ///< seconds from the beginning

    std::variant<PublishAction, SuppressAction, ChangeAction, SettleAction> what;
};

struct Scenario {
    std::string file;
    std::string name;
    std::vector<ScenarioAction> actions;
};

}  // namespace ZorvCtl
