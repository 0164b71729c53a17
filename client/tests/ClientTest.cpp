#include "ClientTest.hpp"

namespace ZorvClientTest {

namespace {

const char* const kinds[] = {"sent", "rejected", "abandoned"};

}  // namespace

void Outcomes::tell(const ZorvClientOutcomeT* outcome, void* self)
{
    Outcomes& outcomes = *static_cast<Outcomes*>(self);
    const std::lock_guard<std::mutex> lock(outcomes.mutex);
    outcomes.told.push_back(std::to_string(reinterpret_cast<std::uintptr_t>(outcome->context)) + " " +
                            kinds[outcome->kind] + " " + outcome->field + " " + outcome->reason);
}

std::vector<std::string> Outcomes::all()
{
    const std::lock_guard<std::mutex> lock(mutex);
    return told;
}

ClientTest::ClientTest()
{
    settings.socketPath = node.path();
    settings.shortestWait = 1ms;
    settings.longestWait = 4ms;
    settings.outcome = &Outcomes::tell;
    settings.callbackContext = &outcomes;
}

ZorvClient::Client& ClientTest::client()
{
    if (!madeClient) {
        madeClient = std::make_unique<ZorvClient::Client>(settings);
    }
    return *madeClient;
}

ZorvClientNotificationT ClientTest::notification(std::uint32_t minorType) const
{
    ZorvClientNotificationT made{};
    made.dn = "Equipment=1,Slot=2";
    made.majorType = 32473;
    made.minorType = minorType;
    made.severity = ZORV_CLIENT_MAJOR;
    made.context = reinterpret_cast<void*>(std::uintptr_t{minorType});  // NOLINT(performance-no-int-to-ptr): a number
    return made;
}

ZorvClientResultT ClientTest::raise(std::uint32_t minorType)
{
    return client().post(ZorvClient::Kind::raise, notification(minorType));
}

ZorvClientResultT ClientTest::clear(std::uint32_t minorType)
{
    return client().post(ZorvClient::Kind::clear, notification(minorType));
}

ZorvClientResultT ClientTest::raiseAll(std::uint32_t first, std::uint32_t last)
{
    for (std::uint32_t minorType = first; minorType <= last; ++minorType) {
        const ZorvClientResultT result = raise(minorType);
        if (result != ZORV_CLIENT_OK) {
            return result;
        }
    }
    return ZORV_CLIENT_OK;
}

}  // namespace ZorvClientTest
