#include "app/Node.hpp"

#include <utility>

#include "Logging.hpp"
#include "Portal.hpp"
#include "ZorvMwSpiLog_1.h"

namespace ZorvNode {

namespace {

constexpr std::chrono::seconds longestDrain(5);
const char* const traceGroup = "Node";

}  // namespace

Node::Node(const NodeConfiguration& nodeConfiguration, ModelFile modelFile, std::ostream* follow,
           std::function<void()> onFollowFailed)
    : logs(nodeConfiguration.logDirectory, nodeConfiguration.logLevel, nodeConfiguration.logRotation),
      trace(nodeConfiguration.logDirectory + "/trace.log", nodeConfiguration.traceRotation,
            nodeConfiguration.traceLevels),
      router({nodeConfiguration.queueBound, nodeConfiguration.consumerBound},
             [this](std::int32_t level, const std::string& text) { log(level, text); }),
      source(router, nodeConfiguration.retainedNotifications),
      store(std::move(modelFile)),
      repository(store.snapshot().model),
      transactions(nodeConfiguration.transactionBound),
      cmEvents(router),
      objects(store, transactions, portal, cmEvents),
      management(transactions, objects),
      state(nodeConfiguration.store, {nodeConfiguration.listBound, nodeConfiguration.itemBound, ListLimits().itemSize},
            [this](std::int32_t level, const std::string& text) { log(level, text); }),
      lists(state.getLists()),
      configuration(nodeConfiguration),
      routerTable(router),
      repositoryTable(repository),
      transactionTables(transactions),
      objectTable(objects),
      logTable(logs),
      traceTable(trace),
      listTable(lists),
      portalTables(portal),
      runner(portal, [this](std::int32_t level, const std::string& text) { log(level, text); }),
      follower(router, follow, std::move(onFollowFailed))
{
    provideServices();
    transactions.startTimer();
}

Node::~Node()
{
    stop();
    transactions.stopTimer();
    Zorv::Logging::close();
    Zorv::Portal::instance().open(nullptr);
}

void Node::provideServices()
{
    const std::string own = "ZorvNode";
    portal.provide(own, "ZorvMwSpiLog", "1", LogTable::table());
    portal.provide(own, "YaltMwSpiTrace", "", TraceTable::table());
    portal.provide("ZorvOamSpiEventService", "ZorvOamSpiEventRouter", "1", EventRouterTable::table());
    portal.provide(own, "ZorvMwSpiReplicatedList", "1", ReplicatedListTable::table());
    portal.provide("ZorvOamSpiCmRouterService", "ZorvOamSpiManagedObject", "3", ManagedObjectTable::table());
    portal.provide("ZorvOamSpiModelRepositoryService", "ZorvOamSpiModelRepository", "1", ModelRepositoryTable::table());
    portal.provide("ZorvOamSpiTransactionService", "ZorvOamSpiTransactionMaster", "1", TransactionTables::master());
    portal.provide("ZorvOamSpiTransactionService", "ZorvOamSpiTransaction", "1", TransactionTables::participant());
    portal.provide("YaltOamSpiTransactionService", "YaltOamSpiTransaction", "1", TransactionTables::participant());
    Zorv::Portal::instance().open(PortalTables::accessor());
    Zorv::Logging::open(Zorv::Portal::instance(), traceGroup);
}

void Node::start()
{
    for (const std::string& path : configuration.libraries) {
        libraries.push_back(
            std::make_unique<LoadedLibrary>(path, configuration.file, *PortalTables::accessor(), portal,
                                            [this](std::int32_t level, const std::string& text) { log(level, text); }));
        log(ZORV_LOG_INFORMATION, "library " + path + " loaded");
    }
    runner.start(ZORV_STATE_CHANGE_ACTIVATE);
    log(ZORV_LOG_NOTICE, "node started");
}

void Node::stop()
{
    if (libraries.empty()) {
        return;
    }
    router.waitUntilIdle(longestDrain);  // a component that stops drops what still waits for its consumers
    runner.stop(ZORV_STATE_CHANGE_DEACTIVATE);
    router.waitUntilIdle(longestDrain);
    const bool ended = awaitCallbacks();
    while (!libraries.empty()) {
        libraries.back()->unload(!ended);
        libraries.pop_back();
    }
    log(ZORV_LOG_NOTICE, "node stopped");
}

bool Node::awaitCallbacks()
{
    const bool ended = router.waitUntilCallbacksEnded(longestDrain);
    if (!ended) {
        log(ZORV_LOG_ERROR, "a callback does not end; the libraries stay in memory");
    }
    return ended;
}

void Node::replaceModel(ModelFile file)
{
    repository.use(file.model);
    objects.replaceModel(std::move(file));
    log(ZORV_LOG_NOTICE, "model reread");
}

void Node::log(std::int32_t level, const std::string& text)
{
    logs.write(ZORV_LOG_SYSTEM, level, text);
}

std::uint64_t Node::getActivity() const
{
    return router.getStatistics().accepted + router.getStatistics().lost + lists.getNumberOfChanges() +
           logs.getNumberOfRecords() + logs.getNumberOfTexts() + objects.getNumberOfCommits();
}

}  // namespace ZorvNode
