/// What the tests of fault management stand on: a connected middleware of fakes that the component manager reaches too.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "FmComponentManager.hpp"
#include "Middleware.hpp"

namespace ZorvFm {

class FmTest : public testing::Test {
public:
    ~FmTest() override { FmComponentManager::instance().setPortal(nullptr); }

protected:
    FmTest()
    {
        middleware.connect();
        const void* portal = ZorvFakes::Middleware::accessor()->getPortal("1");
        FmComponentManager::instance().setPortal(static_cast<const ZorvMgmtSpiPortal_1T*>(portal));
        middleware.journal.take();
    }

    /// Everything the code under test did since the last look.
    ZorvFakes::Journal::Entries journal() { return middleware.journal.take(); }

    ZorvFakes::Middleware middleware;
};

}  // namespace ZorvFm
