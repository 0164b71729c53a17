/// The worker: all alarm work of the component, one message after the other, on one thread.
///
/// Threads:   start before the thread starts; run is the thread; isRunning, waitUntilRunning from any thread; everything
///            else is the worker's.
/// Ownership: owns status, model connector and alarm handler; the configuration outlives it.
/// Failure:   an exception in the loop ends the process, after an error line: alarm handling must not go on half-way. A
///            failing select ends the loop only.
#pragma once

#include <Poco/Event.h>
#include <Poco/Runnable.h>
#include <sys/select.h>

#include <atomic>
#include <deque>
#include <memory>

#include "FmAlarmHandler.hpp"
#include "FmTimeSource.hpp"
#include "MOConnector.hpp"
#include "PipeMessage.hpp"
#include "Status.hpp"
#include "ZorvStateChangeReason.h"

namespace Zorv {
class ThreadWPipes;
}

namespace ZorvFm {

class FmConfig;

class FmCompRunnable : public Poco::Runnable {
public:
    explicit FmCompRunnable(FmConfig& componentConfig);

    /// Prepares status and alarm list.
    void start();

    void run() override;

    /// The loop ends after the current round.
    void stop() { running = false; }

    bool isRunning() const { return running; }

    /// Returns when run has begun since the last start.
    void waitUntilRunning() { begun.wait(); }

    const Status& getStatus() const { return status; }

    /// Handles one batch, in the order of arrival; the messages stay the caller's, completed from the alarm model.
    void handleMessages(const std::deque<Zorv::PipeMessage*>& messages);

private:
    struct Batch;

    FmTimeSource& getTimeSource();
    std::int64_t getNextHeartbeatTime() const;
    int waitForEvent(fd_set& descriptors);
    void selectLoop();
    void loop();
    bool handleRound();
    void handleInput();
    void heartbeatWhenDue();
    void sortMessage(Zorv::PipeMessage& message, Batch& batch);
    void handleNewAlarm(AlarmData& alarm);
    void handleStateChange(const ZorvStateChangeReason& reason);
    void handleCmEvent();
    void handleAlarmSuppressionEvent(const ZorvOamSpiFmAlarmSuppressType_1& value);
    static void sendHeartbeat(const StatusSection& section);
    static void sendAlarmListRebuilt();

    std::atomic<bool> running{false};
    Zorv::ThreadWPipes* pipes = nullptr;  // of the worker thread, not owned; null before run
    Status status;
    MOConnector connector;
    std::int32_t lastHeartbeatTime = 0;        // s; 0: none yet
    std::unique_ptr<FmTimeSource> timeSource;  // created at its first use
    FmConfig& config;
    FmAlarmHandler handler;
    Poco::Event begun;
};

}  // namespace ZorvFm
