#include "tools/vexa_modes/report_command.h"

#include <fstream>

#include "formats/file_utils.h"
#include "formats/json_parser.h"
#include "formats/keys.h"
#include "platform/device_paths.h"
#include "tools/vexa_modes/exit_codes.h"
#include "tools/vexa_modes/kiv_library.h"
#include "tools/vexa_modes/report_page.h"

namespace vexa::tools {
namespace {

constexpr char kErrorPrefix[] = "vexa-modes: ";
// Where the library looks for the merge rules, in its order; the first file that parses wins.
constexpr const char* kRulesDirs[] = {"/data/vendor/display", "/vendor/etc/display", "/oem/etc",
                                      "/odm/etc/display"};
constexpr char kRulesStem[] = "vexa_merge_rules";
constexpr const char* kOperandWords[] = {keys::kOperandIdentity, keys::kOperandLeft,
                                         keys::kOperandRight, keys::kOperandMerge};

std::vector<std::pair<const char*, uint32_t>> OperationsOf(const KivModeMergeDef& rule) {
  auto value = [](auto op) { return static_cast<uint32_t>(op); };
  return {
      {keys::kPostBlendGamutMergeOp, value(rule.gamut_op)},
      {keys::kPostBlendGCMergeOp, value(rule.gc_op)},
      {keys::kPostBlendIGCMergeOp, value(rule.igc_op)},
      {keys::kPostBlendPCCMergeOp, value(rule.pcc_op)},
      {keys::kPostBlendPaGlobalMergeOp, value(rule.pa_global_op)},
      {keys::kPostBlendPaMemoryColorMergeOp, value(rule.pa_memory_colors_op)},
      {keys::kPostBlendPaMultiZoneMergeOp, value(rule.pa_multi_zone_op)},
      {keys::kPostBlendPaDitherMergeOp, value(rule.pa_dither_op)},
      {keys::kPostBlendDitherMergeOp, value(rule.dither_op)},
      {keys::kPostBlendDEMergeOp, value(rule.de_op)},
      {keys::kPostBlendHdrBlobMergeOp, value(rule.hdr_blob_op)},
      {keys::kPostBlendGameBlobMergeOp, value(rule.game_blob_op)},
  };
}

MergedModeEntry EntryOf(const KivModeMergeDef& rule, const std::vector<ColorMode>& published) {
  MergedModeEntry entry;
  entry.name = rule.descr->name;
  entry.left = rule.left_mode_name;
  entry.right = rule.right_mode_name;
  entry.target.gamut = rule.descr->color_primaries;
  entry.target.gamma = rule.descr->gamma_transfer;
  entry.target.intent = rule.descr->render_intent;
  entry.target.render_intent_name = rule.descr->render_intent_name;
  for (const ColorMode& mode : published) {
    entry.published |= mode.gamut == entry.target.gamut && mode.gamma == entry.target.gamma &&
                       mode.intent == entry.target.intent &&
                       mode.render_intent_name == entry.target.render_intent_name;
  }
  for (const auto& [key, op] : OperationsOf(rule)) {
    if (op != 0 && op < std::size(kOperandWords)) entry.operations.emplace_back(key, kOperandWords[op]);
  }
  return entry;
}

// The panel's rules as the library finds and reads them (the device tree is VEXA_SYSROOT).
void ReadMergedModes(const std::string& panel, ReportData* data) {
  for (const char* dir : kRulesDirs) {
    // The library's file reader maps the device path below the device tree itself.
    const std::string path = std::string(dir) + "/" + kRulesStem + "_" + panel + ".json";
    const std::shared_ptr<std::string> text = ReadFromFile(path);
    if (text->empty()) continue;
    const auto rules = json_parser::parse_mode_merge_rules(*text, panel);
    if (!rules) continue;
    data->rules_file = MapDevicePath(path);
    for (const auto& rule : *rules) data->merged.push_back(EntryOf(*rule, data->modes));
    return;
  }
}

}  // namespace

int RunReport(const ToolOptions& options, const std::string& output, FindingsSource* findings,
              std::ostream& out, std::ostream& err) {
  KivLibrary library;  // outlives every record it hands out
  ColorModeList list{};
  const int status = LoadModes(library, options, &list, err);
  if (status != kExitOk) return status;
  ReportData data;
  data.panel = options.panel;
  data.modes = list.modes;
  ReadMergedModes(options.panel, &data);
  if (findings != nullptr) data.findings = findings->Collect(options.root, options.panel);
  if (!PlotModes(library, data.modes, &data.plots, err)) return kExitFailure;
  const std::string page = RenderReportPage(data);
  if (output.empty()) {
    out << page;
    return kExitOk;
  }
  std::ofstream file(output, std::ios::binary | std::ios::trunc);
  file << page;
  file.close();
  if (!file) {
    err << kErrorPrefix << "cannot write " << output << '\n';
    return kExitFileRefused;
  }
  return kExitOk;
}

}  // namespace vexa::tools
