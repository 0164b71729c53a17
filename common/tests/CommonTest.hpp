/// What the tests of the common library stand on: a connected middleware of fakes.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Middleware.hpp"

namespace Zorv {

class CommonTest : public testing::Test {
protected:
    CommonTest() { middleware.connect(); }

    /// Everything the code under test did since the last look.
    ZorvFakes::Journal::Entries journal() { return middleware.journal.take(); }

    ZorvFakes::Middleware middleware;
};

}  // namespace Zorv
