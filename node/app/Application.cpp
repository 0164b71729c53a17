#include "app/Application.hpp"

#include <Poco/File.h>

#include <iostream>

#include "ZorvMwSpiLog_1.h"
#include "api/Api.hpp"
#include "app/DirectoryLock.hpp"
#include "app/ExitCode.hpp"
#include "files/InputError.hpp"
#include "runtime/ProcessorTurns.hpp"

namespace ZorvNode {

using namespace ZorvInput;

namespace {

void tell(const std::string& text)
{
    std::cerr << "zorvd: " + text + "\n" << std::flush;
}

/// Null when the node keeps no state.
std::unique_ptr<DirectoryLock> lockState(const StoreSettings& store)
{
    if (store.kind == StoreKind::memory) {
        return nullptr;
    }
    makePrivateDirectory(store.directory);
    return std::make_unique<DirectoryLock>(store.directory, "zorv.lock");
}

}  // namespace

int Application::run()
{
    try {
        NodeConfiguration configuration = readNodeConfiguration(options.config);
        configuration.store.acceptEmpty = options.acceptEmpty;
        ModelFile model = readModel(configuration.model);
        Poco::File(configuration.runDirectory).createDirectories();
        Poco::File(configuration.logDirectory).createDirectories();
        const DirectoryLock runLock(configuration.runDirectory, "zorvd.pid");
        const auto stateLock = lockState(configuration.store);
        runNode(configuration, std::move(model));
    } catch (const InputError& e) {
        tell(e.what());
        return badInput;
    } catch (const Poco::Exception& e) {
        tell(e.displayText());
        return failed;
    } catch (const std::exception& e) {
        tell(e.what());
        return failed;
    }
    return done;
}

void Application::runNode(const NodeConfiguration& configuration, ModelFile model)
{
    interruptNobody();
    Node node(configuration, std::move(model));
    Api api(node);
    try {
        node.start();
        api.start();
    } catch (const std::runtime_error& e) {
        node.log(ZORV_LOG_ERROR, e.what());
        throw;
    }
    manager.ready("running");
    obeySignals(node);
    manager.stopping();
    node.interrupt();
    api.stop();
    node.stop();
}

void Application::obeySignals(Node& node)
{
    for (;;) {
        switch (signals.wait(manager.getWatchdogPeriod())) {
        case 0:
            manager.alive();
            break;
        case SIGHUP:
            manager.reloading();
            rereadModel(node);
            manager.ready("running");
            break;
        default:
            return;
        }
    }
}

void Application::rereadModel(Node& node) const
{
    try {
        node.rereadModel();
        tell("model reread");
    } catch (const std::exception& e) {
        tell(std::string("the model in use stays: ") + e.what());
        node.log(ZORV_LOG_ERROR, std::string("The model in use stays: ") + e.what());
    }
}

}  // namespace ZorvNode
