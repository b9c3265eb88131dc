#include "examples/generator/recipe_expander.h"

#include <gtest/gtest.h>

#include "formats/json_text.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa::example {
namespace {

Json::Value Parse(const std::string& text) {
  Json::Value value;
  EXPECT_TRUE(PopulateJsonValue(text, value)) << text;
  return value;
}

class RecipeExpanderTest : public ::testing::Test {
 protected:
  RecipeExpanderTest() : panel_(*PanelModel::Create(SrgbPrimaries())), expander_(panel_) {}

  PanelModel panel_;
  RecipeExpander expander_;
};

TEST_F(RecipeExpanderTest, ExpandsEachRecipeInPlaceInTheRequestedForm) {
  Json::Value doc = Parse(R"({
    "keep": {"numEntries": 1024, "words": ["a", {"generate": "igc", "curve": "srgb", "entries": 3, "form": "list"}]},
    "gc": {"generate": "gc", "curve": "gamma2.2", "entries": 5, "form": "array"},
    "lut": {"generate": "gamut", "target": "sRGB", "form": "array"},
    "lut_text": {"generate": "gamut", "target": "sRGB", "form": "list"},
    "pcc": {"generate": "pcc"}})");
  std::string error;
  ASSERT_TRUE(expander_.Expand(doc, &error)) << error;

  EXPECT_EQ(doc["keep"]["numEntries"], 1024);  // plain members stay
  EXPECT_EQ(doc["keep"]["words"][0], "a");
  EXPECT_EQ(doc["keep"]["words"][1], "0,876,4095");  // recipes inside arrays too
  ASSERT_TRUE(doc["gc"].isArray());
  EXPECT_EQ(JsonToCompactText(doc["gc"]), "[0,545,747,898,1023]\n");
  // On a panel that is exactly sRGB the sRGB table is the grid itself.
  ASSERT_EQ(doc["lut"].size(), kGamutEntries);
  EXPECT_EQ(doc["lut"][0], "0,0,0");
  EXPECT_EQ(doc["lut"][16], "4095,0,0");
  EXPECT_EQ(doc["lut"][kGamutEntries - 1], "4095,4095,4095");
  const std::string text = doc["lut_text"].asString();
  EXPECT_EQ(text.rfind("0,0,0,256,0,0,", 0), 0u);
  EXPECT_EQ(std::count(text.begin(), text.end(), ','), 3 * kGamutEntries - 1);
  EXPECT_EQ(doc["pcc"]["enable"], true);
  for (const char* channel : {"R", "G", "B"}) {
    EXPECT_EQ(doc["pcc"][channel].size(), 11u) << channel;
  }
  EXPECT_NEAR(doc["pcc"]["R"]["r"].asDouble(), 1.0, 1e-9);
  EXPECT_NEAR(doc["pcc"]["G"]["r"].asDouble(), 0.0, 1e-9);
}

TEST_F(RecipeExpanderTest, RefusesBadRecipesNamingWhere) {
  const struct {
    const char* doc;
    const char* message;
  } cases[] = {
      {R"({"a": {"generate": "lut4d"}})", "/a: unknown recipe \"lut4d\""},
      {R"({"a": {"generate": 7}})", "/a: \"generate\" must be a string"},
      {R"({"a": [{"generate": "gc", "curve": "pq", "entries": 4, "form": "list"}]})",
       "/a/0: unknown \"curve\" \"pq\""},
      {R"({"a": {"generate": "gc", "curve": "srgb", "entries": 1025, "form": "list"}})",
       "\"entries\" must lie in 2..1024"},
      {R"({"a": {"generate": "igc", "curve": "srgb", "entries": -3, "form": "list"}})",
       "\"entries\" must be an unsigned number"},
      {R"({"a": {"generate": "igc", "curve": "srgb", "entries": 3, "form": "csv"}})",
       "\"form\" must be \"list\" or \"array\""},
      {R"({"a": {"generate": "gamut", "target": "BT2020", "form": "list"}})",
       "unknown \"target\" \"BT2020\""},
      {R"({"a": {"generate": "pcc", "saturation": "high"}})", "\"saturation\" must be a number"},
  };
  for (const auto& c : cases) {
    Json::Value doc = Parse(c.doc);
    std::string error;
    EXPECT_FALSE(expander_.Expand(doc, &error)) << c.doc;
    EXPECT_NE(error.find(c.message), std::string::npos) << c.doc << " gave: " << error;
  }
}

}  // namespace
}  // namespace vexa::example
