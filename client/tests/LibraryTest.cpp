/// The library as a file: loaded, used and unloaded without a trace.
#include "NodeScript.hpp"
#include "zorv_client.h"

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <link.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <iterator>

namespace ZorvClientTest {

namespace {

/// Another copy, because the program has linked the library and never lets go of it.
std::string copyOfTheLibrary(const ZorvTest::TemporaryDirectory& folder)
{
    std::ifstream library(ZORV_CLIENT_LIBRARY, std::ios::binary);
    return folder.write("libcopy.so", {std::istreambuf_iterator<char>(library), std::istreambuf_iterator<char>()});
}

template <class FunctionT>
FunctionT find(void* library, const char* name)
{
    return reinterpret_cast<FunctionT>(::dlvsym(library, name, "ZORV_CLIENT_1.0"));
}

bool isMapped(const std::string& path)
{
    std::ifstream maps("/proc/self/maps");
    const std::string all{std::istreambuf_iterator<char>(maps), std::istreambuf_iterator<char>()};
    return all.find(path) != std::string::npos;
}

}  // namespace

TEST(LibraryTest, isGoneAfterItsUse)
{
    const ZorvTest::TemporaryDirectory folder;
    const std::string path = copyOfTheLibrary(folder);
    NodeScript node;
    node.start();
    void* library = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    ASSERT_NE(library, nullptr) << ::dlerror();
    const auto open = find<decltype(&zorvClientOpen)>(library, "zorvClientOpen");
    const auto raise = find<decltype(&zorvClientRaise)>(library, "zorvClientRaise");
    const auto close = find<decltype(&zorvClientClose)>(library, "zorvClientClose");
    ASSERT_TRUE(open != nullptr && raise != nullptr && close != nullptr);

    ZorvClientT* client = nullptr;
    const ZorvClientOptionsT options{node.path().c_str(), 0, 0, nullptr, nullptr};
    ZorvClientNotificationT notification{};
    notification.dn = "Equipment=1";
    notification.severity = ZORV_CLIENT_MINOR;
    EXPECT_EQ(open(&options, &client), ZORV_CLIENT_OK);
    EXPECT_EQ(raise(client, &notification), ZORV_CLIENT_OK);
    EXPECT_EQ(close(client, 10000), ZORV_CLIENT_OK);
    EXPECT_EQ(node.batches().size(), 1u);

    EXPECT_TRUE(isMapped(path));
    ::dlclose(library);
    EXPECT_FALSE(isMapped(path));

    // Nothing of it is called at a fork any more.
    const pid_t child = ::fork();
    if (child == 0) {
        ::_exit(0);
    }
    int status = -1;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

TEST(LibraryTest, isFoundByTheNameOfItsInterface)
{
    EXPECT_NE(::dlopen("libzorv_client.so.1", RTLD_NOLOAD | RTLD_LAZY), nullptr);
}

}  // namespace ZorvClientTest
