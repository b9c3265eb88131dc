#include "formats/merge_caps.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include <tuple>

#include "support/fixture_writer.h"
#include "support/log_capture.h"
#include "support/temp_dir.h"
#include "platform/device_paths.h"

namespace vexa {

using namespace kiv_mode_merge_caps;
using Values = std::vector<uint32_t>;

template <typename Op>
static Values Listed(std::vector<Op> (*list)(uint16_t), uint16_t version) {
  Values values;
  for (Op op : list(version)) values.push_back(static_cast<uint32_t>(op));
  return values;
}

// Every block lists the same three operations; merging by computation is not listed, not even
// for gamut and PCC.
TEST(MergeCapsTest, CapabilitiesAreListedAtVersionOneOnly) {
  const Values blocks = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11};
  for (uint16_t v : {0, 1, 2, 0xFFFF}) {
    const Values ops = v == 1 ? Values{0, 1, 2} : Values();
    EXPECT_EQ(Listed(GetPostBlendGamutMergeOps, v), ops) << v;
    EXPECT_EQ(Listed(GetPostBlendPCCMergeOps, v), ops) << v;
    EXPECT_EQ(Listed(GetMergeables, v), v == 1 ? blocks : Values()) << v;
  }
}

// A block passes when no version is newer than the device's; a version of the wrong type refuses
// the block with an error line naming the member.
TEST(MergeCapsTest, VersionCheckIsAllOrNothing) {
  const std::tuple<const char*, bool, const char*> cases[] = {  // block, passes, member named
      {R"({"Version":1,"PostBlendGamutMergeOp":{"Version":2},"PostBlendGCMergeOp":{"Other":3},)"
       R"("Unknown":{"Version":9}})", true, nullptr},
      {R"({"Version":2})", false, nullptr}, {R"({"Version":"1"})", false, "Version"},
      {R"({"PostBlendGamutMergeOp":{"Version":3}})", false, nullptr},
      {R"({"PostBlendGCMergeOp":1})", false, "PostBlendGCMergeOp"},
      {R"({"PostBlendGCMergeOp":{"Version":[1]}})", false, "Version"}};
  for (const auto& [block, passes, member] : cases) {
    testing::LogCapture log;
    EXPECT_EQ(MergeVersionCheck(GetModeMergeVersionContext(testing::ParseReadable(block))), passes) << block;
    EXPECT_EQ(log.Errors().size(), member ? 1u : 0u) << log.Dump();
    const std::string named = std::string("Invalid member \"") + (member ? member : "") + "\" in ";
    EXPECT_EQ(log.Count(named + "\"ModeMerge\""), member ? 1u : 0u) << log.Dump();
  }
}

// The file is written when missing or different, and left alone (same inode) when it already
// holds the text.
TEST(MergeCapsTest, VersionFileIsRewrittenOnlyWhenItDiffers) {
  testing::TempDir dir;
  testing::ScopedEnv sysroot(kSysrootVariable, dir.path().c_str());
  const auto inode = [&] {
    struct stat info {};
    return stat(dir.File("v").c_str(), &info) == 0 ? info.st_ino : 0;
  };
  ASSERT_TRUE(GenerateModeMergeVersionFile("/v"));
  EXPECT_EQ(dir.Get("v"), ModeMergeVersionText());
  const auto first = inode();
  ASSERT_TRUE(GenerateModeMergeVersionFile("/v"));
  EXPECT_EQ(inode(), first);
  dir.Put("v", ModeMergeVersionText() + " ");
  ASSERT_TRUE(GenerateModeMergeVersionFile("/v"));
  EXPECT_EQ(dir.Get("v"), ModeMergeVersionText());
}

}  // namespace vexa
