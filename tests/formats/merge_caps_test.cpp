#include "formats/merge_caps.h"

#include <gtest/gtest.h>

#include <functional>

#include "formats/json_text.h"
#include "formats/keys.h"
#include "support/log_capture.h"
#include "support/log_lines.h"
#include "support/temp_dir.h"

namespace vexa {
namespace {

using namespace kiv_mode_merge_caps;
using testing::CountLogLines;
using testing::LogCapture;
using testing::TempDir;

template <typename Op>
std::function<std::vector<uint32_t>(uint16_t)> Values(std::vector<Op> (*list)(uint16_t)) {
  return [list](uint16_t version) {
    std::vector<uint32_t> values;
    for (Op op : list(version)) values.push_back(static_cast<uint32_t>(op));
    return values;
  };
}

TEST(MergeCapsTest, CapabilitiesAreListedAtVersionOneOnly) {
  const std::vector<std::function<std::vector<uint32_t>(uint16_t)>> op_lists = {
      Values(GetPostBlendGamutMergeOps),        Values(GetPostBlendGCMergeOps),
      Values(GetPostBlendPaGlobalMergeOps),     Values(GetPostBlendPaMultiZoneMergeOps),
      Values(GetPostBlendPaMemoryColorsMergeOps), Values(GetPostBlendPaDitherMergeOps),
      Values(GetPostBlendIGCMergeOps),          Values(GetPostBlendPCCMergeOps),
      Values(GetPostBlendDitherMergeOps),       Values(GetPostBlendDEMergeOps),
      Values(GetPostBlendHdrBlobMergeOps),      Values(GetPostBlendGameBlobMergeOps),
  };
  for (size_t i = 0; i < op_lists.size(); ++i) {
    // Merging by computation is not listed, not even for gamut and PCC.
    EXPECT_EQ(op_lists[i](1), (std::vector<uint32_t>{0, 1, 2})) << "list " << i;
    for (uint16_t version : {0, 2, 3, 0xFFFF}) EXPECT_TRUE(op_lists[i](version).empty()) << i;
  }
  EXPECT_EQ(Values(GetMergeables)(1),
            (std::vector<uint32_t>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
  EXPECT_TRUE(GetMergeables(0).empty());
  EXPECT_TRUE(GetMergeables(2).empty());
}

std::shared_ptr<KivModeMergeVersionContext> Context(const std::string& text) {
  Json::Value block;
  EXPECT_TRUE(PopulateJsonValue(text, block)) << text;
  return GetModeMergeVersionContext(block);
}

// A block passes when no version is newer than the device's; a version of the wrong type
// refuses the block (no context, an error line naming the member).
TEST(MergeCapsTest, VersionCheckIsAllOrNothing) {
  const struct {
    std::string block;
    bool passes;
    const char* refused_member;
  } cases[] = {
      {"{}", true, nullptr},
      {R"({"Version":1,"PostBlendGamutMergeOp":{"Version":2},"PostBlendPCCMergeOp":{"Version":2},)"
       R"("PostBlendGCMergeOp":{"Version":1},"Unknown":{"Version":99}})", true, nullptr},
      {R"({"Version":0,"PostBlendIGCMergeOp":{"Version":0}})", true, nullptr},
      {R"({"PostBlendGamutMergeOp":{"Other":3}})", true, nullptr},
      {R"({"Version":2,"PostBlendGCMergeOp":{"Version":1}})", false, nullptr},
      {R"({"Version":1,"PostBlendPCCMergeOp":{"Version":3}})", false, nullptr},
      {R"({"Version":"1"})", false, "Version"},
      {R"({"Version":-1})", false, "Version"},
      {R"({"PostBlendGCMergeOp":1})", false, "PostBlendGCMergeOp"},
      {R"({"PostBlendGCMergeOp":{"Version":[1]}})", false, "Version"},
  };
  for (const auto& c : cases) {
    LogCapture log;
    const auto context = Context(c.block);
    EXPECT_EQ(context == nullptr, c.refused_member != nullptr) << c.block;
    EXPECT_EQ(MergeVersionCheck(context), c.passes) << c.block;
    const std::string named = std::string("Invalid member \"") +
                              (c.refused_member ? c.refused_member : "") + "\" in \"ModeMerge\"";
    EXPECT_EQ(log.Errors().size(), c.refused_member ? 1u : 0u) << log.Dump();
    EXPECT_EQ(log.Count(named), c.refused_member ? 1u : 0u) << log.Dump();
  }
  // One key above the device's version is enough to refuse, whichever key it is.
  for (const auto& [key, version] : DeviceMergeVersions()) {
    const std::string newer = std::to_string(version + 1);
    const std::string block = key == keys::kVersion
                                  ? R"({"Version":)" + newer + "}"
                                  : "{\"" + key + R"(":{"Version":)" + newer + "}}";
    EXPECT_FALSE(MergeVersionCheck(Context(block))) << block;
  }
  LogCapture log(2);
  EXPECT_FALSE(MergeVersionCheck(nullptr));
  EXPECT_EQ(CountLogLines(log, "I", "VexaJsonModeParser::KivModeMergeCaps::MergeVersionCheck",
                          "in_file is null"),
            1u)
      << log.Dump();
}

TEST(MergeCapsTest, VersionFileIsTheSameSingleLineEveryTime) {
  TempDir dir;
  const std::string expected =
      R"({"ModeMerge":{"PostBlendDEMergeOp":{"Version":1},"PostBlendDitherMergeOp":{"Version":1},)"
      R"("PostBlendGCMergeOp":{"Version":1},"PostBlendGameBlobMergeOp":{"Version":1},)"
      R"("PostBlendGamutMergeOp":{"Version":2},"PostBlendHdrBlobMergeOp":{"Version":1},)"
      R"("PostBlendIGCMergeOp":{"Version":1},"PostBlendPCCMergeOp":{"Version":2},)"
      R"("PostBlendPaDitherMergeOp":{"Version":1},"PostBlendPaGlobalMergeOp":{"Version":1},)"
      R"("PostBlendPaMemoryColorMergeOp":{"Version":1},)"
      R"("PostBlendPaMultiZoneMergeOp":{"Version":1},"Version":1}})"
      "\n";
  const std::string path = dir.File("vexa_mode_merge_version");
  for (int round = 0; round < 2; ++round) {
    EXPECT_TRUE(GenerateModeMergeVersionFile(path));
    EXPECT_EQ(dir.Get("vexa_mode_merge_version"), expected) << "round " << round;
  }
  // The device's own block passes its own check.
  Json::Value file;
  ASSERT_TRUE(PopulateJsonValue(expected, file));
  EXPECT_TRUE(MergeVersionCheck(GetModeMergeVersionContext(file[keys::kModeMerge])));
  EXPECT_FALSE(GenerateModeMergeVersionFile(dir.File("missing/vexa_mode_merge_version")));
}

}  // namespace
}  // namespace vexa
