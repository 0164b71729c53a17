/// A scenario: timed actions on a node (docs/formats/scenario.md).
#pragma once

#include <Poco/Dynamic/Var.h>

#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "ingress/FmNotification.hpp"

namespace ZorvNode {

enum class NotificationKind { raise, clear, alert };

struct PublishAction {
    NotificationKind kind = NotificationKind::raise;
    FmNotification notification;
};

struct SuppressAction {
    bool on = false;
};

/// Attribute values as JSON; what they mean depends on the model at the time.
using JsonAttributesT = std::vector<std::pair<std::string, Poco::Dynamic::Var>>;

struct SetAction {
    std::string dn;
    JsonAttributesT attributes;
};

struct CreateAction {
    std::string dn;
    JsonAttributesT attributes;
};

struct DeleteAction {
    std::string dn;
};

struct SettleAction {
    double quietSeconds = 0.5;
};

struct ScenarioAction {
    unsigned long line = 0;
    double at = 0;  ///< seconds from the beginning

    std::variant<PublishAction, SuppressAction, SetAction, CreateAction, DeleteAction, SettleAction> what;
};

struct Scenario {
    std::string file;
    std::string name;
    std::vector<ScenarioAction> actions;
};

}  // namespace ZorvNode
