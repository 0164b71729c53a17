#include "lifecycle/LoadedLibrary.hpp"

#include <dlfcn.h>

#include <algorithm>
#include <utility>

#include "Contained.hpp"
#include "ZorvMwSpiLog_1.h"

namespace ZorvNode {

namespace {

const char* const initSymbol = "zorvLCMinit";
const char* const terminateSymbol = "zorvLCMterminate";

}  // namespace

LoadedLibrary::LoadedLibrary(const std::string& libraryPath, const std::string& config,
                             const ZorvMgmtSpiPortalAccessor_1T& accessor, InterfacePortal& interfacePortal,
                             LogSinkT logSink)
    : path(libraryPath),
      portal(interfacePortal),
      log(std::move(logSink)),
      handle(dlopen(libraryPath.c_str(), RTLD_NOW | RTLD_LOCAL))
{
    if (handle == nullptr) {
        throw LoadError(told(std::string("cannot be opened: ") + dlerror()));
    }
    try {
        initEntry = resolve<ZorvLcmInitT>(initSymbol);
        terminateEntry = resolve<ZorvLcmTerminateT>(terminateSymbol);
        initialize(config, accessor);
    } catch (const LoadError&) {
        dlclose(std::exchange(handle, nullptr));
        throw;
    }
}

LoadedLibrary::~LoadedLibrary()
{
    unload();
}

template <class FunctionT>
FunctionT LoadedLibrary::resolve(const char* symbol)
{
    void* const found = dlsym(handle, symbol);
    if (found == nullptr) {
        throw LoadError(told(std::string("has no entry point ") + symbol));
    }
    return reinterpret_cast<FunctionT>(found);
}

void LoadedLibrary::initialize(const std::string& config, const ZorvMgmtSpiPortalAccessor_1T& accessor)
{
    const auto before = portal.getComponents();
    portal.takeRefusedNames();
    const CallResult result = contained([&] { return initEntry(&accessor, config.c_str()); });
    findOwnComponents(before);
    const auto refused = portal.takeRefusedNames();
    std::string failure;
    if (!refused.empty()) {
        failure = "registers component " + refused.front() + ", which is registered already";
    } else if (result.threw) {
        failure = std::string(initSymbol) + " threw: " + result.text;
    } else if (result.code != ZORV_RETURN_OK) {
        failure = std::string(initSymbol) + " returned " + std::to_string(result.code);
    } else if (components.empty()) {
        failure = "registers no component";
    } else {
        return;
    }
    terminate();
    dropRegistrations();
    throw LoadError(told(failure));
}

void LoadedLibrary::findOwnComponents(const std::vector<InterfacePortal::ComponentT>& before)
{
    for (InterfacePortal::ComponentT component : portal.getComponents()) {
        if (std::find(before.begin(), before.end(), component) == before.end()) {
            components.push_back(component);
        }
    }
}

void LoadedLibrary::unload(bool keepMapped)
{
    if (handle == nullptr) {
        return;
    }
    terminate();
    dropRegistrations();
    void* const closing = std::exchange(handle, nullptr);
    if (!keepMapped) {
        dlclose(closing);
    }
}

void LoadedLibrary::terminate()
{
    const CallResult result = contained([this] { return terminateEntry(); });
    if (result.threw) {
        log(ZORV_LOG_ERROR, told(std::string(terminateSymbol) + " threw: " + result.text));
    } else if (result.code != ZORV_RETURN_OK) {
        log(ZORV_LOG_WARNING, told(std::string(terminateSymbol) + " returned " + std::to_string(result.code)));
    }
}

/// A descriptor that stayed registered would point into code that is gone.
void LoadedLibrary::dropRegistrations()
{
    for (InterfacePortal::ComponentT component : components) {
        if (portal.unregisterComponent(component) == ZORV_RETURN_OK) {
            log(ZORV_LOG_WARNING, told(std::string("leaves component ") + component->componentName + " registered"));
        }
    }
    components.clear();
}

}  // namespace ZorvNode
