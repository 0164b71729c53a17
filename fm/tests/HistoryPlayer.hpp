/// Plays histories to the real alarm handling and to the reference model, and compares what can be seen of both.
#pragma once

#include <optional>

#include "History.hpp"
#include "Middleware.hpp"

namespace ZorvFm {

class HistoryPlayer {
public:
    explicit HistoryPlayer(ZorvFakes::Middleware& fakes);
    ~HistoryPlayer();

    HistoryPlayer(const HistoryPlayer&) = delete;
    HistoryPlayer& operator=(const HistoryPlayer&) = delete;

    /// Where the two first differ, or nothing.
    std::optional<std::string> play(const Reference::History& history);

    /// A shorter history that still differs, found by leaving out one step after the other.
    Reference::History shrink(Reference::History history);

private:
    ZorvFakes::Middleware& middleware;
    Reference::Consumers consumers{};
};

}  // namespace ZorvFm
