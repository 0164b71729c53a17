#include "Serialize.hpp"

#include <Poco/Base64Decoder.h>
#include <Poco/Base64Encoder.h>

#include <iterator>
#include <sstream>

#include "ZorvException.hpp"

namespace ZorvFm {
namespace Serialize {

std::string toBase64(const std::string& bytes)
{
    std::ostringstream text;
    Poco::Base64Encoder encoder(text);
    encoder << bytes;
    encoder.close();
    return text.str();
}

/// Read through the stream, not through its buffer: the stream turns the decoder's exceptions into its end.
std::string fromBase64(const std::string& text)
{
    std::istringstream encoded(text);
    Poco::Base64Decoder decoder(encoded);
    std::string bytes;
    char byte = 0;
    while (decoder.get(byte)) {
        bytes += byte;
    }
    return bytes;
}

template <class ValueT>
void fromString(ValueT& value, const std::string& text, std::ios_base& (*manipulator)(std::ios_base&), const char* name)
{
    std::istringstream stream(text);
    stream >> manipulator >> value;
    if (stream.fail()) {
        throw Zorv::ZorvException("Failed to retrieve %s", name);
    }
}

template void fromString<int>(int& value, const std::string& text, std::ios_base& (*manipulator)(std::ios_base&),
                              const char* name);
template void fromString<unsigned long long>(unsigned long long& value, const std::string& text,
                                             std::ios_base& (*manipulator)(std::ios_base&), const char* name);

}  // namespace Serialize
}  // namespace ZorvFm
