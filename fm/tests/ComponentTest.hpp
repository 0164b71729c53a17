/// The FM component among fakes, with a worker that is really a thread.
#pragma once

#include <condition_variable>
#include <mutex>

#include "FmTest.hpp"
#include "TemporaryDirectory.hpp"
#include "TimeZone.hpp"
#include "ZorvFmComponent.hpp"
#include "ZorvOamApiFmNotification_3.h"

namespace ZorvFm {

/// Time stands still unless the test moves it, and the worker's waits end only with a message. The test's first consumer
/// follows the alarms.
class ComponentTest : public FmTest {
protected:
    ComponentTest()
    {
        middleware.clock.turnOn();
        middleware.clock.onSelect([this](int count, fd_set* readable, fd_set* writable, fd_set* failed, timeval*) {
            beginWait(count - 1);
            const int ready = ZorvFakes::VirtualClock::realSelect(count, readable, writable, failed, nullptr);
            endWait();
            return ready;
        });
        middleware.fmModel.plant();
        middleware.fmModel.plantType("1", "1", {});
        middleware.router.addConsumer(ZORV_OAM_API_FM_NOTIFICATION_EVENT_TYPE_3);
        component.initialize(fileName.c_str());
        journal();
    }

    ~ComponentTest() override { component.stop(ZORV_STATE_CHANGE_DEACTIVATE); }

    /// Starts the component and lets its worker come to rest.
    int start(ZorvStateChangeReason reason = ZORV_STATE_CHANGE_ACTIVATE)
    {
        const int result = component.start(reason);
        waitForWorker();
        return result;
    }

    int stop(ZorvStateChangeReason reason = ZORV_STATE_CHANGE_DEACTIVATE) { return component.stop(reason); }

    /// Returns when the worker has handled all messages pushed so far and waits.
    void waitForWorker()
    {
        std::unique_lock<std::mutex> lock(mutex);
        EXPECT_TRUE(rested.wait_for(lock, ZorvFakes::Journal::patience,
                                    [this] { return isWaiting && !isReadable(descriptor); }));
    }

    const ZorvTest::TemporaryDirectory folder;
    const std::string fileName = folder.write("fm.xml", "<ZorvFmComponent/>");
    ZorvFmComponent& component = ZorvFmComponent::instance();

private:
    const TimeZone utc{"UTC0"};

    void beginWait(int waitDescriptor)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isWaiting = true;
        descriptor = waitDescriptor;
        rested.notify_all();
    }

    void endWait()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isWaiting = false;
    }

    static bool isReadable(int fd)
    {
        fd_set set;
        FD_ZERO(&set);
        FD_SET(fd, &set);
        timeval none{};
        return ZorvFakes::VirtualClock::realSelect(fd + 1, &set, nullptr, nullptr, &none) > 0;
    }

    std::mutex mutex;
    std::condition_variable rested;
    bool isWaiting = false;  // guarded by mutex
    int descriptor = -1;     // guarded by mutex
};

}  // namespace ZorvFm
