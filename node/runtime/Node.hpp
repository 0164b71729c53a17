/// A node: all services, the component libraries, and the order in which they come and go.
///
/// Up: services, libraries in the order of the configuration, components in the order of their registration. Down: the
/// reverse, components first; a library with a thread still in it stays mapped.
///
/// Threads:   one thread constructs, starts, stops and destroys it; between start and stop the rest is for any.
/// Failure:   the constructor throws StoreError; start throws LoadError or StartError after it has backed out.
#pragma once

#include <Poco/Timestamp.h>

#include <memory>
#include <vector>

#include "config/NodeConfiguration.hpp"
#include "ingress/InboxKeeper.hpp"
#include "lifecycle/ComponentRunner.hpp"
#include "lifecycle/LoadedLibrary.hpp"
#include "portal/PortalTables.hpp"
#include "runtime/StorageWatch.hpp"
#include "services/eventrouter/EventRouterTable.hpp"
#include "services/log/LogTable.hpp"
#include "services/managedobjects/CmEventPublisher.hpp"
#include "services/managedobjects/ManagedObjectTable.hpp"
#include "services/managedobjects/ManagementClient.hpp"
#include "services/modelrepository/ModelRepositoryTable.hpp"
#include "services/replicatedlist/ReplicatedListTable.hpp"
#include "services/trace/TraceTable.hpp"
#include "services/transactions/TransactionTables.hpp"
#include "stores/StateStore.hpp"

namespace ZorvNode {

class Node {
public:
    Node(const NodeConfiguration& nodeConfiguration, ModelFile modelFile);
    ~Node();

    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;

    void start();
    void stop();

    /// Ends what waits for the node to become quiet; it is about to stop.
    void interrupt() { interrupted = true; }

    /// Reads the configured model file again and takes it into use; InputError: the model in use stays.
    void rereadModel();

    /// NoSuchComponent, WrongState, StartError. What is published meanwhile waits until the component takes it.
    ComponentStatus startComponent(const std::string& name, ZorvStateChangeReason reason);
    ComponentStatus stopComponent(const std::string& name, ZorvStateChangeReason reason);
    std::vector<ComponentStatus> getComponents() const { return runner.getStatus(); }

    /// Waits until the services have done nothing for components for so long. False when that took too long.
    bool settle(std::chrono::duration<double> quiet, std::chrono::duration<double> patience);

    /// What is not as it should be, a line each; nothing: the node is well.
    std::vector<std::string> getTroubles();

    /// Counted since the start, by name.
    std::map<std::string, std::uint64_t> getCounters();

    /// Notifications that a client brought to the interface.
    void countPublished(std::size_t accepted, std::size_t rejected);

    const NodeConfiguration& getConfiguration() const { return configuration; }
    const Poco::Timestamp& getStartTime() const { return startTime; }

    void log(std::int32_t level, const std::string& text);

    LogService logs;
    TraceService trace;
    StateStore state;
    EventRouter router;
    FmNotificationSource source;
    MoStore store;
    ModelRepository repository;
    TransactionService transactions;
    InterfacePortal portal;
    CmEventPublisher cmEvents;
    ManagedObjectService objects;
    ManagementClient management;
    ReplicatedListService lists;

private:
    void provideServices();
    std::vector<Storage> storages();
    void tellStorage(const Storage& storage, bool isFailing);
    bool awaitCallbacks();

    /// Grows with everything that the services do for components.
    std::uint64_t getActivity() const;

    const Poco::Timestamp startTime;
    std::atomic<bool> interrupted{false};
    std::atomic<std::uint64_t> published{0};
    std::atomic<std::uint64_t> rejected{0};
    const NodeConfiguration& configuration;

    const EventRouterTable routerTable;
    const ModelRepositoryTable repositoryTable;
    const TransactionTables transactionTables;
    const ManagedObjectTable objectTable;
    const LogTable logTable;
    const TraceTable traceTable;
    const ReplicatedListTable listTable;
    const PortalTables portalTables;

    ComponentRunner runner;
    std::vector<std::unique_ptr<LoadedLibrary>> libraries;
    const InboxKeeper keeper;  // last, like the next one: they look at all services
    StorageWatch storageWatch;
};

}  // namespace ZorvNode
