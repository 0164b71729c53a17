#include "lifecycle/ComponentRunner.hpp"

#include <algorithm>
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
    const std::lock_guard<std::mutex> lock(changing);
    try {
        for (InterfacePortal::ComponentT component : portal.getComponents()) {
            requireInterfaces(component);
            startOne(component, reason);
        }
    } catch (const StartError&) {
        stopAll(ZORV_STATE_CHANGE_DEACTIVATE);
        throw;
    }
}

ComponentStatus ComponentRunner::start(const std::string& name, ZorvStateChangeReason reason)
{
    const std::lock_guard<std::mutex> lock(changing);
    const InterfacePortal::ComponentT component = find(name);
    if (statusOf(component).state == ComponentState::started) {
        throw WrongState(nameOf(component) + " is started already");
    }
    requireInterfaces(component);
    startOne(component, reason);
    return statusOf(component);
}

ComponentStatus ComponentRunner::stop(const std::string& name, ZorvStateChangeReason reason)
{
    const std::lock_guard<std::mutex> lock(changing);
    const InterfacePortal::ComponentT component = find(name);
    if (statusOf(component).state != ComponentState::started) {
        throw WrongState(nameOf(component) + " is not started");
    }
    stopOne(component, reason);
    return statusOf(component);
}

std::vector<ComponentStatus> ComponentRunner::getStatus() const
{
    std::vector<ComponentStatus> all;
    for (InterfacePortal::ComponentT component : portal.getComponents()) {
        all.push_back(statusOf(component));
    }
    return all;
}

InterfacePortal::ComponentT ComponentRunner::find(const std::string& name) const
{
    for (InterfacePortal::ComponentT component : portal.getComponents()) {
        if (name == component->componentName) {
            return component;
        }
    }
    throw NoSuchComponent("no component is called " + name);
}

ComponentStatus ComponentRunner::statusOf(InterfacePortal::ComponentT component) const
{
    const std::lock_guard<std::mutex> lock(mutex);
    const bool isStarted = std::find(started.begin(), started.end(), component) != started.end();
    const bool hasFailed = failed.count(component) > 0;
    return {component->componentName, isStarted   ? ComponentState::started
                                      : hasFailed ? ComponentState::failed
                                                  : ComponentState::stopped};
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
    portal.noteChange();
    const bool isStarted = !result.threw && result.code == ZORV_RETURN_OK;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isStarted ? started.push_back(component) : static_cast<void>(failed.insert(component));
    }
    if (result.threw) {
        throw StartError(nameOf(component) + ": start threw: " + result.text);
    }
    if (result.code != ZORV_RETURN_OK) {
        throw StartError(nameOf(component) + ": start returned " + std::to_string(result.code));
    }
    log(ZORV_LOG_INFORMATION, nameOf(component) + " started");
}

void ComponentRunner::stop(ZorvStateChangeReason reason)
{
    const std::lock_guard<std::mutex> lock(changing);
    stopAll(reason);
}

void ComponentRunner::stopAll(ZorvStateChangeReason reason)
{
    for (;;) {
        InterfacePortal::ComponentT last = nullptr;
        {
            const std::lock_guard<std::mutex> lock(mutex);
            if (started.empty()) {
                return;
            }
            last = started.back();
        }
        stopOne(last, reason);
    }
}

void ComponentRunner::stopOne(InterfacePortal::ComponentT component, ZorvStateChangeReason reason)
{
    const CallResult result = contained([&] { return component->stop(reason); });
    portal.noteChange();
    if (result.threw) {
        log(ZORV_LOG_ERROR, nameOf(component) + ": stop threw: " + result.text);
    } else if (result.code != ZORV_RETURN_OK) {
        log(ZORV_LOG_ERROR, nameOf(component) + ": stop returned " + std::to_string(result.code));
    } else {
        log(ZORV_LOG_INFORMATION, nameOf(component) + " stopped");
    }
    const std::lock_guard<std::mutex> lock(mutex);
    started.erase(std::find(started.begin(), started.end(), component));
    failed.erase(component);
}

}  // namespace ZorvNode
