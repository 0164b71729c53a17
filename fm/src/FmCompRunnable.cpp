#include "FmCompRunnable.hpp"

#include <Poco/Exception.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "FmConfig.hpp"
#include "FmEventProducer.hpp"
#include "FmMessages.hpp"
#include "Logging.hpp"
#include "MeIdTranslator.hpp"
#include "ThreadWPipes.hpp"
#include "ZorvException.hpp"

namespace ZorvFm {
namespace {

/// True as long as the object lives, by whichever way that ends.
class FlagScope {
public:
    explicit FlagScope(std::atomic<bool>& scopeFlag) : flag(scopeFlag) { flag = true; }
    ~FlagScope() { flag = false; }

    FlagScope(const FlagScope&) = delete;
    FlagScope& operator=(const FlagScope&) = delete;

private:
    std::atomic<bool>& flag;
};

}  // namespace

/// What a batch holds besides the messages that are handled at once.
struct FmCompRunnable::Batch {
    std::vector<AlarmData*> alarms;  // of the messages
    int fmEvents = 0;
    int cmEvents = 0;
};

FmCompRunnable::FmCompRunnable(FmConfig& componentConfig)
    : config(componentConfig),
      handler(componentConfig, connector, status)
{
}

void FmCompRunnable::start()
{
    begun.reset();
    status.initialize();
    handler.initialize();
}

void FmCompRunnable::run()
{
    const FlagScope scope(running);
    pipes = Zorv::ThreadWPipes::current();
    begun.set();
    try {
        ZORV_TRACE("Sending AlarmListRebuilt");
        sendAlarmListRebuilt();
        connector.updateConfiguration(config);
        selectLoop();
        connector.clearCache();
    } catch (const Zorv::ZorvException& e) {
        ZORV_ERROR("Caught exception during fm comp start: %s.", e.what());
    }
}

FmTimeSource& FmCompRunnable::getTimeSource()
{
    if (!timeSource) {
        timeSource = std::make_unique<FmMonotonicTimeSource>();
    }
    return *timeSource;
}

std::int64_t FmCompRunnable::getNextHeartbeatTime() const
{
    return lastHeartbeatTime == 0 ? 0 : std::int64_t{lastHeartbeatTime} + config.getHeartbeatInterval();
}

int FmCompRunnable::waitForEvent(fd_set& descriptors)
{
    const int descriptor = pipes->getInputReadFD();
    FD_ZERO(&descriptors);
    FD_SET(descriptor, &descriptors);
    timeval timeout{1, 0};
    return select(descriptor + 1, &descriptors, nullptr, nullptr, &timeout);
}

void FmCompRunnable::selectLoop()
{
    try {
        loop();
        return;
    } catch (const Poco::Exception& e) {
        ZORV_ERROR("Caught Poco Exception: %s", e.displayText().c_str());
    } catch (const std::exception& e) {
        ZORV_ERROR("Caught exception: %s", e.what());
    } catch (...) {
        ZORV_ERROR("Caught unknown exception");
    }
    std::abort();
}

void FmCompRunnable::loop()
{
    ZORV_TRACE(" >> ");
    handler.tickAllAlarms();
    while (running && handleRound()) {}
    ZORV_TRACE(" << ");
}

/// False when the loop cannot go on.
bool FmCompRunnable::handleRound()
{
    handler.saveVeskFmAttributes();
    fd_set descriptors;
    const int result = waitForEvent(descriptors);
    if (result == -1) {
        if (errno == EINTR) {
            ZORV_TRACE("Signal caught in select loop");
            return true;
        }
        ZORV_ERROR("Select call returned: %d (%s).", result, std::strerror(errno));
        return false;
    }
    if (FD_ISSET(pipes->getInputReadFD(), &descriptors)) {
        handleInput();
    }
    handler.tickAllAlarms();
    heartbeatWhenDue();
    return true;
}

void FmCompRunnable::handleInput()
{
    const std::deque<Zorv::PipeMessage*> messages = pipes->popFromInput();
    handleMessages(messages);
    for (const Zorv::PipeMessage* message : messages) {
        delete message;
    }
}

void FmCompRunnable::heartbeatWhenDue()
{
    if (config.getHeartbeatInterval() == 0) {
        return;
    }
    const std::int32_t now = getTimeSource().getTime();
    if (now >= getNextHeartbeatTime()) {
        ZORV_TRACE("Sending heartbeat");
        sendHeartbeat(status.get());
        lastHeartbeatTime = now;
    } else if (now < lastHeartbeatTime) {
        ZORV_INFORMATION("Detected change in the system time resetting the next heartbeat time");
        lastHeartbeatTime = now;
    }
}

void FmCompRunnable::handleMessages(const std::deque<Zorv::PipeMessage*>& messages)
{
    Batch batch;
    for (Zorv::PipeMessage* message : messages) {
        sortMessage(*message, batch);
    }
    if (batch.cmEvents > 0) {
        handleCmEvent();
    }
    for (AlarmData* alarm : batch.alarms) {
        handleNewAlarm(*alarm);
    }
    handler.saveVeskFmAttributes();
    ZORV_TRACE("Events received:  FM=%i CM=%d", batch.fmEvents, batch.cmEvents);
}

void FmCompRunnable::sortMessage(Zorv::PipeMessage& message, Batch& batch)
{
    switch (message.getType()) {
    case HA_STATE_CHANGED:
        ZORV_TRACE("Received notification on HA_STATE_CHANGED");
        handleStateChange(static_cast<const FmStateChangeMessage&>(message).reason);
        break;
    case NTF_NEW_ALARM:
        ZORV_TRACE("Received notification on NTF_NEW_ALARM");
        batch.alarms.push_back(&static_cast<FmNewAlarmMessage&>(message).alarm);
        ++batch.fmEvents;
        break;
    case CM_ROUTER_EVENT:
        ZORV_TRACE("Received notification on CM_ROUTER_EVENT");
        ++batch.cmEvents;
        break;
    case NTF_NEW_ALARM_SUPPRESSION:
        ZORV_TRACE("Received notification on NTF_NEW_ALARM_SUPPRESSION");
        handleAlarmSuppressionEvent(static_cast<const FmNewAlarmSuppressionMessage&>(message).value);
        break;
    default:
        ZORV_WARNING("[libfm.so] -- FmCompRunnable::unknown message received");
        break;
    }
}

void FmCompRunnable::handleNewAlarm(AlarmData& alarm)
{
    connector.updateAlarm(alarm);
    if (handler.isUpdateAlarm(alarm)) {
        handler.handleAlarmNotif(alarm);
    } else {
        ZORV_TRACE("Alarm %s is ignored as the severity only update is invalid due to configuredSeverityValue",
                   alarm.toString().c_str());
    }
}

void FmCompRunnable::handleStateChange(const ZorvStateChangeReason& reason)
{
    switch (reason) {
    case ZORV_STATE_CHANGE_ACTIVATE:
        ZORV_NOTICE("Activating FmComponent while it is active - ignoring.");
        break;
    case ZORV_STATE_CHANGE_DEACTIVATE:
        ZORV_NOTICE("Deactivating FmComponent while it is active - stopping.");
        stop();
        break;
    case ZORV_STATE_CHANGE_FAIL_OVER:
        ZORV_NOTICE("Failing over FmComponent while it is active - stopping.");
        stop();
        break;
    case ZORV_STATE_CHANGE_SWITCH_OVER:
        ZORV_NOTICE("Switching over FmComponent while it is active - stopping.");
        stop();
        break;
    default:
        ZORV_ERROR("Unknown state (%d) is requested for FmComponent while it is active -- ignoring.",
                   static_cast<int>(reason));
        break;
    }
}

/// The model may have changed in every way, names included.
void FmCompRunnable::handleCmEvent()
{
    connector.updateConfiguration(config);
    connector.clearCache();
    Zorv::MeIdTranslator::instance().modelChanged();
}

void FmCompRunnable::handleAlarmSuppressionEvent(const ZorvOamSpiFmAlarmSuppressType_1& value)
{
    handler.suppressAlarm(value);
}

void FmCompRunnable::sendHeartbeat(const StatusSection& section)
{
    FmEventProducer::instance().sendHeartbeat(section);
}

void FmCompRunnable::sendAlarmListRebuilt()
{
    FmEventProducer::instance().sendAlarmListRebuilt();
}

}  // namespace ZorvFm
