/// The input of a worker thread: a queue of messages with a descriptor to wait on.
///
/// The queue lives in memory; the descriptor only tells empty from not empty. A worker that stalls therefore never
/// blocks those who push, and messages that it leaves behind wait for the next run of the thread.
///
/// Threads:   pushToInput from any thread; popFromInput and waiting on the descriptor by the worker.
/// Ownership: a pushed message belongs to the pipe, even when pushing fails; a popped one to the popping thread.
///            Messages still queued are deleted with the object.
/// Failure:   the constructor throws ZorvException when the system gives no pipe, or a descriptor that select cannot take.
#pragma once

#include <Poco/Mutex.h>

#include <deque>

#include "PipeMessage.hpp"

namespace Poco {
class Thread;
}

namespace Zorv {

class ThreadWPipes {
public:
    /// @param thread the worker; it finds this object with current() while it runs.
    explicit ThreadWPipes(const Poco::Thread& thread);
    ~ThreadWPipes();

    ThreadWPipes(const ThreadWPipes&) = delete;
    ThreadWPipes& operator=(const ThreadWPipes&) = delete;

    /// The object of the calling thread; null when it has none.
    static ThreadWPipes* current();

    void pushToInput(PipeMessage* message);

    /// Readable while messages are pending. Stays the same for the life of the object.
    int getInputReadFD() const { return readFd; }

    /// Every pending message, in the order of arrival.
    std::deque<PipeMessage*> popFromInput();

private:
    const Poco::Thread* worker;
    int readFd = -1;
    int writeFd = -1;
    Poco::FastMutex mutex;
    std::deque<PipeMessage*> messages;  // guarded by mutex; owned
};

}  // namespace Zorv
