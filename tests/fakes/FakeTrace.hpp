/// The trace service: "trace 8 FM text".
///
/// As with the logs, the places of the levels outlive this object. A new FakeTrace admits everything (level 8), so that
/// every trace is formatted in every test; the journal shows traces only when asked.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>

#include "Fake.hpp"
#include "YaltMwSpiTrace_1.h"

namespace ZorvFakes {

/// One trace with its source location.
struct TraceLine {
    std::string group;
    int32_t level = 0;
    std::string file;
    uint32_t line = 0;
    std::string function;
    std::string text;
};

class FakeTrace : public Fake<FakeTrace> {
public:
    explicit FakeTrace(Journal& journal);

    static const YaltMwSpiTrace_1T* table();

    static void setLevel(const std::string& group, int32_t level);

    /// For all groups, present and future.
    static void setLevels(int32_t level);

    /// The latest trace.
    TraceLine last() const;

    // The operations behind the table.
    int32_t getLevel(const char* group, const int32_t** level);
    int32_t write(const char* group, int32_t level, const char* file, uint32_t line, const char* function,
                  const char* text);

private:
    mutable std::mutex mutex;
    TraceLine latest;  // guarded by mutex
};

}  // namespace ZorvFakes
