/// How many callbacks of one client of the router run at present, or are owed.
///
/// Threads:   any.
#pragma once

#include <atomic>

namespace ZorvNode {

class ActiveCalls {
public:
    void enter() { ++count; }
    void leave() { --count; }

    bool isEmpty() const { return count == 0; }

    /// Enters for a scope.
    class Scope {
    public:
        explicit Scope(ActiveCalls& activeCalls) : calls(activeCalls) { calls.enter(); }
        ~Scope() { calls.leave(); }
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;

    private:
        ActiveCalls& calls;
    };

private:
    std::atomic<unsigned> count{0};
};

}  // namespace ZorvNode
