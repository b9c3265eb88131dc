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

using testing::LogCapture;
using testing::TempDir;

std::shared_ptr<std::string> Text(const std::string& bytes) {
  return std::make_shared<std::string>(bytes);
}

size_t Lines(const LogCapture& log, const char* function, const std::string& message) {
  return testing::CountLogLines(log, "I", std::string("VexaJsonModeParser::Utils::") + function,
                                message);
}

TEST(ReadFromFileTest, ReadsWholeFilesAndLogsEachOutcomeAtLevelTwo) {
  TempDir dir;
  const std::string bytes("{\"a\":1}\0tail\n", 13);
  dir.Put("data", bytes);
  dir.Put("empty", "");
  const struct {
    std::string path, bytes;
    std::vector<std::string> lines;
  } cases[] = {
      {dir.File("data"), bytes, {"reading from " + dir.File("data"), "read successfully"}},
      {dir.File("empty"), "", {"reading from " + dir.File("empty"), "file len is 0"}},
      {dir.File("missing"), "", {"unable to read " + dir.File("missing")}},
  };
  for (const auto& c : cases) {
    for (uint32_t level : {1u, 2u}) {
      LogCapture log(level);
      const std::shared_ptr<std::string> text = ReadFromFile(c.path);
      ASSERT_NE(text, nullptr) << c.path;
      EXPECT_EQ(*text, c.bytes) << c.path;
      for (const std::string& line : c.lines) {
        EXPECT_EQ(Lines(log, "ReadFromFile", line), level == 2 ? 1u : 0u) << log.Dump();
      }
      EXPECT_EQ(log.Lines().size(), level == 2 ? c.lines.size() : 0u) << log.Dump();
    }
  }
  // A directory opens but has no readable length or bytes; which of the two the file system
  // reports varies, the empty result does not.
  LogCapture log(2);
  EXPECT_EQ(*ReadFromFile(dir.path()), "");
  EXPECT_EQ(Lines(log, "ReadFromFile", "file len is -1") + log.Count("error: expected "), 1u)
      << log.Dump();
}

TEST(WriteToFileTest, ReplacesTheFileByRenameUpToTheFirstZeroByte) {
  TempDir dir;
  dir.Put("out", "old contents");
  const int old_fd = open(dir.File("out").c_str(), O_RDONLY);
  ASSERT_GE(old_fd, 0);
  const mode_t saved_umask = umask(022);
  EXPECT_TRUE(WriteToFile(dir.File("out"), Text(std::string("new\0ignored", 11))));
  umask(saved_umask);
  EXPECT_EQ(dir.Get("out"), "new");
  // The old file was replaced, not truncated in place: its reader still sees all of it.
  char old_bytes[32] = {};
  EXPECT_EQ(read(old_fd, old_bytes, sizeof(old_bytes)), 12);
  close(old_fd);
  struct stat info {};
  ASSERT_EQ(stat(dir.File("out").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0644u);  // as fopen would create it, readable by tools
  EXPECT_EQ(dir.Entries(), std::vector<std::string>{"out"});  // no temporary left behind
  EXPECT_TRUE(WriteToFile(dir.File("out"), nullptr));
  EXPECT_EQ(dir.Get("out"), "");
}

TEST(WriteToFileTest, FailsCleanlyWhereTheFileCannotBeReplaced) {
  TempDir dir;
  dir.Put("taken/inner", "x");
  LogCapture log;
  EXPECT_FALSE(WriteToFile(dir.File("missing/out"), Text("a")));        // no such directory
  EXPECT_FALSE(WriteToFile(dir.File("taken"), Text("a")));              // a directory stands there
  EXPECT_FALSE(WriteToFile("/proc/self/vexa-not-writable", Text("a")));  // read-only directory
  EXPECT_EQ(dir.Entries(), std::vector<std::string>{"taken"});
  EXPECT_EQ(dir.Entries("taken"), std::vector<std::string>{"inner"});
  EXPECT_TRUE(log.Errors().empty()) << log.Dump();
}

TEST(FileUtilsTest, ExistsAndDevicePathsBelowTheSysroot) {
  TempDir dir;
  testing::ScopedEnv sysroot(kSysrootVariable, dir.path().c_str());
  dir.Put("data/display/in", "device text");
  LogCapture log(2);
  EXPECT_TRUE(Exists("/data/display/in"));
  EXPECT_FALSE(Exists("/data/display/gone"));
  EXPECT_EQ(*ReadFromFile("/data/display/in"), "device text");
  EXPECT_TRUE(WriteToFile("/data/display/out", Text("written")));
  EXPECT_EQ(dir.Get("data/display/out"), "written");
  // Lines name the device path, as on the device.
  EXPECT_EQ(Lines(log, "Exists", "file /data/display/in exists"), 1u) << log.Dump();
  EXPECT_EQ(Lines(log, "Exists", "file /data/display/gone does not exist"), 1u) << log.Dump();
  EXPECT_EQ(Lines(log, "ReadFromFile", "reading from /data/display/in"), 1u) << log.Dump();
}

}  // namespace
}  // namespace vexa
