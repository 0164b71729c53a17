#include "Middleware.hpp"

#include "Logging.hpp"
#include "Portal.hpp"

namespace ZorvFakes {

Middleware::Middleware()
{
    offerAll();
}

Middleware::~Middleware()
{
    Zorv::Logging::close();
    Zorv::Portal::instance().open(nullptr);
}

void Middleware::connect(const char* traceGroup)
{
    Zorv::Portal::instance().open(accessor());
    Zorv::Logging::open(Zorv::Portal::instance(), traceGroup);
    journal.take();
}

void Middleware::offerAll()
{
    portal.offer("ZorvMwLogService", "ZorvMwSpiLog", "1", FakeLog::table());
    portal.offer("YaltMwTraceService", "YaltMwSpiTrace", "", FakeTrace::table());
    portal.offer("ZorvOamSpiEventService", "ZorvOamSpiEventRouter", "1", FakeEventRouter::table());
    portal.offer("ZorvMwReplicatedListService", "ZorvMwSpiReplicatedList", "1", FakeReplicatedList::table());
    portal.offer("ZorvOamSpiCmRouterService", "ZorvOamSpiManagedObject", "3", FakeManagedObjects::table());
    portal.offer("ZorvOamSpiModelRepositoryService", "ZorvOamSpiModelRepository", "1", FakeModelRepository::table());
    portal.offer("ZorvOamSpiTransactionService", "ZorvOamSpiTransactionMaster", "1", FakeTransactions::masterTable());
    portal.offer("ZorvOamSpiTransactionService", "ZorvOamSpiTransaction", "1", FakeTransactions::participantTable());
    portal.offer("YaltOamSpiTransactionService", "YaltOamSpiTransaction", "1", FakeTransactions::participantTable());
}

}  // namespace ZorvFakes
