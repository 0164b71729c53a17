#include "Format.hpp"

#include <array>
#include <cstdio>

namespace Zorv {

std::string formatText(const char* format, va_list arguments)
{
    va_list again;
    va_copy(again, arguments);
    std::array<char, 512> shortText;
    const int length = std::vsnprintf(shortText.data(), shortText.size(), format, arguments);
    std::string text;
    if (length < 0) {
        text = format;
    } else if (static_cast<std::size_t>(length) < shortText.size()) {
        text.assign(shortText.data(), static_cast<std::size_t>(length));
    } else {
        text.resize(static_cast<std::size_t>(length) + 1);
        std::vsnprintf(text.data(), text.size(), format, again);
        text.pop_back();
    }
    va_end(again);
    return text;
}

}  // namespace Zorv
