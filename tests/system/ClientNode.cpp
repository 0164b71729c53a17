#include "ClientNode.hpp"

#include <signal.h>

#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <thread>

#include "json/Json.hpp"

namespace ZorvTest {

namespace {

constexpr unsigned deepest = 16;
constexpr std::chrono::seconds longest(10);
constexpr std::chrono::milliseconds pause(100);

}  // namespace

ClientNode::ClientNode()
{
    files.writeConfiguration(FM_LIBRARY);
    std::filesystem::copy_file(std::string(EXAMPLE) + "/alarm-model.xml", files.path("model.xml"),
                               std::filesystem::copy_options::overwrite_existing);
}

void ClientNode::start()
{
    process = std::make_unique<RunningProcess>(files.command());
}

void ClientNode::kill()
{
    process->signal(SIGKILL);
    process->awaitEnd();
}

std::multiset<std::string> ClientNode::awaitAlarms(std::size_t count) const
{
    auto changed = std::chrono::steady_clock::now();
    std::multiset<std::string> alarms = readAlarms();
    while (alarms.size() != count && std::chrono::steady_clock::now() < changed + longest) {
        std::this_thread::sleep_for(pause);
        std::multiset<std::string> present = readAlarms();
        if (present.size() != alarms.size()) {
            changed = std::chrono::steady_clock::now();
        }
        alarms = std::move(present);
    }
    return alarms;
}

std::multiset<std::string> ClientNode::readAlarms() const
{
    const ProcessResult result = runProcess({ZORVCTL, "--socket", socketPath(), "alarms", "--json"});
    if (result.exitCode != 0) {
        throw std::runtime_error("zorvctl alarms: " + result.err);
    }
    ZorvInput::JsonDocumentT document;
    ZorvInput::parseJson(result.out, deepest, document);
    std::multiset<std::string> sources;
    for (const auto& alarm : document["alarms"].GetArray()) {
        sources.insert(alarm["source"].GetString());
    }
    return sources;
}

}  // namespace ZorvTest
