#include "Visitor.hpp"

#include <fcntl.h>
#include <grp.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <system_error>

namespace ZorvTest {

namespace {

constexpr unsigned patience = 30;  // seconds

/// Up to the end of what the other side sends.
std::string readAll(int file)
{
    std::string text;
    std::array<char, 4096> block{};
    for (ssize_t length = 0; (length = read(file, block.data(), block.size())) > 0;) {
        text.append(block.data(), static_cast<std::size_t>(length));
    }
    return text;
}

void writeAll(int file, const std::string& text)
{
    if (write(file, text.data(), text.size()) != static_cast<ssize_t>(text.size())) {
        _exit(EXIT_FAILURE);
    }
}

}  // namespace

Visitor::Visitor(uid_t wantedUser, gid_t wantedGroup)
    : stranger(geteuid() == 0),
      user(stranger ? wantedUser : geteuid()),
      group(stranger ? wantedGroup : getegid())
{
}

std::string Visitor::ask(const std::string& socket, const std::string& method, const std::string& target,
                         const std::string& body)
{
    const std::string request = method + " " + target +
                                " HTTP/1.1\r\nHost: node\r\nConnection: close\r\n"
                                "Content-Type: application/json\r\nContent-Length: " +
                                std::to_string(body.size()) + "\r\n\r\n" + body;
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) {
        throw std::runtime_error("no pipe");
    }
    process = fork();
    if (process == 0) {
        visit(socket, request, ends[1]);
    }
    close(ends[1]);
    const std::string answer = readAll(ends[0]);
    close(ends[0]);
    waitpid(process, nullptr, 0);
    const std::string version = "HTTP/1.1 ";
    return answer.compare(0, version.size(), version) == 0 ? answer.substr(version.size(), 3) : answer;
}

std::string Visitor::name() const
{
    return "user " + std::to_string(user) + " group " + std::to_string(group) + " process " + std::to_string(process);
}

void Visitor::visit(const std::string& socket, const std::string& request, int answer) const
{
    alarm(patience);
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    socket.copy(address.sun_path, sizeof(address.sun_path) - 1);
    const int connection = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (!becomeStranger()) {
        writeAll(answer, "cannot be another user");
    } else if (connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
        writeAll(answer, std::generic_category().message(errno));
    } else {
        writeAll(connection, request);
        writeAll(answer, readAll(connection));
    }
    _exit(EXIT_SUCCESS);
}

bool Visitor::becomeStranger() const
{
    return !stranger ||
           (setgroups(0, nullptr) == 0 && setresgid(group, group, group) == 0 && setresuid(user, user, user) == 0);
}

}  // namespace ZorvTest
