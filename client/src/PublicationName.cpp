#include "PublicationName.hpp"

#include <sys/random.h>
#include <unistd.h>

#include <array>
#include <ctime>

namespace ZorvClient {

namespace {

constexpr char digits[] = "0123456789abcdef";

/// For a system that has no random numbers yet.
std::string processAndTime()
{
    timespec time{};
    ::clock_gettime(CLOCK_REALTIME, &time);
    return std::to_string(::getpid()) + "-" + std::to_string(time.tv_sec) + "-" + std::to_string(time.tv_nsec);
}

}  // namespace

PublicationName::PublicationName()
{
    std::array<unsigned char, 16> bytes{};
    if (::getrandom(bytes.data(), bytes.size(), GRND_NONBLOCK) != static_cast<ssize_t>(bytes.size())) {
        client = processAndTime();
        return;
    }
    for (const unsigned byte : bytes) {
        client += digits[byte / 16];
        client += digits[byte % 16];
    }
}

}  // namespace ZorvClient
