#include "examples/generator/recipe_expander.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "formats/json_text.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa::example {
namespace {

// On a panel that is exactly sRGB, the sRGB gamut table is the grid itself.
const PanelModel kSrgbPanel = *PanelModel::Create(SrgbPrimaries());

Json::Value Parse(const std::string& text) {
  Json::Value value;
  EXPECT_TRUE(PopulateJsonValue(text, value)) << text;
  return value;
}

TEST(RecipeExpanderTest, ExpandsEachRecipeInPlaceInTheRequestedForm) {
  Json::Value doc = Parse(R"({
    "keep": {"numEntries": 3, "list": ["a", {"generate": "igc", "curve": "srgb", "entries": 3, "form": "list"}]},
    "gc": {"generate": "gc", "curve": "gamma2.2", "entries": 5, "form": "array"},
    "lut": {"generate": "gamut", "target": "sRGB", "form": "array"},
    "lut_text": {"generate": "gamut", "target": "sRGB", "form": "list"},
    "pcc": {"generate": "pcc"}})");
  std::string error;
  ASSERT_TRUE(RecipeExpander(kSrgbPanel).Expand(doc, &error)) << error;

  EXPECT_EQ(JsonToCompactText(doc["keep"]), "{\"list\":[\"a\",\"0,876,4095\"],\"numEntries\":3}\n");
  EXPECT_EQ(JsonToCompactText(doc["gc"]), "[0,545,747,898,1023]\n");
  ASSERT_EQ(doc["lut"].size(), kGamutEntries);
  EXPECT_EQ(doc["lut"][16], "4095,0,0");
  EXPECT_EQ(doc["lut"][kGamutEntries - 1], "4095,4095,4095");
  const std::string text = doc["lut_text"].asString();
  EXPECT_EQ(text.rfind("0,0,0,256,0,0,", 0), 0u);
  EXPECT_EQ(std::count(text.begin(), text.end(), ','), 3 * kGamutEntries - 1);
  EXPECT_EQ(doc["pcc"]["enable"], true);
  for (const char* channel : {"R", "G", "B"}) EXPECT_EQ(doc["pcc"][channel].size(), 11u) << channel;
  EXPECT_NEAR(doc["pcc"]["G"]["g"].asDouble(), 1.0, 1e-9);
  EXPECT_NEAR(doc["pcc"]["G"]["r"].asDouble(), 0.0, 1e-9);
}

TEST(RecipeExpanderTest, RefusesBadRecipesNamingWhere) {
  const struct {
    const char* doc;
    const char* message;
  } cases[] = {
      {R"({"a": {"generate": "lut4d"}})", "/a: unknown recipe \"lut4d\""},
      {R"({"a": [{"generate": "gc", "curve": "pq", "entries": 4, "form": "list"}]})",
       "/a/0: unknown \"curve\" \"pq\""},
      {R"({"a": {"generate": "gc", "curve": "srgb", "entries": 1025, "form": "list"}})",
       "must lie in 2..1024"},
      {R"({"a": {"generate": "igc", "curve": "srgb", "entries": -3, "form": "list"}})",
       "must be an unsigned number"},
      {R"({"a": {"generate": "igc", "curve": "srgb", "entries": 3, "form": "csv"}})",
       "\"form\" must be"},
      {R"({"a": {"generate": "gamut", "target": "BT2020", "form": "list"}})",
       "unknown \"target\" \"BT2020\""},
      {R"({"a": {"generate": "pcc", "saturation": "high"}})", "\"saturation\" must be a number"},
  };
  for (const auto& c : cases) {
    Json::Value doc = Parse(c.doc);
    std::string error;
    EXPECT_FALSE(RecipeExpander(kSrgbPanel).Expand(doc, &error)) << c.doc;
    EXPECT_NE(error.find(c.message), std::string::npos) << c.doc << " gave: " << error;
  }
}

}  // namespace
}  // namespace vexa::example
