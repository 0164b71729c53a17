#include "runtime/Node.hpp"

#include <algorithm>
#include <thread>
#include <utility>

#include "Logging.hpp"
#include "Portal.hpp"
#include "YaltOamSpiNotificationFm_1.h"
#include "ZorvMwSpiLog_1.h"

namespace ZorvNode {

namespace {

constexpr std::chrono::seconds longestDrain(5);
constexpr std::chrono::milliseconds quietCheck(20);
const char* const traceGroup = "Node";

/// Nothing new is sent to components as long as it lives.
class Held {
public:
    explicit Held(FmNotificationSource& held) : source(held) { source.hold(); }
    ~Held() { source.release(); }

    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

private:
    FmNotificationSource& source;
};

}  // namespace

Node::Node(const NodeConfiguration& nodeConfiguration, ModelFile modelFile)
    : logs(nodeConfiguration.logDirectory, nodeConfiguration.logLevel, nodeConfiguration.logRotation),
      trace(nodeConfiguration.logDirectory + "/trace.log", nodeConfiguration.traceRotation,
            nodeConfiguration.traceLevels),
      state(nodeConfiguration.store, {nodeConfiguration.listBound, nodeConfiguration.itemBound, ListLimits().itemSize},
            [this](std::int32_t level, const std::string& text) { log(level, text); }),
      router({nodeConfiguration.queueBound, nodeConfiguration.consumerBound},
             [this](std::int32_t level, const std::string& text) { log(level, text); }),
      source(router, {nodeConfiguration.inboxBound, nodeConfiguration.queueBound}, state.getDatabase(),
             [this](std::int32_t level, const std::string& text) { log(level, text); }),
      store(std::move(modelFile)),
      repository(store.snapshot().model),
      transactions(nodeConfiguration.transactionBound),
      cmEvents(router),
      objects(store, transactions, portal, cmEvents),
      management(transactions, objects),
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
      keeper(source, {[this] { return getActivity(); }, [this] { return objects.getNumberOfWatchedCommits(); }}),
      storageWatch(storages(), [this](const Storage& storage, bool isFailing) { tellStorage(storage, isFailing); })
{
    logs.whenLosing([this] { storageWatch.wake(); });
    if (state.getDatabase() != nullptr) {
        state.getDatabase()->whenFailing([this] { storageWatch.wake(); });
    }
    objects.watch({"Fm", "lastSequenceNo"});
    provideServices();
    transactions.startTimer();
}

Node::~Node()
{
    stop();
    transactions.stopTimer();
    logs.whenLosing({});
    if (state.getDatabase() != nullptr) {
        state.getDatabase()->whenFailing({});
    }
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

std::vector<Storage> Node::storages()
{
    const auto writeState = [this] {
        state.getLists().catchUp();
        source.catchUp();
        if (state.getDatabase() != nullptr) {
            state.getDatabase()->getWrites().worked();
        }
        return !state.isFailing();
    };
    return {{"state", "the state cannot be written; until it can, what changes is lost when the node ends", writeState},
            {"log", "the logs cannot be written; texts and records are lost", [this] { return logs.tryAgain(); }}};
}

/// Raises the node's own alarm, or clears it, at the start too: an earlier life may have ended before it could.
void Node::tellStorage(const Storage& storage, bool isFailing)
{
    if (!configuration.storageAlarm) {
        return;
    }
    FmNotification notification;
    notification.dn = configuration.storageAlarm->dn + ",Storage=" + storage.name;
    notification.majorType = configuration.storageAlarm->majorType;
    notification.minorType = configuration.storageAlarm->minorType;
    notification.eventTime = static_cast<std::uint64_t>(Poco::Timestamp().epochMicroseconds()) * 1000;
    notification.severity = isFailing ? YALT_FM_SEVERITY_MAJOR : YALT_FM_SEVERITY_CLEARED;
    notification.text = isFailing ? storage.trouble : "";
    source.publish({notification});
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
    source.hold();
    router.waitUntilIdle(longestDrain);  // a component that stops drops what still waits for its consumers
    const FmNotificationSource::Taken taken = source.getLastTaken();
    runner.stop(ZORV_STATE_CHANGE_DEACTIVATE);
    source.noteOrderlyEnd(taken);
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

void Node::rereadModel()
{
    ModelFile file = readModel(configuration.model);
    repository.use(file.model);
    objects.replaceModel(std::move(file));
    log(ZORV_LOG_NOTICE, "model reread");
}

ComponentStatus Node::startComponent(const std::string& name, ZorvStateChangeReason reason)
{
    return runner.start(name, reason);
}

ComponentStatus Node::stopComponent(const std::string& name, ZorvStateChangeReason reason)
{
    const Held held(source);
    router.waitUntilIdle(longestDrain);
    const FmNotificationSource::Taken taken = source.getLastTaken();
    ComponentStatus stopped = runner.stop(name, reason);
    source.noteOrderlyEnd(taken);
    return stopped;
}

bool Node::settle(std::chrono::duration<double> quiet, std::chrono::duration<double> patience)
{
    using ClockT = std::chrono::steady_clock;
    const ClockT::time_point begun = ClockT::now();
    ClockT::time_point quietSince = begun;
    std::uint64_t seen = getActivity();
    while (ClockT::now() - quietSince < quiet) {
        if (interrupted || ClockT::now() - begun > patience) {
            return false;
        }
        std::this_thread::sleep_for(
            std::min<ClockT::duration>(quietCheck, std::chrono::duration_cast<ClockT::duration>(quiet)));
        if (const std::uint64_t now = getActivity(); now != seen || source.hasMoreToSend()) {
            seen = now;
            quietSince = ClockT::now();
        }
    }
    return true;
}

std::vector<std::string> Node::getTroubles()
{
    std::vector<std::string> troubles;
    for (const ComponentStatus& component : getComponents()) {
        if (component.state != ComponentState::started) {
            troubles.push_back("component " + component.name +
                               (component.state == ComponentState::failed ? " could not be started" : " is stopped"));
        }
    }
    if (const std::size_t waiting = source.getNumberWaiting(); waiting > 0) {
        troubles.push_back(std::to_string(waiting) + " notifications wait for a component that takes them");
    }
    if (state.isFailing()) {
        troubles.push_back("the state cannot be written, what changes is kept in memory alone; see SystemLog.log");
    }
    return troubles;
}

std::map<std::string, std::uint64_t> Node::getCounters()
{
    const RouterStatistics& events = router.getStatistics();
    return {{"notificationsPublished", published},
            {"notificationsRejected", rejected},
            {"notificationsRefusedBusy", source.getStatistics().busy},
            {"notificationsSentAgain", source.getStatistics().sentAgain},
            {"publicationsRepeated", source.getStatistics().repeated},
            {"notificationsInInbox", source.getNumberInInbox()},
            {"notificationsWaiting", source.getNumberWaiting()},
            {"eventsAccepted", events.accepted},
            {"eventsDelivered", events.delivered},
            {"eventsHandedBack", events.dropped},
            {"eventsLost", events.lost},
            {"eventsRefused", events.refused},
            {"callbacksThrown", events.threw},
            {"listChanges", lists.getNumberOfChanges()},
            {"objectCommits", objects.getNumberOfCommits()},
            {"alarmLogRecords", logs.getNumberOfRecords()},
            {"systemLogTexts", logs.getNumberOfTexts()},
            {"logRecordsLost", logs.getNumberLost()}};
}

void Node::countPublished(std::size_t accepted, std::size_t refused)
{
    published += accepted;
    rejected += refused;
}

void Node::log(std::int32_t level, const std::string& text)
{
    logs.write(ZORV_LOG_SYSTEM, level, text);
}

std::uint64_t Node::getActivity() const
{
    return router.getStatistics().accepted + router.getStatistics().lost + lists.getNumberOfChanges() +
           logs.getNumberOfRecords() + logs.getNumberOfTexts() + objects.getNumberOfChanges();
}

}  // namespace ZorvNode
