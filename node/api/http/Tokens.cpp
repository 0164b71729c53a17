#include "api/http/Tokens.hpp"

#include <Poco/String.h>
#include <sys/stat.h>

#include <sstream>

#include "files/InputError.hpp"
#include "files/TextFile.hpp"

namespace ZorvNode {

using namespace ZorvInput;

namespace {

constexpr std::size_t shortestToken = 16;
const std::string scheme = "Bearer ";

/// Takes as long for any two texts of one length, wherever they differ.
bool areEqual(const std::string& left, const std::string& right)
{
    if (left.size() != right.size()) {
        return false;
    }
    unsigned difference = 0;
    for (std::size_t position = 0; position < left.size(); ++position) {
        difference |= static_cast<unsigned char>(left[position]) ^
                      static_cast<unsigned>(static_cast<unsigned char>(right[position]));
    }
    return difference == 0;
}

Caller permissionsOf(const std::string& name)
{
    if (name != "read" && name != "publish" && name != "manage") {
        throw ValueError("begins with none of read, publish and manage");  // with a token, maybe
    }
    return {"", true, name != "read", name == "manage"};
}

}  // namespace

Tokens::Tokens(const std::string& path)
{
    std::istringstream lines(readFile(path));
    struct stat status {};
    if (stat(path.c_str(), &status) == 0 && (status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        throw InputError(path, "other users may read it; chmod 600");
    }
    unsigned long number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        std::istringstream words(line);
        std::string permission;
        std::string text;
        std::string more;
        if (!(words >> permission) || permission[0] == '#') {
            continue;
        }
        try {
            Caller caller = permissionsOf(permission);
            if (!(words >> text) || (words >> more) || text.size() < shortestToken) {
                throw ValueError("not one token of " + std::to_string(shortestToken) + " characters or more");
            }
            caller.text = "token " + std::to_string(tokens.size() + 1);
            tokens.push_back({text, caller});
        } catch (const ValueError& e) {
            throw InputError(path, number, e);
        }
    }
    if (tokens.empty()) {
        throw InputError(path, "no token in the file");
    }
}

Caller Tokens::callerOf(const std::string& authorization, const std::string& peer) const
{
    Caller caller;
    caller.text = "unknown";
    if (Poco::icompare(authorization, scheme.size(), scheme) == 0) {
        for (const Token& token : tokens) {
            if (areEqual(token.text, authorization.substr(scheme.size()))) {
                caller = token.caller;
            }
        }
    }
    caller.text += " from " + peer;
    return caller;
}

}  // namespace ZorvNode
