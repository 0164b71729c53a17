#include "HttpPost.hpp"

namespace ZorvClient {

HttpAnswer post(Socket& socket, const std::string& target, const std::string& name, const std::string& body,
                DeadlineT deadline)
{
    std::string request = "POST " + target + " HTTP/1.1\r\n" +
                          "Host: localhost\r\n"
                          "Content-Type: application/json\r\n"
                          "Accept: application/json\r\n"
                          "Publication-ID: " +
                          name +
                          "\r\n"
                          "Content-Length: " +
                          std::to_string(body.size()) + "\r\n\r\n";
    request += body;

    // A node that finds the request too large answers, and maybe hangs up, before it has read all of it.
    const bool complete = socket.send(request, deadline);
    HttpAnswer answer = HttpReader(socket, deadline).read();
    answer.isLast = answer.isLast || !complete;
    return answer;
}

}  // namespace ZorvClient
