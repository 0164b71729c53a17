/// A door that callbacks wait at until the test opens it: puts a test inside a running callback.
///
/// Threads: any number may stand before it. Failure: whoever waits longer than the bound fails the test and goes on.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <mutex>

namespace ZorvTest {

constexpr std::chrono::seconds patience(20);

class Gate {
public:
    void open()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        isOpen = true;
        changed.notify_all();
    }

    /// Waits until the gate is open.
    void pass()
    {
        std::unique_lock<std::mutex> lock(mutex);
        ++visitors;
        changed.notify_all();
        EXPECT_TRUE(changed.wait_for(lock, patience, [this] { return isOpen; })) << "nobody opens the gate";
    }

    /// Waits until somebody has come to the gate.
    void awaitVisitor()
    {
        std::unique_lock<std::mutex> lock(mutex);
        EXPECT_TRUE(changed.wait_for(lock, patience, [this] { return visitors > 0; })) << "nobody comes";
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    bool isOpen = false;    // guarded by mutex
    unsigned visitors = 0;  // guarded by mutex
};

}  // namespace ZorvTest
