#include "tools/lint/panel_checks.h"

#include <json/json.h>

#include <fstream>
#include <iterator>
#include <sstream>

#include "formats/common_data.h"
#include "formats/keys.h"
#include "parser/published_mode.h"
#include "tools/lint/log_diagnostics.h"

namespace vexa::lint {
namespace {

const ModeOrigin& OriginOf(const ModeOrigins& origins, const KivMode* mode) {
  static const ModeOrigin kUnknown;
  auto it = origins.find(mode);
  return it == origins.end() ? kUnknown : it->second;
}

const char* KindWord(ModeOrigin::Kind kind) {
  switch (kind) {
    case ModeOrigin::Kind::kFactory: return "factory";
    case ModeOrigin::Kind::kCalibration: return "calibration";
    case ModeOrigin::Kind::kMerged: return "merged";
  }
  return "";
}

std::string NameOf(const KivMode& mode) { return mode.descr() ? mode.descr()->name : ""; }

bool Listed(const KivModeList& modes, const KivMode* mode) {
  for (const auto& listed : modes) {
    if (listed.get() == mode) return true;
  }
  return false;
}

const KivMode* SameIdentity(const KivModeList& modes, const KivModeDescr& descr) {
  for (const auto& listed : modes) {
    if (listed && listed->descr() && KivModesManager::KivModeDescrCompare(*listed->descr(), descr)) {
      return listed.get();
    }
  }
  return nullptr;
}

struct TableGroup {
  const char* section;
  const HwAssetsCommonData::Names& asked;
  std::vector<std::string> stored;
};

template <typename Tables>
std::vector<std::string> StoredNames(const Tables& tables) {
  std::vector<std::string> names;
  for (const auto& [name, table] : tables) {
    if (table) names.push_back(name);  // a null entry is a name that was asked for in vain
  }
  return names;
}

}  // namespace

void CheckDroppedModes(const KivModeList& parsed, const KivModeList& published,
                       const ModeOrigins& origins, std::vector<Diagnostic>* out) {
  for (const auto& mode : parsed) {
    if (!mode || !mode->descr() || Listed(published, mode.get())) continue;
    const KivMode* kept = SameIdentity(published, *mode->descr());
    if (kept == nullptr) continue;
    const ModeOrigin& origin = OriginOf(origins, mode.get());
    const ModeOrigin& kept_origin = OriginOf(origins, kept);
    Diagnostic d;
    // A merged mode that takes a file mode's place is what rules are written for.
    d.severity = kept_origin.kind == ModeOrigin::Kind::kMerged ? Severity::kNote : Severity::kWarning;
    d.check = "mode-duplicate";
    d.file = origin.file;
    d.mode = NameOf(*mode);
    d.message = std::string(KindWord(origin.kind)) + " mode \"" + d.mode + "\" has the identity of " +
                KindWord(kept_origin.kind) + " mode \"" + NameOf(*kept) +
                "\" (primaries, transfer, intent, white point, dynamic range, merge id)";
    d.consequence = "mode dropped: \"" + NameOf(*kept) + "\" is published instead";
    out->push_back(std::move(d));
  }
}

void CheckShadowedModes(const KivModeList& published, const ModeOrigins& origins,
                        std::vector<Diagnostic>* out) {
  std::vector<ColorMode> entries;
  for (const auto& mode : published) {
    ColorMode entry{};
    std::vector<HwConfigPayload> payloads;
    if (mode) DescribePublishedMode(*mode, &entry, &payloads);
    entries.push_back(std::move(entry));
  }
  for (size_t j = 0; j < entries.size(); ++j) {
    const ColorMode& wanted = entries[j];
    for (size_t i = 0; i < j; ++i) {
      if (!MatchesModeRequest(entries[i], wanted.gamut, wanted.gamma, wanted.intent,
                              wanted.hw_assets.size())) {
        continue;
      }
      Diagnostic d;
      d.severity = Severity::kWarning;
      d.check = "mode-shadowed";
      d.file = OriginOf(origins, published[j].get()).file;
      d.mode = NameOf(*published[j]);
      d.message = "every request for gamut " + std::to_string(wanted.gamut) + ", gamma " +
                  std::to_string(wanted.gamma) + ", intent " + std::to_string(wanted.intent) +
                  " with " + std::to_string(wanted.hw_assets.size()) +
                  " asset names is answered first by mode \"" + NameOf(*published[i]) + "\"";
      d.consequence = "mode never selected";
      out->push_back(std::move(d));
      break;
    }
  }
}

void CheckUnusedTables(const std::string& file, const KivModeList& modes,
                       std::vector<Diagnostic>* out) {
  // Every mode of a file shares the file's one common data.
  if (modes.empty() || !modes.front() || !modes.front()->common_data()) return;
  const HwAssetsCommonData& common = *modes.front()->common_data();
  const TableGroup groups[] = {
      {keys::kPostBlendIGC, common.igc_names_asked(), StoredNames(common.igc_tables())},
      {keys::kPostBlendGC, common.gc_names_asked(), StoredNames(common.gc_tables())},
      {keys::kPostBlendGamut, common.gamut_names_asked(), StoredNames(common.gamut_tables())},
  };
  for (const TableGroup& group : groups) {
    for (const std::string& name : group.stored) {
      if (group.asked.count(name) != 0) continue;
      Diagnostic d;
      d.severity = Severity::kWarning;
      d.check = "common-table-unused";
      d.file = file;
      d.section = keys::kCommon;
      d.member = std::string(group.section) + "." + name;
      d.message = "no mode of the file names the " + std::string(group.section) + " table \"" +
                  name + "\"";
      d.consequence = "table loaded and never used";
      out->push_back(std::move(d));
    }
  }
}

void DescribeVersionRefusal(const KivModeMergeVersionContext& context, const std::string& file,
                            std::vector<Diagnostic>* diagnostics) {
  const std::optional<MergeVersionMismatch> newer = FirstNewerMergeVersion(context);
  for (Diagnostic& d : *diagnostics) {
    if (d.check != kCheckMergeVersions) continue;
    d.file = file;
    d.section = keys::kModeMerge;
    if (!newer) continue;
    d.member = newer->key;
    d.message += " \"" + d.member + "\" is version " + std::to_string(newer->written) +
                 "; the device supports " + std::to_string(newer->supported) + ".";
  }
}

void CheckSilentlyRefusedFile(const std::string& file, const std::string& host_path,
                              std::vector<Diagnostic>* diagnostics) {
  for (const Diagnostic& d : *diagnostics) {
    if (d.file == file && d.consequence == kFileIgnored) return;
  }
  std::ifstream in(host_path, std::ios::binary);
  const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  Diagnostic d;
  d.severity = Severity::kError;
  d.file = file;
  d.consequence = kFileIgnored;
  if (text.empty()) {
    d.check = "file-empty";
    d.message = "the file is empty";
  } else {
    // Only for the message: the library's own parse already refused the text.
    Json::Reader reader(Json::Features::strictMode());
    Json::Value root;
    reader.parse(text, root, false);
    d.check = "file-not-json";
    // jsoncpp's report spans lines; one line reads better in a list of findings.
    std::string report;
    std::istringstream lines(reader.getFormattedErrorMessages());
    for (std::string line; std::getline(lines, line);) {
      const size_t start = line.find_first_not_of(" *");
      if (start != std::string::npos) report += (report.empty() ? "" : ": ") + line.substr(start);
    }
    d.message = "the file is not a JSON object or array: " + report;
  }
  diagnostics->push_back(std::move(d));
}

}  // namespace vexa::lint
