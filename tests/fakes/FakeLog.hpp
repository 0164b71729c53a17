/// The log service: "log 3 text" for the system log, "record 5 text" for the alarm log, "NAME 5 text" for others.
///
/// Levels are read by the users through pointers that stay valid for the life of the process; so the places outlive
/// this object, which only sets them. A new FakeLog starts with level 6 in both logs.
#pragma once

#include <mutex>
#include <string>

#include "Fake.hpp"
#include "ZorvMwSpiLog_1.h"

namespace ZorvFakes {

class FakeLog : public Fake<FakeLog> {
public:
    explicit FakeLog(Journal& journal);

    static const ZorvMwSpiLog_1T* table();

    /// Texts of a graver or equal level are wanted from now on.
    static void setLevel(const std::string& logName, int32_t level);

    // The operations behind the table.
    int32_t getLevel(const char* logName, const int32_t** level);
    int32_t write(const char* logName, int32_t level, const char* text);
};

}  // namespace ZorvFakes
