#include "formats/file_utils.h"

#include <fcntl.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include <tuple>

#include "platform/device_paths.h"
#include "support/log_capture.h"
#include "support/temp_dir.h"

namespace vexa {

// Device paths are taken below the sysroot (trailing slashes and all); each outcome is logged at
// level two only, naming the device path.
TEST(FileUtilsTest, ReadsWholeFilesBelowTheSysrootAndLogsEachOutcome) {
  testing::TempDir dir;
  testing::ScopedEnv sysroot(kSysrootVariable, (dir.path() + "//").c_str());
  const std::string bytes("{\"a\":1}\0tail\n", 13);
  dir.Put("d/data", bytes);
  dir.Put("d/empty", "");
  const std::tuple<const char*, std::string, std::vector<std::string>> cases[] = {
      {"/d/data", bytes, {"reading from /d/data", "read successfully", "file /d/data exists"}},
      {"/d/empty", "", {"reading from /d/empty", "file len is 0", "file /d/empty exists"}},
      {"/d/gone", "", {"unable to read /d/gone", "file /d/gone does not exist"}}};
  for (const auto& [path, contents, lines] : cases) {
    for (uint32_t level : {1u, 2u}) {
      testing::LogCapture log(level);
      EXPECT_EQ(*ReadFromFile(path), contents) << path;
      EXPECT_EQ(Exists(path), lines.size() == 3) << path;
      for (const std::string& line : lines) EXPECT_EQ(log.Count(" " + line), level / 2) << line;
      EXPECT_EQ(log.Lines().size(), level == 2 ? lines.size() : 0u) << log.Dump();
    }
    testing::LogCapture log(2);  // the byte reader: the same bytes and reading lines, no string
    EXPECT_EQ(ReadFileBytes(path).view(), contents) << path;
    for (size_t i = 0; i + 1 < lines.size(); ++i) EXPECT_EQ(log.Count(" " + lines[i]), 1) << lines[i];
    EXPECT_EQ(log.Lines().size(), lines.size() - 1) << log.Dump();
  }
}

TEST(FileUtilsTest, WriteReplacesTheFileUpToTheFirstZeroByteOrFailsLeavingNothing) {
  testing::TempDir dir;
  testing::ScopedEnv sysroot(kSysrootVariable, dir.path().c_str());
  dir.Put("out", "old contents");
  dir.Put("taken/inner", "x");
  const int old_fd = open(dir.File("out").c_str(), O_RDONLY);
  const mode_t saved_umask = umask(022);
  EXPECT_TRUE(WriteToFile("/out", std::make_shared<std::string>("new\0ignored", 11)));
  umask(saved_umask);
  EXPECT_EQ(dir.Get("out"), "new");
  // Renamed over, not truncated in place: a reader of the old file still sees all of it.
  char old_bytes[32] = {};
  EXPECT_EQ(read(old_fd, old_bytes, sizeof(old_bytes)), 12);
  close(old_fd);
  struct stat info {};
  ASSERT_EQ(stat(dir.File("out").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 0777, 0644u);  // as fopen would create it, readable by tools
  EXPECT_FALSE(WriteToFile("/taken", std::make_shared<std::string>("a")));  // a directory
  EXPECT_TRUE(WriteToFile("/out", nullptr) && dir.Get("out").empty());
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 2);  // no temporary
}

// Only a regular file with exactly the contents (up to their first zero byte) holds them.
TEST(FileUtilsTest, FileHoldsOnlyExactlyTheContents) {
  testing::TempDir dir;
  testing::ScopedEnv sysroot(kSysrootVariable, dir.path().c_str());
  dir.Put("f", "{\"a\":1}");
  dir.Put("d/inner", "x");
  const std::tuple<const char*, std::string, bool> cases[] = {
      {"/f", "{\"a\":1}", true},          {"/f", std::string("{\"a\":1}\0z", 9), true},
      {"/f", "{\"a\":2}", false},         {"/f", "{\"a\":1", false},
      {"/f", "{\"a\":1} ", false},        {"/d", "", false},
      {"/gone", "", false}};
  for (const auto& [path, contents, holds] : cases) EXPECT_EQ(FileHolds(path, contents), holds) << path << contents;
}

// A write that the file-size limit cuts off part-way (a full disk behaves alike) fails and
// leaves the previous file whole. Run in a child so the limit and the ignored signal stay there.
TEST(FileUtilsTest, WriteCutOffPartWayLeavesThePreviousFileIntact) {
  testing::TempDir dir;
  testing::ScopedEnv sysroot(kSysrootVariable, dir.path().c_str());
  const std::string previous(8192, 'p');
  dir.Put("version.json", previous);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{4096, 4096};
    setrlimit(RLIMIT_FSIZE, &limit);
    _exit(WriteToFile("/version.json", std::make_shared<std::string>(65536, 'n')) ? 1 : 0);
  }
  int status = 0;
  ASSERT_EQ(waitpid(child, &status, 0), child);
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0);  // the write reported failure
  EXPECT_EQ(dir.Get("version.json"), previous);
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.path()), {}), 1);
}

}  // namespace vexa
