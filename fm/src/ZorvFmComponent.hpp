/// The FM component: what the middleware initializes, starts and stops, and what the event router calls.
///
/// The callbacks do no alarm work: each turns its event into a message for the worker.
///
/// Threads:   start, stop and configuration-change callbacks are serialized by the component's mutex; FM and suppression
///            callbacks take no lock and only push. All alarm work runs on the worker thread.
/// Ownership: owns configuration, worker and consumers; lives until the library is unloaded.
/// Failure:   errors in the callbacks are logged and dropped; a failed start answers -1 and undoes nothing.
#pragma once

#include <Poco/Mutex.h>
#include <Poco/Thread.h>

#include "CmEventConsumer.hpp"
#include "Component.hpp"
#include "EventConsumer.hpp"
#include "FmCompRunnable.hpp"
#include "FmConfig.hpp"
#include "ThreadWPipes.hpp"

namespace ZorvFm {

class ZorvFmComponent : public Zorv::Component<ZorvFmComponent> {
public:
    /// Loads the configuration file. 0, or the failure of loading.
    int initialize(const char* configFile) override;
    void terminate() override {}

    /// 0; -1 when it fails or is started already.
    int start(ZorvStateChangeReason reason) override;

    /// Ends the worker. With a reason that is no stop, it waits until the worker is told another one.
    int stop(ZorvStateChangeReason reason) override;

    const void* getInterface(const ZorvMgmtSpiInterface_1& identity) const override;

    bool isStarted() const { return started; }

    void notifyFmEvent1(const char* eventType, void* notification);
    void notifyFmEvent2(const char* eventType, void* notification);
    void notifyFmEvent4(const char* eventType, void* notification);
    void notifyFmAlarmSuppressionEvent(const char* eventType, void* value);
    void notifyCmEvent(const YaltOamSpiCmEvent_Notification_1T& event);

private:
    friend class Zorv::ComponentFrame<ZorvFmComponent>;
    ZorvFmComponent();

    int startSteps();
    void subscribe();
    void stopConsumers();
    void stopWorker(ZorvStateChangeReason reason);

    FmConfig config;
    FmCompRunnable worker;
    Poco::Thread workerThread;
    Zorv::ThreadWPipes workerPipes;
    bool workerStarted = false;  // guarded by mutex
    Poco::Mutex mutex;
    Zorv::CmEventConsumer<ZorvFmComponent, 1> cmConsumer;
    Zorv::EventConsumer<ZorvFmComponent, 1> fmConsumer1;
    Zorv::EventConsumer<ZorvFmComponent, 2> fmConsumer2;
    Zorv::EventConsumer<ZorvFmComponent, 3> fmConsumer3;
    Zorv::EventConsumer<ZorvFmComponent, 4> fmConsumer4;
    Zorv::EventConsumer<ZorvFmComponent, 5> fmConsumer5;
    Zorv::EventConsumer<ZorvFmComponent, 6> fmConsumer6;
};

}  // namespace ZorvFm
