/// Starts the registered components in the order of their registration, and stops them in reverse; or one by its name.
///
/// Threads:   any; one component at a time is started or stopped.
/// Failure:   start throws StartError, one line, after it has stopped what it had started; stop logs and goes on.
#pragma once

#include <mutex>
#include <set>
#include <stdexcept>

#include "LogSink.hpp"
#include "portal/InterfacePortal.hpp"

namespace ZorvNode {

class StartError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class NoSuchComponent : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// It is started, or stopped, already.
class WrongState : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

enum class ComponentState { stopped, started, failed };

struct ComponentStatus {
    std::string name;
    ComponentState state = ComponentState::stopped;
};

class ComponentRunner {
public:
    ComponentRunner(InterfacePortal& interfacePortal, LogSinkT logSink);

    /// Every interface that a component requires has to be provided.
    void start(ZorvStateChangeReason reason);

    void stop(ZorvStateChangeReason reason);

    /// NoSuchComponent, WrongState, StartError.
    ComponentStatus start(const std::string& name, ZorvStateChangeReason reason);

    /// NoSuchComponent, WrongState.
    ComponentStatus stop(const std::string& name, ZorvStateChangeReason reason);

    /// In the order of registration.
    std::vector<ComponentStatus> getStatus() const;

private:
    InterfacePortal::ComponentT find(const std::string& name) const;
    ComponentStatus statusOf(InterfacePortal::ComponentT component) const;
    void stopAll(ZorvStateChangeReason reason);
    void requireInterfaces(InterfacePortal::ComponentT component) const;
    void startOne(InterfacePortal::ComponentT component, ZorvStateChangeReason reason);
    void stopOne(InterfacePortal::ComponentT component, ZorvStateChangeReason reason);

    InterfacePortal& portal;
    const LogSinkT log;

    std::mutex changing;  // held while a component starts or stops
    mutable std::mutex mutex;
    std::vector<InterfacePortal::ComponentT> started;  // guarded by mutex; in the order of their start
    std::set<InterfacePortal::ComponentT> failed;      // guarded by mutex; could not be started last time
};

}  // namespace ZorvNode
