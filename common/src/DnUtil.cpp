#include "DnUtil.hpp"

namespace Zorv {
namespace DnUtil {

std::string_view firstRdn(std::string_view dn)
{
    return dn.substr(0, dn.find(','));
}

std::string_view lastRdn(std::string_view dn)
{
    const std::size_t comma = dn.rfind(',');
    return comma == std::string_view::npos ? dn : dn.substr(comma + 1);
}

std::string_view parentDn(std::string_view dn)
{
    const std::size_t comma = dn.rfind(',');
    return comma == std::string_view::npos ? std::string_view() : dn.substr(0, comma);
}

std::string_view rdnValue(std::string_view rdn)
{
    const std::size_t equals = rdn.find('=');
    return equals == std::string_view::npos ? std::string_view() : rdn.substr(equals + 1);
}

std::string_view rdnClass(std::string_view rdn)
{
    return rdn.substr(0, rdn.find('='));
}

std::string childDn(std::string_view parent, std::string_view rdn)
{
    std::string dn(parent);
    if (!dn.empty()) {
        dn += ',';
    }
    dn += rdn;
    return dn;
}

}  // namespace DnUtil
}  // namespace Zorv
