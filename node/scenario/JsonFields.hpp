/// Fields of a JSON object, each asked for once, with its place in the messages.
///
/// Failure: ValueError, `PATH: what, "value"`.
#pragma once

#include <Poco/JSON/Object.h>

#include <cstdint>
#include <set>
#include <string>

namespace ZorvNode {

/// The value as it stands in the file.
std::string jsonText(const Poco::Dynamic::Var& value);

/// A JSON text, not something that reads like one.
bool isJsonText(const Poco::Dynamic::Var& value);

class JsonFields {
public:
    /// @param parentPath "" at the top, else like "raise.".
    JsonFields(Poco::JSON::Object::Ptr jsonObject, std::string parentPath);

    bool has(const std::string& name) const { return object->has(name); }
    Poco::Dynamic::Var get(const std::string& name);  ///< throws when it is missing
    std::string text(const std::string& name);
    std::string text(const std::string& name, const std::string& fallback);
    std::int64_t integer(const std::string& name, std::int64_t low, std::int64_t high);
    double number(const std::string& name, double low, double high);
    JsonFields fields(const std::string& name);

    /// Throws at a field that nobody has asked for.
    void expectNoOther() const;

    /// Names in their order.
    std::vector<std::string> names() const { return object->getNames(); }

    std::string pathOf(const std::string& name) const { return path + name; }

private:
    Poco::JSON::Object::Ptr object;
    std::string path;
    std::set<std::string> asked;
};

}  // namespace ZorvNode
