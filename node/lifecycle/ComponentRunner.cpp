#include "lifecycle/ComponentRunner.hpp"

#include <utility>

#include "Contained.hpp"
#include "ZorvMwSpiLog_1.h"

namespace ZorvNode {

namespace {

std::string nameOf(InterfacePortal::ComponentT component)
{
    return std::string("component ") + component->componentName;
}

}  // namespace

ComponentRunner::ComponentRunner(InterfacePortal& interfacePortal, LogSinkT logSink)
    : portal(interfacePortal),
      log(std::move(logSink))
{
}

void ComponentRunner::start(ZorvStateChangeReason reason)
{
    try {
        for (InterfacePortal::ComponentT component : portal.getComponents()) {
            requireInterfaces(component);
            startOne(component, reason);
        }
    } catch (const StartError&) {
        stop(ZORV_STATE_CHANGE_DEACTIVATE);
        throw;
    }
}

void ComponentRunner::requireInterfaces(InterfacePortal::ComponentT component) const
{
    for (auto required = component->requiredInterfaces; *required != nullptr; ++required) {
        const ZorvMgmtSpiInterface_1& wish = **required;
        const void* table = nullptr;
        if (portal.getInterface(wish.componentName, wish.interfaceName, wish.interfaceVersion, &table) !=
            ZORV_RETURN_OK) {
            throw StartError(nameOf(component) + " requires interface " + wish.interfaceName +
                             ", which nobody provides");
        }
    }
}

void ComponentRunner::startOne(InterfacePortal::ComponentT component, ZorvStateChangeReason reason)
{
    const CallResult result = contained([&] { return component->start(reason); });
    if (result.threw) {
        throw StartError(nameOf(component) + ": start threw: " + result.text);
    }
    if (result.code != ZORV_RETURN_OK) {
        throw StartError(nameOf(component) + ": start returned " + std::to_string(result.code));
    }
    started.push_back(component);
    log(ZORV_LOG_INFORMATION, nameOf(component) + " started");
}

void ComponentRunner::stop(ZorvStateChangeReason reason)
{
    while (!started.empty()) {
        stopOne(started.back(), reason);
        started.pop_back();
    }
}

void ComponentRunner::stopOne(InterfacePortal::ComponentT component, ZorvStateChangeReason reason)
{
    const CallResult result = contained([&] { return component->stop(reason); });
    if (result.threw) {
        log(ZORV_LOG_ERROR, nameOf(component) + ": stop threw: " + result.text);
    } else if (result.code != ZORV_RETURN_OK) {
        log(ZORV_LOG_ERROR, nameOf(component) + ": stop returned " + std::to_string(result.code));
    } else {
        log(ZORV_LOG_INFORMATION, nameOf(component) + " stopped");
    }
}

}  // namespace ZorvNode
