/// The managed objects that fault management reads and writes, planted with a few words.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "FakeManagedObjects.hpp"

namespace ZorvFakes {

/// An alarm type as the model describes it.
struct FmAlarmTypeSpec {
    uint32_t majorType = 1;
    uint32_t minorType = 1;
    bool isStateful = true;
    int32_t eventType = 2;
    std::string specificProblem = "Link failure";
    uint32_t probableCause = 14;
    std::string additionalText = "";
    std::optional<int32_t> configuredSeverity;  ///< in the model's own numbers: 3 critical to 6 warning
};

class FmModel {
public:
    static constexpr const char* elementDn = "ManagedElement=1";
    static constexpr const char* fmDn = "ManagedElement=1,SystemFunctions=1,Fm=1";

    explicit FmModel(FakeManagedObjects& objects);

    /// The element, the system functions and the FM object with all its attributes.
    void plant(uint32_t heartbeatInterval = 60);

    /// The name under which the element is known northbound; nothing: it has none.
    void setExternalId(const std::optional<std::string>& externalId);

    /// Nothing: the attribute has no value.
    void setHeartbeatInterval(const std::optional<uint32_t>& seconds);

    /// An alarm model; its DN.
    std::string plantModel(const std::string& name);

    /// An alarm type in a model, which is planted when missing; its DN.
    std::string plantType(const std::string& model, const std::string& name, const FmAlarmTypeSpec& type);

    /// "lastSequenceNo=1 lastChanged='..' totalActive=1 sumCritical=0 sumMajor=1 sumMinor=0 sumWarning=0" as committed.
    std::string summary() const;

private:
    FakeManagedObjects& objects;
};

}  // namespace ZorvFakes
