#include "model/Dn.hpp"

namespace ZorvInput {

std::string parentOf(const std::string& dn)
{
    const std::size_t comma = dn.rfind(',');
    return comma == std::string::npos ? "" : dn.substr(0, comma);
}

std::string lastPartOf(const std::string& dn)
{
    return dn.substr(dn.rfind(',') + 1);
}

std::string classOf(const std::string& dn)
{
    const std::string part = lastPartOf(dn);
    const std::size_t equals = part.find('=');
    return equals == std::string::npos ? "" : part.substr(0, equals);
}

std::string joinDn(const std::string& parentDn, const std::string& part)
{
    return parentDn.empty() ? part : parentDn + "," + part;
}

bool isKeyValue(const std::string& value)
{
    return !value.empty() && value.find_first_of(",=") == std::string::npos;
}

bool isBelow(const std::string& dn, const std::string& ancestorDn)
{
    return dn.size() > ancestorDn.size() && dn[ancestorDn.size()] == ',' &&
           dn.compare(0, ancestorDn.size(), ancestorDn) == 0;
}

}  // namespace ZorvInput
