/// How far something has come, on one line of a terminal; nothing where standard error is none.
#pragma once

#include <chrono>

#include "Console.hpp"

namespace ZorvCtl {

class ProgressBar {
public:
    ProgressBar(const Console& theConsole, std::size_t howMany) : console(theConsole), total(howMany) {}
    ~ProgressBar();

    ProgressBar(const ProgressBar&) = delete;
    ProgressBar& operator=(const ProgressBar&) = delete;

    /// Draws it, though not more often than the eye can see.
    void show(std::size_t done);

private:
    const Console& console;
    const std::size_t total;
    std::chrono::steady_clock::time_point next{};
    bool isShown = false;
};

}  // namespace ZorvCtl
