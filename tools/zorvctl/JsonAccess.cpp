#include "JsonAccess.hpp"

#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>

#include "files/LineText.hpp"

namespace ZorvCtl {

using namespace ZorvInput;

const JsonT* find(const JsonT& object, const char* name)
{
    if (!object.IsObject()) {
        return nullptr;
    }
    const auto found = object.FindMember(name);
    return found == object.MemberEnd() ? nullptr : &found->value;
}

std::string textOr(const JsonT& object, const char* name, const std::string& fallback)
{
    const JsonT* value = find(object, name);
    return value == nullptr || value->IsNull() ? fallback : jsonText(*value);
}

std::string cellOf(const JsonT& object, const char* name)
{
    const JsonT* value = find(object, name);
    return value == nullptr ? "-" : cellOf(*value);
}

std::string cellOf(const JsonT& value)
{
    return value.IsNull() ? "-" : toLineText(jsonText(value));
}

std::uint64_t numberOr(const JsonT& object, const char* name, std::uint64_t fallback)
{
    const JsonT* value = find(object, name);
    return value == nullptr || !value->IsUint64() ? fallback : value->GetUint64();
}

std::vector<const JsonT*> entriesOf(const JsonT& object, const char* name)
{
    std::vector<const JsonT*> entries;
    const JsonT* array = find(object, name);
    if (array != nullptr && array->IsArray()) {
        for (const JsonT& entry : array->GetArray()) {
            entries.push_back(&entry);
        }
    }
    return entries;
}

std::string indentedJson(const JsonT& value)
{
    rapidjson::StringBuffer buffer;
    rapidjson::PrettyWriter<rapidjson::StringBuffer> writer(buffer);
    writer.SetIndent(' ', 2);
    value.Accept(writer);
    return std::string(buffer.GetString(), buffer.GetSize()) + "\n";
}

}  // namespace ZorvCtl
