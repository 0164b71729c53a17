#include "ZorvFmComponent.hpp"

#include <memory>

#include "FmEventProducer.hpp"
#include "FmMessages.hpp"
#include "Logging.hpp"
#include "MeIdTranslator.hpp"

namespace ZorvFm {
namespace {

constexpr const char* componentName = "ZorvFmComponent";

/// Null when there is no notification, or none that names the alarming object.
template <class NotificationT>
const NotificationT* validNotification(const void* notification)
{
    const auto* typed = static_cast<const NotificationT*>(notification);
    return typed == nullptr || typed->dn == nullptr || *typed->dn == '\0' ? nullptr : typed;
}

/// What a trace will say of the alarm when the worker has it; empty while nobody wants traces.
std::string textForTrace(const AlarmData& alarm)
{
    return Zorv::Logging::traceAdmits(YALT_TRACE_DETAILED) ? alarm.toString() : std::string();
}

}  // namespace

ZorvFmComponent::ZorvFmComponent() : Component(componentName), worker(config), workerPipes(workerThread)
{
    offered = {{componentName, "ZorvMgmtSpiComponent", "1"}};
    required = {{nullptr, "ZorvMwSpiLog", "1"},
                {nullptr, "YaltMwSpiTrace", nullptr},
                {"ZorvOamSpiEventService", "ZorvOamSpiEventRouter", "1"},
                {nullptr, "ZorvMwSpiReplicatedList", "1"},
                {"ZorvOamSpiCmRouterService", "ZorvOamSpiManagedObject", "3"},
                {"ZorvOamSpiModelRepositoryService", "ZorvOamSpiModelRepository", "1"},
                {"ZorvOamSpiTransactionService", "ZorvOamSpiTransactionMaster", "1"},
                {"ZorvOamSpiTransactionService", "ZorvOamSpiTransaction", "1"}};
}

int ZorvFmComponent::initialize(const char* configFile)
{
    const char* const fileName = configFile == nullptr ? "" : configFile;
    ZORV_TRACE(" >> %s", fileName);
    const int result = config.load(fileName);
    if (result != 0) {
        ZORV_ERROR("Failed to load components configuration! (%d)", result);
    }
    ZORV_TRACE(" << %d", result);
    return result;
}

const void* ZorvFmComponent::getInterface(const ZorvMgmtSpiInterface_1& identity) const
{
    return std::string(identity.interfaceName) == "ZorvMgmtSpiComponent" ? &descriptor.spi : nullptr;
}

int ZorvFmComponent::start(ZorvStateChangeReason reason)
{
    ZORV_TRACE(" >> Reason: %d", static_cast<int>(reason));
    int result = -1;
    {
        const Poco::Mutex::ScopedLock lock(mutex);
        if (started) {
            ZORV_WARNING("The Fm component is started already");
        } else {
            result = startSteps();
        }
    }
    ZORV_TRACE(" << Retval: %d", result);
    return result;
}

int ZorvFmComponent::startSteps()
{
    ZORV_TRACE("Starting Fm Component");
    try {
        Zorv::MeIdTranslator::instance().start();
        FmEventProducer::instance().start();
        worker.start();
        subscribe();
        workerThread.start(worker);
        workerStarted = true;
        worker.waitUntilRunning();
        started = true;
        return 0;
    } catch (const std::exception& e) {
        ZORV_ERROR("Caught exception during fm comp start: %s.", e.what());
    } catch (...) {
        ZORV_ERROR("Caught exception during fm comp start: %s.", "unknown exception");
    }
    return -1;
}

/// What was notified while nobody listened is asked for again, from the last notification handled.
void ZorvFmComponent::subscribe()
{
    const unsigned long long startTime = worker.getStatus().get().lastNotificationCheck;
    ZORV_INFORMATION("Using time %llu as filter", startTime);
    const std::string time = std::to_string(startTime);
    using This = ZorvFmComponent;
    cmConsumer.start({"^ManagedElement=.*,SystemFunctions=.*,Fm=.*$", "^ManagedElement=[^,]+$"}, &This::notifyCmEvent,
                     this);
    fmConsumer1.start({{ZORV_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_1, time}}, &This::notifyFmEvent1, this,
                      ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1);
    fmConsumer2.start({{ZORV_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_2, time}}, &This::notifyFmEvent2, this,
                      ZORV_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2);
    fmConsumer4.start({{YALT_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_1, time}}, &This::notifyFmEvent1, this,
                      YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_1);
    fmConsumer5.start({{YALT_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_2, time}}, &This::notifyFmEvent2, this,
                      YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_2);
    fmConsumer6.start({{YALT_OAM_SPI_NOTIFICATION_FM_FILTER_TYPE_DATE_TIME_4, time}}, &This::notifyFmEvent4, this,
                      YALT_OAM_SPI_NOTIFICATION_FM_EVENT_TYPE_4);
    fmConsumer3.start({}, &This::notifyFmAlarmSuppressionEvent, this, ZORV_OAM_SPI_FM_ALARM_SUPPRESS_EVENT_TYPE_1);
}

int ZorvFmComponent::stop(ZorvStateChangeReason reason)
{
    ZORV_TRACE(" >> ");
    {
        const Poco::Mutex::ScopedLock lock(mutex);
        stopConsumers();
        stopWorker(reason);
        Zorv::MeIdTranslator::instance().stop();
        FmEventProducer::instance().stop();
        started = false;
    }
    ZORV_TRACE(" << ");
    return 0;
}

void ZorvFmComponent::stopConsumers()
{
    cmConsumer.stop();
    fmConsumer1.stop();
    fmConsumer2.stop();
    fmConsumer3.stop();
    fmConsumer4.stop();
    fmConsumer5.stop();
    fmConsumer6.stop();
}

/// A worker that ended by itself is still to be joined.
void ZorvFmComponent::stopWorker(ZorvStateChangeReason reason)
{
    if (!workerStarted) {
        return;
    }
    if (worker.isRunning()) {
        workerPipes.pushToInput(new FmStateChangeMessage(reason));
    }
    workerThread.join();
    workerStarted = false;
}

void ZorvFmComponent::notifyFmEvent1(const char* /*eventType*/, void* notification)
{
    const auto* valid = validNotification<YaltOamSpiNotificationFmStruct>(notification);
    if (valid == nullptr) {
        ZORV_ERROR("Invalid argument for notify of Alarm V1");
        return;
    }
    auto message = std::make_unique<FmNewAlarmMessage>(*valid);
    const std::string text = textForTrace(message->alarm);
    workerPipes.pushToInput(message.release());
    ZORV_TRACE("Alarm received (v1): %s", text.c_str());
}

void ZorvFmComponent::notifyFmEvent2(const char* /*eventType*/, void* notification)
{
    const auto* valid = validNotification<YaltOamSpiNotificationFmStruct_2>(notification);
    if (valid == nullptr) {
        ZORV_ERROR("Invalid argument for notify Alarm v2");
        return;
    }
    auto message = std::make_unique<FmNewAlarmMessage>(*valid);
    const std::string text = textForTrace(message->alarm);
    workerPipes.pushToInput(message.release());
    ZORV_TRACE("Alarm received (v2): %s", text.c_str());
}

void ZorvFmComponent::notifyFmEvent4(const char* /*eventType*/, void* notification)
{
    const auto* valid = validNotification<YaltOamSpiNotificationFmStruct_4>(notification);
    if (valid == nullptr) {
        ZORV_ERROR("Invalid argument for notify Alarm v4");
        return;
    }
    auto message = std::make_unique<FmNewAlarmMessage>(*valid);
    const std::string text = textForTrace(message->alarm);
    workerPipes.pushToInput(message.release());
    ZORV_TRACE("Alarm received (v4): %s", text.c_str());
}

void ZorvFmComponent::notifyFmAlarmSuppressionEvent(const char* /*eventType*/, void* value)
{
    if (value == nullptr) {
        ZORV_ERROR("Invalid argument for notify Alarm suppression");
        return;
    }
    const auto suppression = *static_cast<const ZorvOamSpiFmAlarmSuppressType_1*>(value);
    workerPipes.pushToInput(new FmNewAlarmSuppressionMessage(suppression));
    ZORV_TRACE("Alarm suppression received: %s", suppression == ZORV_FM_ALARM_SUPPRESS_ON ? "ON" : "OFF");
}

void ZorvFmComponent::notifyCmEvent(const YaltOamSpiCmEvent_Notification_1T& /*event*/)
{
    const Poco::Mutex::ScopedLock lock(mutex);
    if (worker.isRunning()) {
        workerPipes.pushToInput(new FmNewCmRouterEventMessage);
    } else {
        ZORV_TRACE("Received a notification after stop()");
    }
}

}  // namespace ZorvFm
