/// A worker in the hands of the test: its thread runs under the virtual clock, and a script decides what each of its
/// waits finds.
#pragma once

#include <Poco/Thread.h>

#include <cerrno>
#include <deque>
#include <functional>

#include "FmCompRunnable.hpp"
#include "FmConfig.hpp"
#include "FmEventProducer.hpp"
#include "FmJournal.hpp"
#include "FmMessages.hpp"
#include "FmTest.hpp"
#include "ThreadWPipes.hpp"
#include "TimeZone.hpp"

namespace ZorvFm {

/// The model holds the FM object and gives no heartbeat interval; heartbeats are off. "select 1 s 0 us" in the journal is
/// one wait with its timeout.
class WorkerTest : public FmTest {
protected:
    using Step = std::function<void()>;

    WorkerTest()
    {
        middleware.clock.turnOn();
        middleware.clock.onSelect(
            [this](int count, fd_set* readable, fd_set* writable, fd_set* failed, timeval* timeout) {
                return wait(count, readable, writable, failed, timeout);
            });
        middleware.fmModel.plant();
        middleware.fmModel.setHeartbeatInterval(std::nullopt);
        config.setHeartbeatInterval(0);
        FmEventProducer::instance().start();
    }

    ~WorkerTest() override { FmEventProducer::instance().stop(); }

    /// Lets the worker run through the steps, one for each wait; the last one stops it. A wait in which nothing has
    /// arrived takes its second. The journal begins with the thread.
    void run(const std::deque<Step>& steps)
    {
        script = steps;
        worker.start();
        journal();
        thread.start(worker);
        thread.join();
    }

    /// Shows the waits and what is sent between them.
    void followRounds()
    {
        middleware.router.addConsumer(ZORV_OAM_API_FM_HEARTBEAT_EVENT_TYPE_3);
        middleware.router.addConsumer(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3);
        middleware.journal.showOnly({ZorvFakes::Topic::Clock, ZorvFakes::Topic::Router});
    }

    /// The monotonic clock jumps, forwards or back.
    Step jump(int seconds)
    {
        return [this, seconds] {
            const auto now =
                static_cast<std::int64_t>(middleware.clock.monotonic()) + seconds * std::int64_t{1000000000};
            middleware.clock.setMonotonic(static_cast<std::uint64_t>(now));
        };
    }

    static Step silence()
    {
        return [] {};
    }

    /// The wait fails.
    Step failure(int error)
    {
        return [this, error] { waitError = error; };
    }

    /// The messages arrive together, in this order.
    template <class... MessageT>
    Step arrival(MessageT*... messages)
    {
        return [this, messages...] { (pipes.pushToInput(messages), ...); };
    }

    /// The notification of an application, as the component hands it to the worker.
    static FmNewAlarmMessage* anAlarm(const std::string& dn, std::int32_t severity = YALT_FM_SEVERITY_MAJOR,
                                      const char* text = "")
    {
        const YaltOamSpiNotificationFmStruct_2 notification{dn.c_str(), 1, 1, 1700000000000000000, text, severity};
        return new FmNewAlarmMessage(AlarmData(notification));
    }

    /// The journal's entry for a wait.
    static inline const std::string waiting = "select 1 s 0 us";

    /// The heartbeat of version 3 to the test's first consumer.
    static std::string heartbeat(const StatusSection& status = {})
    {
        return "notify ZorvOamApiFmHeartbeatEventType_3 consumer=1001 filter=[] lastStatefulTimestamp=" +
               std::to_string(status.lastStatefulTimestamp) +
               " lastStatefulSeqNo=" + std::to_string(status.lastStatefulSeqNo) +
               " lastStatelessTimestamp=" + std::to_string(status.lastStatelessTimestamp) +
               " lastStatelessSeqNo=" + std::to_string(status.lastStatelessSeqNo) + " -> 0";
    }

    /// Northbound notifications of version 3 to the test's second consumer: of an alarm that anAlarm has raised, and of
    /// the alert that becomes of it when no model knows its type.
    static std::string alarmSent(const std::string& dn, std::uint64_t seqNo, std::uint64_t alarmId)
    {
        ZorvFakes::FmJournal::Report report;
        report.dn = dn;
        report.seqNo = seqNo;
        report.alarmId = alarmId;
        return report.version3(1002);
    }

    static std::string alertSent(const std::string& dn, std::uint64_t seqNo)
    {
        ZorvFakes::FmJournal::Report report;
        report.dn = dn;
        report.seqNo = seqNo;
        report.alarmId = 0;
        report.stateful = false;
        report.eventType = 1;
        report.probableCause = 418;
        report.specificProblem = "FM Unknown Alarm";
        return report.version3(1002);
    }

    FmConfig config;
    FmCompRunnable worker{config};
    Poco::Thread thread;
    Zorv::ThreadWPipes pipes{thread};

private:
    int wait(int count, fd_set* readable, fd_set* writable, fd_set* failed, timeval* timeout)
    {
        middleware.journal.record(ZorvFakes::Topic::Clock, "select " + std::to_string(timeout->tv_sec) + " s " +
                                                               std::to_string(timeout->tv_usec) + " us");
        EXPECT_EQ(pipes.getInputReadFD() + 1, count);
        EXPECT_EQ(nullptr, writable);
        EXPECT_EQ(nullptr, failed);
        const Step step = script.front();
        script.pop_front();
        if (script.empty()) {
            worker.stop();
        }
        waitError = 0;
        step();
        if (waitError != 0) {
            errno = waitError;
            return -1;
        }
        return middleware.clock.selectByClock(count, readable, writable, failed, timeout);
    }

    const TimeZone utc{"UTC0"};
    std::deque<Step> script;
    int waitError = 0;
};

}  // namespace ZorvFm
