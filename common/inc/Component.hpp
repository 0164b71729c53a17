/// A component of the first framework.
///
/// ComponentT derives from Component<ComponentT>, fills the identities in its constructor and implements the four
/// operations; the middleware reaches it through the descriptor's callbacks.
///
/// Threads:   open and close by the thread that loads the library; start and stop by the middleware, one at a time.
/// Ownership and failure as for ComponentFrame.
#pragma once

#include "ComponentFrame.hpp"

namespace Zorv {

template <class ComponentT>
class Component : public ComponentFrame<ComponentT> {
public:
    virtual int initialize(const char* config) = 0;
    virtual void terminate() = 0;
    virtual int start(ZorvStateChangeReason reason) = 0;
    virtual int stop(ZorvStateChangeReason reason) = 0;
    virtual ~Component() = default;

    /// The function table of an offered interface; null if it has none.
    virtual const void* getInterface(const ZorvMgmtSpiInterface_1& identity) const = 0;

    /// Registers the component, with the portal of version "3" if there is one, and initializes it. True when both worked.
    bool open(const ZorvMgmtSpiPortalAccessor_1T& portalAccessor, const char* config)
    {
        this->accessor = &portalAccessor;
        this->takePortal1();
        this->takePortal3();
        if (this->portal1 == nullptr) {
            return false;
        }
        this->describe();
        this->started = false;
        const ZorvReturnT registered = this->portal3 != nullptr
                                           ? this->portal3->registerComponent(&this->descriptor.spi)
                                           : this->portal1->registerComponent(&this->descriptor.spi);
        return registered == ZORV_RETURN_OK && initialize(config) == 0;
    }

    /// Unregisters from the portal of version "3" and forgets it. A component that had to register with version "1" stays
    /// registered there.
    void close()
    {
        if (this->portal3 != nullptr) {
            this->portal3->unregisterComponent(&this->descriptor.spi);
            this->portal3 = nullptr;
        }
    }

protected:
    using ComponentFrame<ComponentT>::ComponentFrame;
};

}  // namespace Zorv
