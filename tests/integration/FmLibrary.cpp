#include "FmLibrary.hpp"

#include <dlfcn.h>
#include <gtest/gtest.h>

namespace ZorvIntegration {

FmLibrary::FmLibrary(ZorvFakes::Middleware& theMiddleware) : middleware(theMiddleware)
{
    handle = dlopen(FM_LIBRARY, RTLD_NOW | RTLD_LOCAL);
    EXPECT_NE(nullptr, handle) << dlerror();
    if (handle != nullptr) {
        zorvInit = reinterpret_cast<ZorvLcmInitT>(dlsym(handle, "zorvLCMinit"));
        zorvTerminate = reinterpret_cast<ZorvLcmTerminateT>(dlsym(handle, "zorvLCMterminate"));
    }
    EXPECT_NE(nullptr, zorvInit);
    EXPECT_NE(nullptr, zorvTerminate);
}

FmLibrary::~FmLibrary()
{
    unload();
}

ZorvReturnT FmLibrary::initialize(const std::string& configFile) const
{
    return zorvInit(ZorvFakes::Middleware::accessor(), configFile.c_str());
}

void FmLibrary::start(ZorvStateChangeReason reason) const
{
    EXPECT_EQ(0, middleware.portal.component("ZorvFmMoImplComponent")->start(reason));
    EXPECT_EQ(0, middleware.portal.component("ZorvFmComponent")->start(reason));
}

void FmLibrary::stop(ZorvStateChangeReason reason) const
{
    EXPECT_EQ(0, middleware.portal.component("ZorvFmComponent")->stop(reason));
    EXPECT_EQ(0, middleware.portal.component("ZorvFmMoImplComponent")->stop(reason));
}

void FmLibrary::unload()
{
    if (handle != nullptr) {
        EXPECT_EQ(0, dlclose(handle)) << dlerror();
        handle = nullptr;
    }
}

bool FmLibrary::isLoaded()
{
    void* const loaded = dlopen(FM_LIBRARY, RTLD_NOW | RTLD_NOLOAD);
    if (loaded != nullptr) {
        dlclose(loaded);
    }
    return loaded != nullptr;
}

}  // namespace ZorvIntegration
