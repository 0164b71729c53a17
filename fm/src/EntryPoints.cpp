/// The two symbols that the library exports.
#include "Guarded.hpp"
#include "Library.hpp"

__attribute__((visibility("default"))) ZorvReturnT zorvLCMinit(const ZorvMgmtSpiPortalAccessor_1T* accessor,
                                                               const char* config)
{
    return Zorv::guarded("zorvLCMinit", [&] { return ZorvFm::Library::initialize(accessor, config); });
}

__attribute__((visibility("default"))) ZorvReturnT zorvLCMterminate()
{
    return Zorv::guarded("zorvLCMterminate", [] { return ZorvFm::Library::terminate(); });
}
