#include "ingress/PublicationId.hpp"

#include <algorithm>
#include <cctype>
#include <limits>

#include "files/Number.hpp"

namespace ZorvNode {

namespace {

constexpr std::size_t longestClient = 64;
constexpr std::uint64_t largestNumber = std::numeric_limits<std::int64_t>::max();

}  // namespace

std::optional<PublicationId> PublicationId::fromText(const std::string& text)
{
    const std::size_t slash = std::min(text.find('/'), text.size());
    PublicationId id{text.substr(0, slash), 0};
    const bool isName = !id.client.empty() && id.client.size() <= longestClient &&
                        std::all_of(id.client.begin(), id.client.end(), [](unsigned char character) {
                            return std::isalnum(character) != 0 || character == '-';
                        });
    if (!isName || slash == text.size() || !ZorvInput::parseUnsigned(text.substr(slash + 1), id.number) ||
        id.number > largestNumber) {
        return std::nullopt;
    }
    return id;
}

}  // namespace ZorvNode
