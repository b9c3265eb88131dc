// plot and report, run as the vexa-modes binary over a copy of the example device tree; every SVG
// and the XHTML page are checked with expat, then by content.
#include <filesystem>
#include <sstream>

#include "support/tool_process.h"
#include "support/xml_document.h"
#include "tools/vexa_modes/exit_codes.h"
#include "tools/vexa_modes/svg_line_chart.h"
#include "tools/vexa_modes/text_format.h"

namespace vexa::tools {
namespace {

namespace fs = std::filesystem;
using vexa::testing::Describe;
using vexa::testing::ProcessResult;
using vexa::testing::XmlDocument;
using vexa::testing::XmlElement;

std::vector<std::string> Words(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> words;
  for (std::string w; in >> w;) words.push_back(w);
  return words;
}

class PlotReportCliTest : public vexa::testing::ExampleTreeToolTest {
 protected:
  // The file parsed; a failure when it is not well-formed XML.
  XmlDocument Parse(const std::string& relative) const {
    XmlDocument doc(dir_.Get(relative));
    EXPECT_EQ(doc.error(), "") << relative;
    return doc;
  }
};

TEST_F(PlotReportCliTest, PlotDrawsThePayloadsOfEachModeOneFilePerModeOrPerFigure) {
  ProcessResult r = Run("plot -o " + dir_.File("modes"));
  ASSERT_EQ(r.exit_code, kExitOk) << Describe(r);
  ASSERT_EQ(Words(r.out).size(), 7u) << r.out;
  for (const std::string& file : Words(r.out))
    EXPECT_EQ(Parse(fs::relative(file, dir_.path()).string()).All("svg").size(), 5u) << file;
  // The merged sRGB mode: GC, IGC and two gamut figures nested in one file.
  EXPECT_EQ(Parse("modes/standard-g1-t1-i1.svg").All("polyline").size(), 3u + 3u + 7u * 3u);

  r = Run("plot --per-figure --gamut 1 --gamma 1 --intent 1 -o " + dir_.File("figures"));
  ASSERT_EQ(r.exit_code, kExitOk) << Describe(r);
  EXPECT_EQ(Words(r.out).size(), 4u) << r.out;
  const XmlDocument gc = Parse("figures/standard-g1-t1-i1-gc.svg");
  ASSERT_EQ(gc.All("polyline").size(), 3u);
  EXPECT_EQ(gc.All("line", "class", "identity").size(), 1u);
  // The sRGB encoding of entry 184 of 1024 (0.18 linear) is 472 of 1023.
  const std::vector<std::string> red = Words(gc.All("polyline", "data-label", "red")[0]->Attribute("points"));
  ASSERT_EQ(red.size(), 1024u);
  const SvgLineChart scale("", "", "", 1023, 1023);
  EXPECT_EQ(red[184], Format("%.2f,%.2f", scale.PixelX(184), scale.PixelY(472)));
  const XmlDocument ramps = Parse("figures/standard-g1-t1-i1-gamut-ramps.svg");
  EXPECT_EQ(ramps.All("g", "class", "line-chart").size(), 7u);
  EXPECT_EQ(ramps.All("polyline").size(), 21u);
  const XmlDocument shift = Parse("figures/standard-g1-t1-i1-gamut-shift.svg");
  size_t cells = 0;
  for (const auto* rect : shift.All("rect")) cells += shift.Parent(*rect)->Attribute("class") == "tile";
  EXPECT_EQ(cells, 17u * 17u * 17u);
  EXPECT_EQ(shift.All("g", "class", "tile").size(), 17u);
}

// The text of each cell of the table's rows.
std::vector<std::vector<std::string>> Rows(const XmlDocument& page, const std::string& table_class) {
  std::vector<std::vector<std::string>> rows;
  const auto& all = page.elements();
  for (size_t i = 0; i < all.size(); ++i) {
    const XmlElement* table = all[i].name == "tr" ? page.Parent(all[i]) : nullptr;
    if (table == nullptr || table->Attribute("class") != table_class) continue;
    rows.emplace_back();
    for (size_t j = i + 1; j < all.size() && all[j].parent == static_cast<int>(i); ++j) rows.back().push_back(all[j].text);
  }
  return rows;
}

TEST_F(PlotReportCliTest, ReportIsOneWellFormedPageOfModesRulesFindingsAndFigures) {
  ProcessResult r = Run("report -o " + dir_.File("report.html"));
  ASSERT_EQ(r.exit_code, kExitOk) << Describe(r);
  XmlDocument page = Parse("report.html");
  const auto modes = Rows(page, "modes");
  ASSERT_EQ(modes.size(), 8u);
  EXPECT_EQ(modes[1], (std::vector<std::string>{"0", "1", "1", "384", "factory",
                                                "PostBlendGC, PostBlendGamut, PostBlendIGC, PostBlendPCC"}));
  const auto merged = Rows(page, "merged");
  ASSERT_EQ(merged.size(), 4u);
  EXPECT_EQ(merged[2][0], "reading_factory");
  EXPECT_EQ(merged[3], (std::vector<std::string>{
                           "srgb_factory", "factory_floor", "srgb",
                           "gamut 1, gamma 1, intent 1 \"standard\"", "yes",
                           "PostBlendGamutMergeOp: LEFT_OPERAND, PostBlendGCMergeOp: RIGHT_OPERAND, "
                           "PostBlendIGCMergeOp: RIGHT_OPERAND, PostBlendPCCMergeOp: LEFT_OPERAND, "
                           "PostBlendDitherMergeOp: RIGHT_OPERAND, PostBlendDEMergeOp: RIGHT_OPERAND"}));
  EXPECT_EQ(page.All("p", "class", "no-findings").size(), 1u);
  EXPECT_EQ(page.All("h3").size(), 7u);
  EXPECT_EQ(page.All("svg").size(), 7u * 4u);  // every example mode has GC, IGC and a full gamut

  fs::remove(root_ + "/vendor/etc/display/vexa_merge_rules_" VEXA_EXAMPLE_PANEL ".json");
  r = Run("report");
  ASSERT_EQ(r.exit_code, kExitOk) << Describe(r);
  page = XmlDocument(r.out);
  EXPECT_EQ(page.error(), "");
  EXPECT_EQ(Rows(page, "merged").size(), 0u);
  EXPECT_NE(r.out.find("<p>No merge-rules file for this panel.</p>"), std::string::npos);
}

}  // namespace
}  // namespace vexa::tools
