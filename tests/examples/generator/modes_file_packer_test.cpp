#include "examples/generator/modes_file_packer.h"

#include <gtest/gtest.h>

#include "formats/hex_coding.h"
#include "formats/json_text.h"
#include "formats/merge_caps.h"

namespace vexa::example {
namespace {

Json::Value Parse(const std::string& text) {
  Json::Value value;
  EXPECT_TRUE(PopulateJsonValue(text, value)) << text;
  return value;
}

Json::Value Unpack(const Json::Value& hex) {
  std::string text;
  DecodeData(hex, text);
  return Parse(text);
}

TEST(ModesFilePackerTest, PacksSectionsAndTablesButNotTheDescriptor) {
  Json::Value doc = Parse(R"({"Version": 3,
    "Common": {"PostBlendGC": {"numEntries": 2, "Predefined": {"x": "0,1023"}}},
    "@panel": {"m": {"Applicability": {"RenderIntent": 1}, "WhitePoint": 6500, "MergeId": "",
                     "DynamicRange": "SDR", "PostBlendDE": {"enable": true, "sharp": -3}}}})");
  const Json::Value original = doc;
  std::string error;
  ASSERT_TRUE(ReplacePanelPlaceholder(doc, "p1", &error)) << error;
  ASSERT_TRUE(PackModesFile(doc, "p1", &error)) << error;

  EXPECT_FALSE(doc.isMember("@panel"));
  EXPECT_EQ(doc["Version"], 3);
  const Json::Value& mode = doc["p1"]["m"];
  for (const char* kept : {"Applicability", "WhitePoint", "MergeId", "DynamicRange"}) {
    EXPECT_EQ(mode[kept], original["@panel"]["m"][kept]) << kept;
  }
  ASSERT_TRUE(mode["PostBlendDE"].isString());
  EXPECT_EQ(Unpack(mode["PostBlendDE"]), original["@panel"]["m"]["PostBlendDE"]);
  ASSERT_TRUE(doc["Common"]["PostBlendGC"].isString());
  EXPECT_EQ(Unpack(doc["Common"]["PostBlendGC"]), original["Common"]["PostBlendGC"]);
  // The library's own coding: the 27 bytes {"enable":true,"sharp":-3}\n are odd in number, so
  // '{' stands alone and the pair '"', 'e' is written second byte first.
  EXPECT_EQ(mode["PostBlendDE"].asString().substr(0, 6), "7B6522");
}

TEST(ModesFilePackerTest, RefusesWhatIsNotAnUnpackedFile) {
  const struct {
    const char* doc;
    const char* message;
  } cases[] = {
      {R"({"panel": {}})", "no \"@panel\" object"},
      {R"({"@panel": []})", "no \"@panel\" object"},
      {R"({"@panel": {"m": {"PostBlendGC": "7B7D"}}})", "/p1/m/PostBlendGC must be an object"},
      {R"({"@panel": {"m": 3}})", "/p1/m must be an object"},
      {R"({"Common": {"PostBlendGC": [1]}, "@panel": {}})", "/Common/PostBlendGC must be an object"},
  };
  for (const auto& c : cases) {
    Json::Value doc = Parse(c.doc);
    std::string error;
    EXPECT_FALSE(ReplacePanelPlaceholder(doc, "p1", &error) && PackModesFile(doc, "p1", &error))
        << c.doc;
    EXPECT_NE(error.find(c.message), std::string::npos) << c.doc << " gave: " << error;
  }
}

TEST(ModesFilePackerTest, RulesCarryTheDeviceMergeVersions) {
  Json::Value rules = Parse(R"({"@panel": {"MergedModes": {}, "ModeMerge": {"Version": 9}}})");
  std::string error;
  ASSERT_TRUE(ReplacePanelPlaceholder(rules, "p1", &error));
  ASSERT_TRUE(SetDeviceMergeVersions(rules, "p1", &error)) << error;
  const Json::Value device = Parse(ModeMergeVersionText());
  EXPECT_EQ(rules["p1"]["ModeMerge"], device["ModeMerge"]);
  EXPECT_TRUE(rules["p1"]["MergedModes"].isObject());
}

}  // namespace
}  // namespace vexa::example
