/// A stream that is opened again when the node ends it, until Ctrl-C.
///
/// Threads: one.
/// Failure: NoNode when the first connection fails; later ones are tried again. Failure when the node refuses.
#pragma once

#include "Console.hpp"
#include "NodeConnection.hpp"

namespace ZorvCtl {

class Follower {
public:
    /// @param begin where to begin; @param again where to go on after an event, together with its id.
    Follower(NodeConnection& nodeConnection, const Console& theConsole, const Target& begin, Target again);

    /// Waits for the next event, but not longer than this.
    /// @return false when none came. Throws Interrupted.
    bool next(Event& event, std::chrono::milliseconds timeout);

    /// The same, however long it takes.
    void next(Event& event);

    /// True once after each time that the stream was opened again.
    bool wasReopened() { return std::exchange(reopened, false); }

private:
    void reopen();

    NodeConnection& connection;
    const Console& console;
    Target target;
    const Target later;
    std::unique_ptr<EventStream> stream;
    std::string lastId;
    bool reopened = false;
};

}  // namespace ZorvCtl
