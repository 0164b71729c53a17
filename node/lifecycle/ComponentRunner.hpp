/// Starts the registered components in the order of their registration, and stops them in reverse.
///
/// Threads:   one at a time.
/// Failure:   start throws StartError, one line, after it has stopped what it had started; stop logs and goes on.
#pragma once

#include <stdexcept>

#include "LogSink.hpp"
#include "portal/InterfacePortal.hpp"

namespace ZorvNode {

class StartError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class ComponentRunner {
public:
    ComponentRunner(InterfacePortal& interfacePortal, LogSinkT logSink);

    /// Every interface that a component requires has to be provided.
    void start(ZorvStateChangeReason reason);

    void stop(ZorvStateChangeReason reason);

private:
    void requireInterfaces(InterfacePortal::ComponentT component) const;
    void startOne(InterfacePortal::ComponentT component, ZorvStateChangeReason reason);
    void stopOne(InterfacePortal::ComponentT component, ZorvStateChangeReason reason);

    InterfacePortal& portal;
    const LogSinkT log;
    std::vector<InterfacePortal::ComponentT> started;
};

}  // namespace ZorvNode
