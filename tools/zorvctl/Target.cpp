#include "Target.hpp"

#include <Poco/URI.h>

namespace ZorvCtl {

namespace {

std::string encoded(const std::string& value)
{
    std::string text;
    Poco::URI::encode(value, "!#$&'()*+,/:;=?@[]", text);
    return text;
}

}  // namespace

Target& Target::segment(const std::string& value)
{
    text += "/" + encoded(value);
    return *this;
}

Target& Target::parameter(const std::string& name, const std::string& value)
{
    text += (hasQuery ? "&" : "?") + name + "=" + encoded(value);
    hasQuery = true;
    return *this;
}

}  // namespace ZorvCtl
