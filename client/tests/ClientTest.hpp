/// A client with short waits and a scripted node.
#pragma once

#include "Client.hpp"
#include "NodeScript.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

namespace ZorvClientTest {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds longEnough{10000};

/// Told outcomes as texts: minor type (the context), kind, field and reason.
class Outcomes {
public:
    static void tell(const ZorvClientOutcomeT* outcome, void* self);
    std::vector<std::string> all();

private:
    std::mutex mutex;
    std::vector<std::string> told;  // guarded by mutex
};

class ClientTest : public ::testing::Test {
protected:
    ClientTest();

    ZorvClient::Client& client();
    ZorvClientResultT raise(std::uint32_t minorType);
    ZorvClientResultT clear(std::uint32_t minorType);
    ZorvClientResultT raiseAll(std::uint32_t first, std::uint32_t last);
    ZorvClientResultT flush() { return client().flush(longEnough); }

    NodeScript node;
    Outcomes outcomes;
    ZorvClient::Settings settings;  ///< until the first call of client()

private:
    ZorvClientNotificationT notification(std::uint32_t minorType) const;

    std::unique_ptr<ZorvClient::Client> madeClient;
};

}  // namespace ZorvClientTest
