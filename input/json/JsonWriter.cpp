#include "json/JsonWriter.hpp"

#include <cstring>

#include "json/Utf8.hpp"

namespace ZorvInput {

JsonWriter& JsonWriter::beginObject()
{
    writer.StartObject();
    return *this;
}

JsonWriter& JsonWriter::endObject()
{
    writer.EndObject();
    return *this;
}

JsonWriter& JsonWriter::beginArray()
{
    writer.StartArray();
    return *this;
}

JsonWriter& JsonWriter::endArray()
{
    writer.EndArray();
    return *this;
}

JsonWriter& JsonWriter::key(const std::string& name)
{
    return write(name);  // the library writes a name as it writes a text
}

JsonWriter& JsonWriter::value(const std::string& text)
{
    return write(text);
}

JsonWriter& JsonWriter::write(const std::string& text)
{
    if (isUtf8(text)) {
        writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
    } else {
        const std::string mended = toUtf8(text);
        writer.String(mended.data(), static_cast<rapidjson::SizeType>(mended.size()));
    }
    return *this;
}

JsonWriter& JsonWriter::value(const char* text)
{
    return value(std::string(text != nullptr ? text : ""));
}

JsonWriter& JsonWriter::value(std::uint64_t number)
{
    writer.Uint64(number);
    return *this;
}

JsonWriter& JsonWriter::value(std::uint32_t number)
{
    writer.Uint(number);
    return *this;
}

JsonWriter& JsonWriter::value(std::int64_t number)
{
    writer.Int64(number);
    return *this;
}

JsonWriter& JsonWriter::value(std::int32_t number)
{
    writer.Int(number);
    return *this;
}

JsonWriter& JsonWriter::value(bool flag)
{
    writer.Bool(flag);
    return *this;
}

JsonWriter& JsonWriter::null()
{
    writer.Null();
    return *this;
}

JsonWriter& JsonWriter::raw(const std::string& json)
{
    writer.RawValue(json.data(), json.size(), rapidjson::kObjectType);
    return *this;
}

std::string JsonWriter::take()
{
    std::string text(buffer.GetString(), buffer.GetSize());
    buffer.Clear();
    writer.Reset(buffer);
    return text;
}

}  // namespace ZorvInput
