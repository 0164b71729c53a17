#include "Library.hpp"

#include "FmComponentManager.hpp"
#include "FmMoImpl.hpp"
#include "Logging.hpp"
#include "Portal.hpp"
#include "ZorvFmComponent.hpp"

namespace ZorvFm {
namespace Library {

/// Nothing that was created is undone when a later step fails: the last message announces more than is done.
ZorvReturnT initialize(const ZorvMgmtSpiPortalAccessor_1T* accessor, const char* config)
{
    Zorv::Portal::instance().open(accessor);
    Zorv::Logging::open(Zorv::Portal::instance(), "FM");

    ZORV_TRACE("Initializing FM Component Manager...");
    const auto* portal =
        accessor == nullptr ? nullptr : static_cast<const ZorvMgmtSpiPortal_1T*>(accessor->getPortal("1"));
    if (portal == nullptr) {
        ZORV_ERROR("Failed to get the interface portal");
        return ZORV_RETURN_FAILED;
    }
    FmComponentManager::instance().setPortal(portal);

    ZORV_TRACE("Initializing FM MO implementer...");
    if (!FmMoImpl::instance().open(*accessor, config)) {
        ZORV_ERROR("Failed to initialize FM MO implementer");
        return ZORV_RETURN_FAILED;
    }

    ZORV_TRACE("Initializing FM component...");
    if (!ZorvFmComponent::instance().open(*accessor, config)) {
        ZORV_ERROR("Failed to initialize FM component, terminating MO implementer");
        return ZORV_RETURN_FAILED;
    }
    return ZORV_RETURN_OK;
}

ZorvReturnT terminate()
{
    ZorvFmComponent::instance().terminate();
    ZorvFmComponent::instance().close();
    return FmMoImpl::instance().close();
}

}  // namespace Library
}  // namespace ZorvFm
