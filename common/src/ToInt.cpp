#include "ToInt.hpp"

#include <cctype>
#include <cerrno>
#include <cstdlib>
#include <limits>

namespace Zorv {

template <class NumberT>
bool toInt(const std::string& text, NumberT& out)
{
    if (text.empty() || std::isspace(static_cast<unsigned char>(text.front())) != 0) {
        throw InvalidStringException();
    }
    if (text.front() == '-') {
        throw UnsignedIntExpectedException();
    }
    char* end = nullptr;
    errno = 0;
    const unsigned long long number = std::strtoull(text.c_str(), &end, 10);
    if (errno == ERANGE || number > std::numeric_limits<NumberT>::max()) {
        throw ValueRangeException();
    }
    if (end != text.c_str() + text.size()) {
        throw InvalidStringException();
    }
    out = static_cast<NumberT>(number);
    return true;
}

template bool toInt<std::uint32_t>(const std::string& text, std::uint32_t& out);
template bool toInt<std::uint64_t>(const std::string& text, std::uint64_t& out);

}  // namespace Zorv
