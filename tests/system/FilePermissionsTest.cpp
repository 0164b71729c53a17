/// Other users read nothing of what a node writes: not its alarms, not its logs and their older files, not its state.

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <filesystem>
#include <map>

#include "RunningNode.hpp"

namespace ZorvTest {

using ::testing::Contains;
using ::testing::Pair;
using ::testing::StartsWith;

namespace {

using ModesT = std::map<std::string, unsigned>;

/// "log/trace.log.N" for "log/trace.log.3".
std::string withoutNumber(const std::string& name)
{
    const std::size_t end = name.find_last_not_of("0123456789");
    return end + 1 < name.size() && name[end] == '.' ? name.substr(0, end) + ".N" : name;
}

/// The umask that a node is started with.
class Umask {
public:
    explicit Umask(mode_t mask) : old(umask(mask)) {}
    ~Umask() { umask(old); }

    Umask(const Umask&) = delete;
    Umask& operator=(const Umask&) = delete;

private:
    const mode_t old;
};

}  // namespace

class FilePermissionsTest : public ::testing::Test {
protected:
    FilePermissionsTest()
    {
        files.writeConfiguration(FM_LIBRARY,
                                 "<stateDirectory>state</stateDirectory>\n<logDirectory>log</logDirectory>\n"
                                 "<log><fileSize>1000</fileSize><keptFiles>1</keptFiles></log>\n"
                                 "<trace><fileSize>1000</fileSize><keptFiles>1</keptFiles>"
                                 "<group name=\"FM\" level=\"8\"/></trace>\n");
        std::filesystem::copy_file(std::string(EXAMPLE) + "/alarm-model.xml", files.path("model.xml"),
                                   std::filesystem::copy_options::overwrite_existing);
    }

    /// So much that each log has an older file.
    static void fillLogs(const RunningNode& node)
    {
        for (int number = 0; number < 20; ++number) {
            const std::string raise = R"({"raise":{"dn":"ManagedElement=1,Port=)" + std::to_string(number) +
                                      R"(","majorType":32473,"minorType":202,"severity":"MAJOR"}})";
            node.request("POST", "/v1/notifications", raise);
            node.request("PUT", "/v1/levels", R"({"log":"information"})");
        }
        node.settle();
    }

    /// Of a folder and everything in it; all older files of a log are one.
    ModesT modesOf(const std::string& folder) const
    {
        ModesT modes;
        const auto add = [&](const std::filesystem::path& path) {
            struct stat status {};
            EXPECT_EQ(0, lstat(path.c_str(), &status));
            modes[withoutNumber(path.lexically_relative(files.directory.path()))] |= status.st_mode & 07777;
        };
        add(files.path(folder));
        for (const auto& entry : std::filesystem::recursive_directory_iterator(files.path(folder))) {
            add(entry.path());
        }
        return modes;
    }

    static ModesT logsWith(unsigned folder, unsigned mode)
    {
        ModesT modes = {{"log", folder}};
        for (const std::string log : {"FmAlarmLog", "Publications", "SystemLog", "trace"}) {
            modes["log/" + log + ".log"] = mode;
            modes["log/" + log + ".log.N"] = mode;
        }
        return modes;
    }

    /// Closed to others, in folders of these modes.
    void expectClosedFiles(unsigned folders, unsigned stateFolder) const
    {
        EXPECT_EQ((ModesT{{"run", folders}, {"run/zorvd.pid", 0640}, {"run/zorvd.sock", 0660}}), modesOf("run"));
        EXPECT_EQ((ModesT{{"state", stateFolder},
                          {"state/zorv.db", 0600},
                          {"state/zorv.db-wal", 0600},
                          {"state/zorv.lock", 0640}}),
                  modesOf("state"));
        EXPECT_EQ(logsWith(folders, 0640), modesOf("log"));
    }

    NodeFiles files;
};

TEST_F(FilePermissionsTest, nothingIsForOthersWhenTheUmaskForbidsNothing)
{
    const Umask nothing(0);
    RunningNode node(files);
    fillLogs(node);

    expectClosedFiles(0750, 0700);
}

TEST_F(FilePermissionsTest, foldersThatEveryoneMayUseDoNotOpenTheFiles)
{
    const Umask nothing(0);
    for (const char* const folder : {"run", "state", "log"}) {
        std::filesystem::create_directory(files.path(folder));
    }
    RunningNode node(files);
    fillLogs(node);

    expectClosedFiles(0777, 0777);
}

TEST_F(FilePermissionsTest, aStricterUmaskHolds)
{
    const Umask ownerAlone(0077);
    RunningNode node(files);
    fillLogs(node);

    EXPECT_EQ((ModesT{{"run", 0700}, {"run/zorvd.pid", 0600}, {"run/zorvd.sock", 0660}}), modesOf("run"));
    EXPECT_EQ(logsWith(0700, 0600), modesOf("log"));
}

TEST_F(FilePermissionsTest, aStoreThatIsSetAsideStaysTheOwnersAlone)
{
    const Umask nothing(0);
    EXPECT_EQ(0, RunningNode(files).stop().exitCode);
    files.directory.write("state/zorv.db", "no database, and not short");
    EXPECT_EQ(0, RunningNode(files, {"--accept-empty"}).stop().exitCode);

    const ModesT modes = modesOf("state");
    EXPECT_EQ(3U, modes.size());
    EXPECT_THAT(modes, Contains(Pair("state/zorv.db", 0600U)));
    EXPECT_THAT(modes, Contains(Pair(StartsWith("state/zorv.db.corrupt-"), 0600U)));
}

}  // namespace ZorvTest
