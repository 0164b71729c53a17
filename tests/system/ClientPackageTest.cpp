/// The client library as it is installed: what a developer finds there, and the example applications built with it.

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

#include "ClientNode.hpp"

namespace ZorvTest {

using ::testing::ElementsAre;

namespace {

const std::string libraryFolder = LIBRARY_FOLDER;

ProcessResult shell(const std::string& command, const std::vector<std::string>& environment = {})
{
    return runProcess({"/bin/sh", "-c", command}, environment);
}

}  // namespace

class ClientPackageTest : public ::testing::Test {
protected:
    ClientPackageTest()
    {
        for (const char* component : {"client", "client-dev"}) {
            const ProcessResult result = shell(std::string("cmake --install " CLIENT_BUILD " --component ") +
                                               component + " --prefix " + prefix());
            EXPECT_EQ(0, result.exitCode) << result.err;
        }
    }

    std::string prefix() const { return directory.path("installed"); }
    std::string program(const std::string& name) const { return directory.path(name); }

    std::vector<std::string> installedFiles() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(prefix())) {
            if (!entry.is_directory()) {
                names.push_back(entry.path().lexically_relative(prefix()));
            }
        }
        std::sort(names.begin(), names.end());
        return names;
    }

    void buildThroughPkgConfig(const std::string& compiler, const std::string& source, const std::string& name) const
    {
        const ProcessResult result =
            shell(compiler + " -Wall -Wextra -Wpedantic -Werror " COMPILER_FLAGS " " APPLICATIONS "/" + source +
                      " $(pkg-config --cflags --libs zorv_client) -o " + program(name),
                  {"PKG_CONFIG_PATH=" + prefix() + "/" + libraryFolder + "/pkgconfig"});
        EXPECT_EQ(0, result.exitCode) << result.err;
    }

    void buildThroughFindPackage() const
    {
        const ProcessResult result = shell("cmake -S " APPLICATIONS " -B " + directory.path() +
                                           " -D CMAKE_C_COMPILER=" COMPILER_C " -D CMAKE_CXX_COMPILER=" COMPILER_CXX
                                           " -D 'CMAKE_C_FLAGS=" COMPILER_FLAGS "' -D 'CMAKE_CXX_FLAGS=" COMPILER_FLAGS
                                           "' -D CMAKE_PREFIX_PATH=" +
                                           prefix() + " && cmake --build " + directory.path());
        EXPECT_EQ(0, result.exitCode) << result.out << result.err;
    }

    /// What it prints, with the library of the install tree and a node.
    std::string run(const std::string& name)
    {
        const ProcessResult result =
            runProcess({program(name), node.socketPath()}, {"LD_LIBRARY_PATH=" + prefix() + "/" + libraryFolder});
        EXPECT_EQ(0, result.exitCode) << result.err;
        EXPECT_EQ("", result.err);
        return result.out;
    }

    void expectBothRun()
    {
        node.start();
        EXPECT_EQ("raise: taken by the node\nalert: taken by the node\nclear: taken by the node\nsent 3, rejected 0\n",
                  run("watch-port"));
        EXPECT_EQ("sent 8, rejected 0\n", run("watch-fans"));
        EXPECT_THAT(node.awaitAlarms(0), ElementsAre());
    }

    const TemporaryDirectory directory;
    ClientNode node;
};

TEST_F(ClientPackageTest, installsTheseFiles)
{
    const std::string packages = libraryFolder + "/cmake/zorv_client/";
    std::vector<::testing::Matcher<std::string>> expected = {"include/zorv_client.h",
                                                             packages + "zorv_clientConfig.cmake",
                                                             packages + "zorv_clientConfigVersion.cmake",
                                                             packages + "zorv_clientTargets.cmake",
                                                             ::testing::StartsWith(packages),
                                                             libraryFolder + "/libzorv_client.so",
                                                             libraryFolder + "/libzorv_client.so.1",
                                                             libraryFolder + "/libzorv_client.so.1.0.0",
                                                             libraryFolder + "/pkgconfig/zorv_client.pc",
                                                             "share/man/man3/zorv_client.3"};
    for (const std::string name : {"Open", "Raise", "Clear", "Alert", "Flush", "Counters", "Close", "ResultText"}) {
        expected.emplace_back("share/man/man3/zorvClient" + name + ".3");
    }
    EXPECT_THAT(installedFiles(), ::testing::UnorderedElementsAreArray(expected));
}

TEST_F(ClientPackageTest, applicationsBuildThroughPkgConfig)
{
    buildThroughPkgConfig(COMPILER_C " -std=c11", "watch-port.c", "watch-port");
    buildThroughPkgConfig(COMPILER_CXX " -std=c++17 -pthread", "watch-fans.cpp", "watch-fans");
    expectBothRun();
}

TEST_F(ClientPackageTest, applicationsBuildThroughFindPackage)
{
    buildThroughFindPackage();
    expectBothRun();
}

}  // namespace ZorvTest
