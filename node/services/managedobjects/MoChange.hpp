/// What a transaction writes, and what has changed by it.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "YaltOamSpiCmEvent_1.h"
#include "model/Model.hpp"
#include "services/managedobjects/MoState.hpp"

namespace ZorvNode {

using namespace ZorvInput;

/// One write on one object: its new state whole (created), one attribute (name and value), or its end (neither).
struct MoWrite {
    std::string dn;
    MoInstanceT created;
    MoNamedValue attribute;
    bool bySystem = false;
};

/// One changed object, as configuration-change events tell it.
struct MoChange {
    YaltOamSpiCmEvent_ChangeTypeT type = YALT_CM_EVENT_ATTRIBUTES_CHANGED;
    std::string dn;
    std::vector<std::string> attributes;
};

/// Applies a write. False when it does not fit the state: no such object, no parent, or it exists already.
bool apply(const MoWrite& write, MoState& state);

/// The differences of these objects between two states, in the order given. Attributes that do not notify are left out.
std::vector<MoChange> differences(const MoState& before, const MoState& after, const Model& model,
                                  const std::vector<std::string>& dns);

}  // namespace ZorvNode
