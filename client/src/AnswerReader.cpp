#include "AnswerReader.hpp"

#include <rapidjson/reader.h>

#include <algorithm>
#include <iterator>

namespace ZorvClient {

namespace {

constexpr std::size_t deepest = 32;
const char* const knownNames[] = {"accepted", "rejected", "item", "field", "reason", "error"};

/// Follows the parser through the document. place is where it is, for example "rejected[].item".
class Places : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Places> {
public:
    explicit Places(AnswerJson& wanted) : answer(wanted) {}

    bool Uint(unsigned number)
    {
        if (place == ".accepted") {
            answer.accepted = number;
        } else if (place == ".rejected[].item") {
            answer.rejected->back().item = number;
        }
        return true;
    }

    bool String(const char* text, rapidjson::SizeType length, bool /*copy*/)
    {
        if (place == ".rejected[].field") {
            answer.rejected->back().field.assign(text, length);
        } else if (place == ".rejected[].reason") {
            answer.rejected->back().reason.assign(text, length);
        } else if (place == ".error.field") {
            answer.error.field.assign(text, length);
        } else if (place == ".error.reason") {
            answer.error.reason.assign(text, length);
        }
        return true;
    }

    bool StartArray()
    {
        if (place == ".rejected") {
            answer.rejected.emplace();
        }
        return enter("[]");
    }

    bool StartObject()
    {
        if (place == ".rejected[]") {
            answer.rejected->emplace_back();
        }
        return enter("");
    }

    /// A name that is not known could read like a place.
    bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/)
    {
        const std::string name(text, length);
        const bool isKnown = std::find(std::begin(knownNames), std::end(knownNames), name) != std::end(knownNames);
        place.resize(outer.back());
        place += isKnown ? "." + name : ".?";
        return true;
    }

    bool EndArray(rapidjson::SizeType /*count*/) { return leave(); }
    bool EndObject(rapidjson::SizeType /*count*/) { return leave(); }

private:
    bool enter(const char* step)
    {
        outer.push_back(place.size());
        place += step;
        return outer.size() <= deepest;
    }

    bool leave()
    {
        place.resize(outer.back());
        outer.pop_back();
        return true;
    }

    AnswerJson& answer;
    std::string place;
    std::vector<std::size_t> outer;  // lengths of place around the arrays and objects that the parser is in
};

}  // namespace

AnswerJson readAnswer(std::string body)
{
    constexpr std::size_t longestCharacter = 4;
    body.append(longestCharacter, '\0');  // one that is cut off is read as a whole, beyond a single zero
    AnswerJson answer;
    rapidjson::InsituStringStream source(body.data());
    rapidjson::Reader reader;
    Places places(answer);
    constexpr unsigned flags = rapidjson::kParseInsituFlag | rapidjson::kParseValidateEncodingFlag;
    return reader.Parse<flags>(source, places).IsError() ? AnswerJson() : answer;
}

}  // namespace ZorvClient
