#include "commands/ProgressBar.hpp"

namespace ZorvCtl {

namespace {

constexpr std::size_t width = 40;
constexpr std::chrono::milliseconds interval(50);

}  // namespace

ProgressBar::~ProgressBar()
{
    if (isShown) {
        console.err << "\r\033[K" << std::flush;
    }
}

void ProgressBar::show(std::size_t done)
{
    const auto now = std::chrono::steady_clock::now();
    if (!console.errIsTerminal || (now < next && done < total)) {
        return;
    }
    next = now + interval;
    isShown = true;
    const std::size_t filled = total == 0 ? width : width * done / total;
    console.err << "\r[" << std::string(filled, '#') << std::string(width - filled, ' ') << "] " << done << " of "
                << total << " actions" << std::flush;
}

}  // namespace ZorvCtl
