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

TEST(MergeCapsTest, EachKeyFillsItsOwnVersion) {
  using Field = uint16_t KivModeMergeVersionContext::*;
  const std::pair<const char*, Field> fields[] = {
      {keys::kPostBlendGamutMergeOp, &KivModeMergeVersionContext::gamut},
      {keys::kPostBlendGCMergeOp, &KivModeMergeVersionContext::gc},
      {keys::kPostBlendPaGlobalMergeOp, &KivModeMergeVersionContext::pa_global},
      {keys::kPostBlendPaMultiZoneMergeOp, &KivModeMergeVersionContext::pa_multi_zone},
      {keys::kPostBlendPaMemoryColorMergeOp, &KivModeMergeVersionContext::pa_memory_colors},
      {keys::kPostBlendPaDitherMergeOp, &KivModeMergeVersionContext::pa_dither},
      {keys::kPostBlendIGCMergeOp, &KivModeMergeVersionContext::igc},
      {keys::kPostBlendPCCMergeOp, &KivModeMergeVersionContext::pcc},
      {keys::kPostBlendDitherMergeOp, &KivModeMergeVersionContext::dither},
      {keys::kPostBlendDEMergeOp, &KivModeMergeVersionContext::de},
      {keys::kPostBlendHdrBlobMergeOp, &KivModeMergeVersionContext::hdr_blob},
      {keys::kPostBlendGameBlobMergeOp, &KivModeMergeVersionContext::game_blob},
  };
  for (const auto& [key, field] : fields) {
    auto context = Context(std::string(R"({"Version":9,")") + key + R"(":{"Version":7}})");
    ASSERT_NE(context, nullptr) << key;
    EXPECT_EQ(context->version, 9) << key;
    for (const auto& [other_key, other_field] : fields) {
      EXPECT_EQ((*context).*other_field, other_field == field ? 7 : 0) << key << " " << other_key;
    }
  }
}

TEST(MergeCapsTest, VersionCheckIsAllOrNothing) {
  const struct {
    std::string block;
    bool passes;
  } cases[] = {
      {"{}", true},
      {R"({"Version":1,"PostBlendGamutMergeOp":{"Version":2},"PostBlendPCCMergeOp":{"Version":2},)"
       R"("PostBlendGCMergeOp":{"Version":1},"Unknown":{"Version":99}})", true},
      {R"({"Version":0,"PostBlendIGCMergeOp":{"Version":0}})", true},
      {R"({"Version":2,"PostBlendGCMergeOp":{"Version":1}})", false},
      {R"({"Version":1,"PostBlendPCCMergeOp":{"Version":3}})", false},
      {R"({"PostBlendGamutMergeOp":{"Version":3}})", false},
      {R"({"PostBlendGamutMergeOp":{"Other":3}})", true},
  };
  for (const auto& c : cases) EXPECT_EQ(MergeVersionCheck(Context(c.block)), c.passes) << c.block;
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
  EXPECT_EQ(CountLogLines(log, 'I', "VexaJsonModeParser::KivModeMergeCaps::MergeVersionCheck",
                          "in_file is null"),
            1u)
      << log.Dump();
}

TEST(MergeCapsTest, WrongTypedVersionRefusesTheBlock) {
  const struct {
    const char* block;
    const char* member;
  } cases[] = {
      {R"({"Version":"1"})", "Version"},
      {R"({"Version":-1})", "Version"},
      {R"({"PostBlendGCMergeOp":1})", "PostBlendGCMergeOp"},
      {R"({"PostBlendGCMergeOp":{"Version":[1]}})", "Version"},
  };
  for (const auto& c : cases) {
    LogCapture log;
    EXPECT_EQ(Context(c.block), nullptr) << c.block;
    ASSERT_EQ(log.Errors().size(), 1u) << c.block << "\n" << log.Dump();
    EXPECT_TRUE(log.Contains(std::string("Invalid member \"") + c.member + "\" in \"ModeMerge\""))
        << log.Dump();
  }
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
