/// What all fakes of middleware interfaces have in common: faults, the journal, and a way from C tables to the object.
///
/// The tables of the interfaces carry no object, so one object of each fake lives at a time and the tables find it
/// here. A call that arrives while none lives answers -1.
///
/// Threads: the fakes may be called from any thread; a test creates and destroys them while nobody calls.
#pragma once

#include <atomic>
#include <cassert>
#include <string>
#include <utility>

#include "FaultInjection.hpp"
#include "Journal.hpp"
#include "ZorvReturn.h"

namespace ZorvFakes {

template <class FakeT>
class Fake : public FaultInjection {
public:
    Fake(const Fake&) = delete;
    Fake& operator=(const Fake&) = delete;

    static FakeT* live() { return liveOne.load(); }

protected:
    Fake(Journal& theJournal, Topic theTopic) : journal(theJournal), topic(theTopic)
    {
        assert(!liveOne);
        liveOne = static_cast<FakeT*>(this);
    }

    ~Fake() { liveOne = nullptr; }

    /// Decides one call, by plan or by the operation, and writes "call -> code outcome". The operation may fill outcome.
    template <class OperationT>
    int32_t answer(const std::string& call, OperationT operation)
    {
        std::string outcome;
        const auto failure = planned(call);
        const int32_t code = failure ? *failure : operation(outcome);
        journal.record(topic, call + " -> " + std::to_string(code) + (outcome.empty() ? "" : " " + outcome));
        return code;
    }

    Journal& journal;

private:
    const Topic topic;

    static inline std::atomic<FakeT*> liveOne{nullptr};
};

/// The C function that forwards to a member function of the living fake.
template <auto member>
struct Forward;

template <class FakeT, class... ArgumentT, int32_t (FakeT::*member)(ArgumentT...)>
struct Forward<member> {
    static int32_t call(ArgumentT... arguments)
    {
        FakeT* fake = FakeT::live();
        return fake ? (fake->*member)(arguments...) : static_cast<int32_t>(ZORV_RETURN_FAILED);
    }
};

template <auto member>
inline constexpr auto forward = &Forward<member>::call;

}  // namespace ZorvFakes
