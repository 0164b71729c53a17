#include "ZorvException.hpp"

#include "Format.hpp"

namespace Zorv {

ZorvException::ZorvException(const char* format, ...)
{
    va_list arguments;
    va_start(arguments, format);
    text = formatText(format, arguments);
    va_end(arguments);
}

}  // namespace Zorv
