/// Writes JSON: one value, compact, valid UTF-8 whatever the texts are made of.
///
///     json.beginObject().member("accepted", 3).key("rejected").beginArray().endArray().endObject();
///
/// Threads: one at a time.
#pragma once

#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <cstdint>
#include <string>

namespace ZorvInput {

class JsonWriter {
public:
    JsonWriter() : writer(buffer) {}

    JsonWriter& beginObject();
    JsonWriter& endObject();
    JsonWriter& beginArray();
    JsonWriter& endArray();
    JsonWriter& key(const std::string& name);

    JsonWriter& value(const std::string& text);
    JsonWriter& value(const char* text);  ///< null writes an empty text
    JsonWriter& value(std::uint64_t number);
    JsonWriter& value(std::uint32_t number);
    JsonWriter& value(std::int64_t number);
    JsonWriter& value(std::int32_t number);
    JsonWriter& value(bool flag);
    JsonWriter& null();

    /// Text that is JSON already.
    JsonWriter& raw(const std::string& json);

    template <class ValueT>
    JsonWriter& member(const std::string& name, const ValueT& its)
    {
        return key(name).value(its);
    }

    /// What was written; the writer begins anew.
    std::string take();

private:
    JsonWriter& write(const std::string& text);

    rapidjson::StringBuffer buffer;
    rapidjson::Writer<rapidjson::StringBuffer> writer;
};

}  // namespace ZorvInput
