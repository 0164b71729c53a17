#include "ListingRun.hpp"

#include <stdexcept>

#include "Figures.hpp"

namespace ZorvBench {

void measureListing(const AlarmServer& server, const Address& address, int alarms)
{
    HttpConnection connection(address);
    SecondsT taken{};
    double bytes = 0;
    int listed = 0;
    for (std::string request = server.list(); !request.empty(); request = server.listAfter(connection.body())) {
        const auto begun = ClockT::now();
        const int status = connection.exchange(request);
        taken += ClockT::now() - begun;
        if (status != 200) {
            throw std::runtime_error("status " + std::to_string(status) + ": " + connection.body());
        }
        bytes += static_cast<double>(connection.body().size());
        listed += server.alarmsOn(connection.body());
    }
    if (listed != alarms) {
        throw std::runtime_error(std::to_string(listed) + " alarms are listed instead of " + std::to_string(alarms));
    }
    say("listing", taken.count(), "s");
    say("listing bytes", bytes, "B");
}

}  // namespace ZorvBench
