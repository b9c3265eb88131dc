#include "tools/vexa_modes/report_page.h"

#include "tools/vexa_modes/text_format.h"

namespace vexa::tools {
namespace {

constexpr char kStyle[] =
    "body{font-family:sans-serif;margin:2em;color:#222}"
    "table{border-collapse:collapse;margin-bottom:1em}"
    "td,th{border:1px solid #ccc;padding:3px 8px;text-align:left;vertical-align:top}"
    "th{background:#f2f2f2}.error{color:#b00}.warning{color:#a60}.missing{color:#b00}";

std::string Element(const char* tag, const std::string& text, const char* cls = nullptr) {
  const std::string attribute = cls ? std::string(" class=\"") + cls + "\"" : std::string();
  return std::string("<") + tag + attribute + ">" + XmlEscape(text) + "</" + tag + ">";
}

std::string Row(const std::vector<std::string>& cells, const char* tag = "td") {
  std::string row = "<tr>";
  for (const std::string& cell : cells) row += Element(tag, cell);
  return row + "</tr>\n";
}

std::string ModesSection(const std::vector<ColorMode>& modes) {
  std::string html = "<h2 id=\"modes\">Published modes</h2>\n";
  if (modes.empty()) return html + "<p>The library publishes no mode for this panel.</p>\n";
  html += "<table class=\"modes\">\n" +
          Row({"#", "gamut", "gamma", "intent", "intent name", "hardware assets"}, "th");
  for (size_t i = 0; i < modes.size(); ++i) {
    const ColorMode& m = modes[i];
    html += Row({std::to_string(i), std::to_string(m.gamut), std::to_string(m.gamma),
                 std::to_string(m.intent), m.render_intent_name, Join(m.hw_assets, ", ")});
  }
  return html + "</table>\n";
}

std::string MergedSection(const ReportData& data) {
  std::string html = "<h2 id=\"merged\">Merged modes</h2>\n";
  if (data.rules_file.empty()) return html + "<p>No merge-rules file for this panel.</p>\n";
  html += "<p>From " + XmlEscape(data.rules_file) + ".</p>\n";
  if (data.merged.empty()) return html + "<p>The rules file holds no rule.</p>\n";
  html += "<table class=\"merged\">\n" +
          Row({"merged mode", "left operand", "right operand", "gamut, gamma, intent",
               "published", "operations (others IDENTITY)"},
              "th");
  for (const MergedModeEntry& entry : data.merged) {
    std::vector<std::string> ops;
    for (const auto& [key, word] : entry.operations) ops.push_back(key + ": " + word);
    html += Row({entry.name, entry.left, entry.right,
                 ModeText(entry.target) + " \"" + entry.target.render_intent_name + "\"",
                 entry.published ? "yes" : "no", Join(ops, ", ")});
  }
  return html + "</table>\n";
}

std::string FindingsSection(const std::optional<std::vector<Finding>>& findings) {
  std::string html = "<h2 id=\"findings\">Findings</h2>\n";
  if (!findings) return html + "<p class=\"no-findings\">No checker is built into this vexa-modes.</p>\n";
  if (findings->empty()) return html + "<p class=\"no-findings\">No findings.</p>\n";
  html += "<ul class=\"findings\">\n";
  for (const Finding& f : *findings) {
    html += "<li>" + Element("span", f.severity, f.severity.c_str()) + " " +
            XmlEscape(f.location) + ": " + XmlEscape(f.message) + "</li>\n";
  }
  return html + "</ul>\n";
}

std::string PlotsSection(const std::vector<PlottedMode>& plots) {
  std::string html = "<h2 id=\"plots\">Figures</h2>\n";
  for (const PlottedMode& plotted : plots) {
    html += Element("h3", ModeTitle(plotted.mode)) + "\n";
    if (plotted.figures.empty()) html += "<p>No GC, IGC or gamut payload.</p>\n";
    for (const ModeFigure& figure : plotted.figures) html += "<div>" + figure.figure.Render() + "</div>\n";
  }
  return html;
}

}  // namespace

std::string RenderReportPage(const ReportData& data) {
  const std::string title = "vexa-modes report: panel " + data.panel;
  return "<!DOCTYPE html>\n<html xmlns=\"http://www.w3.org/1999/xhtml\" lang=\"en\">\n<head>\n"
         "<meta charset=\"utf-8\"/>\n" +
         Element("title", title) + "\n<style>" + kStyle + "</style>\n</head>\n<body>\n" +
         Element("h1", title) + "\n" + ModesSection(data.modes) + MergedSection(data) +
         FindingsSection(data.findings) + PlotsSection(data.plots) + "</body>\n</html>\n";
}

}  // namespace vexa::tools
