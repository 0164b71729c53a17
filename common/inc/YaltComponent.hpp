/// A component of the second framework. It registers with the portal of version "3" only.
///
/// Threads, ownership and failure as for Component.
#pragma once

#include "ComponentFrame.hpp"

namespace Zorv {

template <class ComponentT>
class YaltComponent : public ComponentFrame<ComponentT> {
public:
    virtual YaltReturnT initialize(const char* config) = 0;
    virtual YaltReturnT start(YaltStateChangeReason reason) = 0;
    virtual YaltReturnT stop(YaltStateChangeReason reason) = 0;
    virtual YaltReturnT terminate() = 0;
    virtual ~YaltComponent() = default;

    /// The function table of an offered interface; null if it has none.
    virtual const void* getInterface(const ZorvMgmtSpiInterface_1& identity) const = 0;

    /// Registers the component and initializes it. True when both worked.
    bool open(const ZorvMgmtSpiPortalAccessor_1T& portalAccessor, const char* config)
    {
        this->accessor = &portalAccessor;
        this->takePortal3();
        this->takePortal1();
        if (this->portal3 == nullptr) {
            return false;
        }
        this->describe();
        return this->portal3->registerComponent(&this->descriptor.spi) == ZORV_RETURN_OK &&
               initialize(config) == ZORV_RETURN_OK;
    }

    /// Terminates, unregisters and forgets the portal. The unregistration's result, or that of terminate without a portal.
    YaltReturnT close()
    {
        const YaltReturnT terminated = terminate();
        if (this->portal3 == nullptr) {
            return terminated;
        }
        const YaltReturnT unregistered = this->portal3->unregisterComponent(&this->descriptor.spi);
        this->portal3 = nullptr;
        return unregistered;
    }

protected:
    using ComponentFrame<ComponentT>::ComponentFrame;
};

}  // namespace Zorv
