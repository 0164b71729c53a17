/// What the tests of the model connector stand on: a model with the FM object, and a notification to be completed.
#pragma once

#include "FmJournal.hpp"
#include "FmTest.hpp"
#include "MOConnector.hpp"
#include "MoAccessor.hpp"

namespace ZorvFm {

class ConnectorTest : public FmTest {
protected:
    using Entries = ZorvFakes::Journal::Entries;

    static constexpr const char* fmDn = ZorvFakes::FmModel::fmDn;

    ConnectorTest() { middleware.fmModel.plant(); }

    ~ConnectorTest() override
    {
        accessor.close();
        EXPECT_EQ(0U, middleware.objects.unreleased());
        EXPECT_EQ(0U, middleware.objects.openIterators());
        EXPECT_EQ(middleware.transactions.begun(),
                  middleware.transactions.committed() + middleware.transactions.aborted());
    }

    /// Lets the process find the FM object.
    void findFmObject()
    {
        MOConnector::getFmDn(accessor);
        accessor.close();
        journal();
    }

    static Entries children(const std::string& parent, const std::string& className, const Entries& names)
    {
        Entries entries = {"newMoIterator " + parent + " " + className + " -> 0"};
        for (const std::string& name : names) {
            entries.push_back("nextMo -> 0 " + name);
        }
        entries.insert(entries.end(), {"nextMo -> -2", "finalizeMoIterator -> 0"});
        return entries;
    }

    static Entries attributes(const std::string& dn, const Entries& names)
    {
        Entries entries;
        for (const std::string& name : names) {
            entries.push_back("getMoAttribute " + dn + " " + name + " -> 0");
        }
        return entries;
    }

    MOConnector connector;
    Zorv::MoAccessor accessor{MOConnector::lockPolicy, MOConnector::accessTimeout};
};

}  // namespace ZorvFm
