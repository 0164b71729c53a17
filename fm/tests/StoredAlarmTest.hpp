/// What the tests of both stored formats stand on: traces shown, and a look at the failures of the readers.
#pragma once

#include <string>

#include "FmTest.hpp"
#include "StoredFields.hpp"

namespace ZorvFm {

class StoredAlarmTest : public FmTest {
protected:
    StoredAlarmTest() { middleware.journal.show({ZorvFakes::Topic::Trace}); }

    /// The journal tells that this text could not be read, and nothing else.
    void expectFailure(const std::string& reason, const std::string& text)
    {
        const std::string line = "Failed to deserialize alarm: " + reason + ", data :" + text;
        EXPECT_THAT(journal(), testing::ElementsAre("log 3 " + line, "trace 3 FM " + line));
    }
};

}  // namespace ZorvFm
