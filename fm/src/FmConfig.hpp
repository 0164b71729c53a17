/// The tunable values of the FM component.
///
/// The filter values come from the component's configuration file, the heartbeat interval from the FM managed object.
///
/// Threads:   loaded before the worker starts; the heartbeat interval is the worker's.
/// Failure:   load logs what is wrong and answers -1; values read before the failure stay, in seconds.
#pragma once

#include <cstdint>
#include <string>

namespace ZorvFm {

class FmConfig {
public:
    /// Reads the file's one element "ZorvFmComponent", starting from the defaults. 0, or -1 with an error line.
    int load(const std::string& fileName);

    /// Seconds; 0: no heartbeats.
    unsigned int getHeartbeatInterval() const { return static_cast<unsigned int>(heartbeatInterval); }
    void setHeartbeatInterval(unsigned int seconds) { heartbeatInterval = seconds; }

    std::uint64_t heartbeatInterval = 60;             // s
    std::uint64_t alarmToggleSilentTimeout = 0;       // ns; a toggling alarm ceases after this silence
    std::uint64_t transientRaiseAlarmFilterTime = 0;  // ns; 0: filter off
    std::uint64_t transientCeaseAlarmFilterTime = 0;  // ns; 0: filter off
    bool reuseAdditionalTextFromAalAtClear = false;
    std::uint32_t alarmToggleTriggerCount = 1;  // activations within the window that make an alarm toggling
    std::uint64_t alarmToggleWindowSize = 0;    // ns; 0: no alarm ever toggles

private:
    void read(const std::string& fileName);
    void convertToNanoseconds();
};

}  // namespace ZorvFm
