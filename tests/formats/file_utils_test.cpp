#include "formats/file_utils.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "platform/device_paths.h"
#include "support/log_capture.h"
#include "support/log_lines.h"
#include "support/temp_dir.h"

namespace vexa {
namespace {

using testing::CountLogLines;
using testing::LogCapture;
using testing::ScopedEnv;
using testing::TempDir;

constexpr char kUtils[] = "VexaJsonModeParser::Utils::";

std::shared_ptr<std::string> Text(const std::string& bytes) {
  return std::make_shared<std::string>(bytes);
}

size_t ReadLines(const LogCapture& log, const std::string& message) {
  return CountLogLines(log, 'I', std::string(kUtils) + "ReadFromFile", message);
}

TEST(ReadFromFileTest, ReadsWholeFilesAndLogsEachOutcomeAtLevelTwo) {
  TempDir dir;
  const std::string bytes("{\"a\":1}\0tail\n", 13);
  dir.Put("data.json", bytes);
  dir.Put("empty.json", "");
  const struct {
    std::string path;
    std::string bytes;
    std::vector<std::string> lines;
  } cases[] = {
      {dir.File("data.json"), bytes,
       {"reading from " + dir.File("data.json"), "read successfully"}},
      {dir.File("empty.json"), "", {"reading from " + dir.File("empty.json"), "file len is 0"}},
      {dir.File("missing.json"), "", {"unable to read " + dir.File("missing.json")}},
  };
  for (const auto& c : cases) {
    for (uint32_t level : {1u, 2u}) {
      LogCapture log(level);
      const std::shared_ptr<std::string> text = ReadFromFile(c.path);
      ASSERT_NE(text, nullptr) << c.path;
      EXPECT_EQ(*text, c.bytes) << c.path;
      const size_t expected = level == 2 ? 1 : 0;
      for (const std::string& line : c.lines) {
        EXPECT_EQ(ReadLines(log, line), expected) << log.Dump();
      }
      EXPECT_EQ(log.Lines().size(), level == 2 ? c.lines.size() : 0u) << log.Dump();
    }
  }
}

// A directory opens for reading but has no readable length or bytes; which of the two the file
// system reports varies, the empty result does not.
TEST(ReadFromFileTest, UnreadablePathGivesEmptyText) {
  TempDir dir;
  LogCapture log(2);
  const std::shared_ptr<std::string> text = ReadFromFile(dir.path());
  ASSERT_NE(text, nullptr);
  EXPECT_EQ(*text, "");
  EXPECT_EQ(ReadLines(log, "reading from " + dir.path()), 1u) << log.Dump();
  const size_t no_length = ReadLines(log, "file len is -1");
  const size_t read_error = log.Count("error: expected ");
  EXPECT_EQ(no_length + read_error, 1u) << log.Dump();
  EXPECT_EQ(ReadLines(log, "read successfully"), 0u) << log.Dump();
}

TEST(WriteToFileTest, ReplacesTheFileByRenameUpToTheFirstZeroByte) {
  TempDir dir;
  dir.Put("out", "old contents");
  const int old_fd = open(dir.File("out").c_str(), O_RDONLY);
  ASSERT_GE(old_fd, 0);
  const mode_t saved_umask = umask(022);
  const bool written = WriteToFile(dir.File("out"), Text(std::string("new\0ignored", 11)));
  umask(saved_umask);
  EXPECT_TRUE(written);
  EXPECT_EQ(dir.Get("out"), "new");
  // The old file was replaced, not truncated in place: its reader still sees all of it.
  char old_bytes[32] = {};
  EXPECT_EQ(read(old_fd, old_bytes, sizeof(old_bytes)), 12);
  EXPECT_STREQ(old_bytes, "old contents");
  close(old_fd);
  struct stat info {};
  ASSERT_EQ(stat(dir.File("out").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0644u);
  EXPECT_EQ(dir.Entries(), std::vector<std::string>{"out"});  // no temporary left behind

  EXPECT_TRUE(WriteToFile(dir.File("fresh"), Text("")));
  EXPECT_EQ(dir.Get("fresh"), "");
  EXPECT_TRUE(WriteToFile(dir.File("fresh"), nullptr));
  EXPECT_EQ(dir.Get("fresh"), "");
}

TEST(WriteToFileTest, FailsCleanlyWhereTheFileCannotBeReplaced) {
  TempDir dir;
  dir.Put("taken/inner", "x");
  LogCapture log;
  EXPECT_FALSE(WriteToFile(dir.File("missing/out"), Text("a")));  // no such directory
  EXPECT_FALSE(WriteToFile(dir.File("taken"), Text("a")));        // a directory stands there
  EXPECT_FALSE(WriteToFile("/proc/self/vexa-not-writable", Text("a")));  // read-only directory
  EXPECT_EQ(dir.Entries(), std::vector<std::string>{"taken"});
  EXPECT_EQ(dir.Entries("taken"), std::vector<std::string>{"inner"});
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
}

TEST(ExistsTest, TellsWhetherTheFileOpensForReading) {
  TempDir dir;
  dir.Put("here", "x");
  LogCapture log(2);
  EXPECT_TRUE(Exists(dir.File("here")));
  EXPECT_FALSE(Exists(dir.File("gone")));
  const std::string where = std::string(kUtils) + "Exists";
  EXPECT_EQ(CountLogLines(log, 'I', where, "file " + dir.File("here") + " exists"), 1u);
  EXPECT_EQ(CountLogLines(log, 'I', where, "file " + dir.File("gone") + " does not exist"), 1u)
      << log.Dump();
}

TEST(FileUtilsTest, DevicePathsResolveBelowTheSysroot) {
  TempDir dir;
  ScopedEnv sysroot(kSysrootVariable, dir.path().c_str());
  dir.Put("data/vendor/display/in", "device text");
  LogCapture log(2);
  EXPECT_TRUE(Exists("/data/vendor/display/in"));
  EXPECT_EQ(*ReadFromFile("/data/vendor/display/in"), "device text");
  EXPECT_TRUE(WriteToFile("/data/vendor/display/out", Text("written")));
  EXPECT_EQ(dir.Get("data/vendor/display/out"), "written");
  // Lines name the device path, as on the device.
  EXPECT_EQ(ReadLines(log, "reading from /data/vendor/display/in"), 1u) << log.Dump();
}

}  // namespace
}  // namespace vexa
