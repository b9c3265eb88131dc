// The panel report: one self-contained page (XHTML, so that an XML parser can check it, with the
// figures as inline SVG) listing the published modes, the merged modes with their operands, the
// findings about the panel's files, and the figures of every mode.
#ifndef VEXA_TOOLS_VEXA_MODES_REPORT_PAGE_H_
#define VEXA_TOOLS_VEXA_MODES_REPORT_PAGE_H_

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tools/vexa_modes/findings_source.h"
#include "tools/vexa_modes/plot_command.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa::tools {

// One rule of the rules file: the mode it makes, from which two modes, block by block.
struct MergedModeEntry {
  std::string name;
  std::string left, right;
  ColorMode target;  // gamut, gamma, intent and intent name of the merged mode
  bool published = false;
  std::vector<std::pair<std::string, std::string>> operations;  // merge-op key, operand word
};

struct ReportData {
  std::string panel;
  std::vector<ColorMode> modes;
  std::string rules_file;  // empty: no rules file found
  std::vector<MergedModeEntry> merged;
  std::optional<std::vector<Finding>> findings;  // empty: no findings source in this build
  std::vector<PlottedMode> plots;
};

std::string RenderReportPage(const ReportData& data);

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_VEXA_MODES_REPORT_PAGE_H_
