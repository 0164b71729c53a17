#include "MeIdTranslator.hpp"

#include "DnUtil.hpp"
#include "Logging.hpp"
#include "MoAccessor.hpp"

namespace Zorv {
namespace {

constexpr std::uint32_t readTimeout = 60;  // s
constexpr std::size_t namesToKeep = 1000;  // applications may send any DN; the memory stays bounded

/// What replaces the local first part of a DN.
std::string readExternalRdn(const std::string& localRdn)
{
    MoAccessor accessor(ZORV_LOCK_POLICY_NONE, readTimeout);
    const std::optional<std::string> externalId = accessor.getOptionalAttr<std::string>(localRdn, "externalId");
    if (!externalId || externalId->empty()) {
        return localRdn;
    }
    return std::string(DnUtil::rdnClass(localRdn)) + '=' + *externalId;
}

}  // namespace

void MeIdTranslator::start()
{
    modelChanged();
}

void MeIdTranslator::stop()
{
    modelChanged();
}

void MeIdTranslator::modelChanged()
{
    const Poco::FastMutex::ScopedLock lock(mutex);
    externalNames.clear();
}

std::string MeIdTranslator::toExternalDn(const std::string& dn)
{
    const std::string localRdn(DnUtil::firstRdn(dn));
    if (DnUtil::rdnClass(localRdn) != "ManagedElement") {
        return dn;
    }
    const Poco::FastMutex::ScopedLock lock(mutex);
    return externalRdn(localRdn) + dn.substr(localRdn.size());
}

const std::string& MeIdTranslator::externalRdn(const std::string& localRdn)
{
    const auto known = externalNames.find(localRdn);
    if (known != externalNames.end()) {
        return known->second;
    }
    if (externalNames.size() >= namesToKeep) {
        externalNames.clear();
    }
    std::string external = localRdn;
    try {
        external = readExternalRdn(localRdn);
    } catch (const std::exception& e) {
        ZORV_WARNING("Could not read the external name of %s, reason %s", localRdn.c_str(), e.what());
    }
    return externalNames.emplace(localRdn, std::move(external)).first->second;
}

}  // namespace Zorv
