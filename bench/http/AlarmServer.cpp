#include "AlarmServer.hpp"

#include <algorithm>
#include <charconv>
#include <stdexcept>

namespace ZorvBench {

namespace {

std::string get(const std::string& target)
{
    return "GET " + target + " HTTP/1.1\r\nHost: localhost\r\n\r\n";
}

std::string post(const std::string& target, const std::string& body)
{
    return "POST " + target + " HTTP/1.1\r\nHost: localhost\r\nContent-Type: application/json\r\nContent-Length: " +
           std::to_string(body.size()) + "\r\n\r\n" + body;
}

std::string padded(int number, std::size_t width)
{
    const std::string digits = std::to_string(number);
    return std::string(width - std::min(width, digits.size()), '0') + digits;
}

std::string resource(int number)
{
    return "ManagedElement=1,Port=" + padded(number, 6);
}

int occurrences(const std::string& text, const std::string& part)
{
    int number = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + part.size())) {
        ++number;
    }
    return number;
}

template <class ItemT>
std::string arrayOf(int first, int count, ItemT item)
{
    std::string text = "[";
    for (int number = first; number < first + count; ++number) {
        text += (number == first ? "" : ",") + item(number);
    }
    return text + "]";
}

/// A node of this system.
class Node : public AlarmServer {
public:
    std::string raiseOne(int number) const override { return post(publications, alarm(number)); }

    std::string raiseMany(int first, int count) const override
    {
        return post(publications, arrayOf(first, count, alarm));
    }

    std::string list() const override { return get("/v1/alarms?limit=10000"); }

    std::string listAfter(const std::string& page) const override
    {
        const std::string member = R"("next":")";
        const std::size_t begin = page.rfind(member);
        if (begin == std::string::npos) {
            return "";
        }
        const std::size_t value = begin + member.size();
        return get("/v1/alarms?limit=10000&after=" + page.substr(value, page.find('"', value) - value));
    }

    int alarmsOn(const std::string& page) const override { return occurrences(page, R"("fmAlarmId":)"); }

    std::string countActive() const override { return get("/v1/summary"); }

    int activeIn(const std::string& answer) const override
    {
        const std::string member = R"("totalActive":)";
        const std::size_t begin = answer.find(member);
        int number = 0;
        if (begin == std::string::npos ||
            std::from_chars(answer.data() + begin + member.size(), answer.data() + answer.size(), number).ec !=
                std::errc()) {
            throw std::runtime_error("no number of active alarms in " + answer);
        }
        return number;
    }

private:
    static std::string alarm(int number)
    {
        return R"({"raise":{"dn":")" + resource(number) +
               R"(","majorType":32473,"minorType":101,"severity":"MAJOR","text":"no light","eventTime":1714543200)" +
               padded(number, 9) + "}}";
    }

    static constexpr const char* publications = "/v1/notifications";
};

/// The alert manager that Debian has a package of.
class AlertManager : public AlarmServer {
public:
    std::string raiseOne(int number) const override { return raiseMany(number, 1); }

    std::string raiseMany(int first, int count) const override { return post(alerts, arrayOf(first, count, alarm)); }

    std::string list() const override { return get(alerts); }

    std::string listAfter(const std::string&) const override { return ""; }

    int alarmsOn(const std::string& page) const override { return occurrences(page, R"("fingerprint":)"); }

    std::string countActive() const override { return ""; }

    int activeIn(const std::string&) const override { return 0; }

private:
    static std::string alarm(int number)
    {
        return R"({"labels":{"alertname":"32473/101","dn":")" + resource(number) +
               R"(","severity":"MAJOR"},"annotations":{"text":"no light"},"startsAt":"2024-05-01T06:00:00.)" +
               padded(number, 9) + R"(Z"})";
    }

    static constexpr const char* alerts = "/api/v2/alerts";
};

}  // namespace

std::unique_ptr<AlarmServer> makeServer(const std::string& name)
{
    if (name == "node") {
        return std::make_unique<Node>();
    }
    return std::make_unique<AlertManager>();
}

}  // namespace ZorvBench
