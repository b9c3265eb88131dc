#include "tools/lint/log_diagnostics.h"

#include <cstring>
#include <string>

namespace vexa::lint {
namespace {

// What a kind of line costs on the device.
enum class Outcome {
  kUnitRefused,      // depends on the unit being read: asset, table, mode, rule or file
  kAssetIdentity,
  kModeDropped,
  kFileIgnored,
  kRuleSkipped,
  kMergingOff,
  kTableNotStored,
  kOldFormat,
  kMatrixTruncated,
  kInterleavedDither,
  kMergedAssetIdentity,
  kMemberIgnored,
  kExplainsTable,     // info: names the table that the next line failed to find
  kExplainsFactory,   // info: the rule's factory operand was found
  kExplainsWorkflow,  // info: the rule's calibration operand was found
  kCovered,           // repeats an earlier line
  kUnknown,
};

struct LineKind {
  const char* text;  // the message starts with it (or, with `anywhere`, holds it)
  bool anywhere;
  Severity severity;
  const char* check;
  Outcome outcome;
};

// Tested in order; more specific texts first.
constexpr LineKind kLineKinds[] = {
    {"Invalid member \"", false, Severity::kError, kCheckWrongType, Outcome::kUnitRefused},
    {"Unknown member \"", false, Severity::kWarning, "unknown-member", Outcome::kMemberIgnored},
    {"unable to decode common data", false, Severity::kError, "common-table-undecodable", Outcome::kFileIgnored},
    {"Unable to populate decoded ", false, Severity::kError, "section-undecodable", Outcome::kModeDropped},
    {"unable to instantiate KivMode for ", false, Severity::kNote, "", Outcome::kCovered},
    {"Modes file version ", false, Severity::kNote, "old-file-version", Outcome::kOldFormat},
    {"Common table ", false, Severity::kError, "common-table-refused", Outcome::kTableNotStored},
    {"Common IGC data ", false, Severity::kNote, "", Outcome::kExplainsTable},
    {"Common GC data ", false, Severity::kNote, "", Outcome::kExplainsTable},
    {"Common 3DLUT data ", false, Severity::kNote, "", Outcome::kExplainsTable},
    {"Failed to retrieve ", false, Severity::kError, "common-table-missing", Outcome::kAssetIdentity},
    {"Lut size in Json does not match", false, Severity::kError, "gamma-lut", Outcome::kAssetIdentity},
    {"Invalid number of entries ", false, Severity::kError, "gamma-lut", Outcome::kAssetIdentity},
    {"Unexpected number of entries size", false, Severity::kError, "pa-six-zone", Outcome::kAssetIdentity},
    {"Incompatible PA Six-zone", false, Severity::kError, "pa-six-zone", Outcome::kAssetIdentity},
    {"Invalid six-zone curve", false, Severity::kError, "pa-six-zone", Outcome::kAssetIdentity},
    {"Unexpected number of gamut entries", false, Severity::kError, "gamut-table", Outcome::kAssetIdentity},
    {"Unexpected number of entries ", false, Severity::kError, "gamma-lut", Outcome::kAssetIdentity},
    {"No 3DLUT data found", false, Severity::kError, "gamut-table", Outcome::kAssetIdentity},
    {"\"matrix\" has ", false, Severity::kWarning, "dither-matrix", Outcome::kMatrixTruncated},
    {"\"", false, Severity::kError, "gamut-table", Outcome::kAssetIdentity},
    {"Dither Mode (", false, Severity::kWarning, "dither-mode", Outcome::kInterleavedDither},
    {"Found applicable factory floor mode", false, Severity::kNote, "", Outcome::kExplainsFactory},
    {"Found applicable workflow mode", false, Severity::kNote, "", Outcome::kExplainsWorkflow},
    {"Failed to create merged mode ", false, Severity::kError, kCheckRuleOperand, Outcome::kRuleSkipped},
    {"Failed to create ", false, Severity::kError, "", Outcome::kCovered},
    {"Error: incompatible versions", false, Severity::kError, kCheckMergeVersions, Outcome::kMergingOff},
    {" Merge Error: ", true, Severity::kError, "merge-block-missing", Outcome::kMergedAssetIdentity},
    {"Failed to process kKiv", false, Severity::kError, "merge-failed", Outcome::kMergedAssetIdentity},
    {"error: expected ", false, Severity::kError, "file-unreadable", Outcome::kFileIgnored},
};

const LineKind* FindKind(const std::string& message) {
  for (const LineKind& kind : kLineKinds) {
    const bool found = kind.anywhere ? message.find(kind.text) != std::string::npos
                                     : message.rfind(kind.text, 0) == 0;
    if (found) return &kind;
  }
  return nullptr;
}

// Where a line was written, from its innermost frames.
struct Place {
  std::string file, mode, section, member;
  JsonScope unit = JsonScope::kFile;  // innermost of file, table, mode, rule, section
};

Place PlaceOf(const std::vector<JsonContextFrame>& frames) {
  Place place;
  for (const JsonContextFrame& frame : frames) {
    switch (frame.scope) {
      case JsonScope::kFile: place.file = frame.name; place.unit = frame.scope; break;
      case JsonScope::kMode:
      case JsonScope::kRule: place.mode = frame.name; place.unit = frame.scope; break;
      case JsonScope::kSection: place.section = frame.name; place.unit = frame.scope; break;
      case JsonScope::kTable:
        place.section = "Common";
        place.member = frame.name;
        place.unit = frame.scope;
        break;
      case JsonScope::kMember: place.member = frame.name; break;
      case JsonScope::kOther: break;
    }
  }
  return place;
}

// The text between the first pair of double quotes after `from`, or empty.
std::string Quoted(const std::string& text, size_t from = 0) {
  const size_t open = text.find('"', from);
  if (open == std::string::npos) return std::string();
  const size_t close = text.find('"', open + 1);
  return close == std::string::npos ? std::string() : text.substr(open + 1, close - open - 1);
}

// The word after `prefix` up to the next space or the end.
std::string WordAfter(const std::string& text, const char* prefix) {
  const size_t start = text.find(prefix);
  if (start == std::string::npos) return std::string();
  const size_t begin = start + std::strlen(prefix);
  return text.substr(begin, text.find(' ', begin) - begin);
}

std::string UnitRefused(JsonScope unit) {
  switch (unit) {
    case JsonScope::kSection: return "asset at identity";
    case JsonScope::kTable: return "every table of this \"Common\" group not stored";
    case JsonScope::kMode: return "mode dropped";
    case JsonScope::kRule: return "rule dropped";
    default: return kFileIgnored;
  }
}

std::string ConsequenceOf(Outcome outcome, JsonScope unit) {
  switch (outcome) {
    case Outcome::kUnitRefused: return UnitRefused(unit);
    case Outcome::kAssetIdentity: return "asset at identity";
    case Outcome::kModeDropped: return "mode dropped";
    case Outcome::kFileIgnored: return kFileIgnored;
    case Outcome::kRuleSkipped: return "rule skipped: merged mode not made";
    case Outcome::kMergingOff: return kMergingOff;
    case Outcome::kTableNotStored: return "table not stored: assets naming it are at identity";
    case Outcome::kOldFormat: return "\"Common\" not read; tables read inline";
    case Outcome::kMatrixTruncated: return "only the first 16 matrix entries used";
    case Outcome::kInterleavedDither: return "interleaved dithering used";
    case Outcome::kMergedAssetIdentity: return "merged asset at identity";
    case Outcome::kMemberIgnored: return "member ignored";
    default: return std::string();
  }
}

// "Common table "PostBlendGC"."Custom"."a": ..." names the table as PostBlendGC.Custom.a.
std::string TablePath(const std::string& message) {
  const size_t begin = std::strlen("Common table ");
  std::string path = message.substr(begin, message.find(':', begin) - begin);
  std::string plain;
  for (char c : path) {
    if (c != '"') plain += c;
  }
  return plain;
}

// What explanatory info lines said before the line that they explain.
struct Pending {
  std::string table;
  bool factory_found = false;
  bool workflow_found = false;
};

std::string OperandMessage(const Diagnostic& d, const Pending& pending) {
  std::string message = "merged mode \"" + d.mode + "\" not made: ";
  if (!pending.factory_found) {
    message += "no factory mode has the rule's primaries, transfer, dynamic range, white point "
               "and merge id";
    if (!pending.workflow_found) message += ", and ";
  }
  if (!pending.workflow_found) {
    message += "no calibration mode has the rule's primaries, transfer, dynamic range, white "
               "point, merge id and render intent";
  }
  return message;
}

// Fills the place fields that the message itself names.
void NameFromMessage(const LineKind& kind, const std::string& message, const Pending& pending,
                     Diagnostic* d) {
  if (kind.check == kCheckWrongType || kind.outcome == Outcome::kMemberIgnored) {
    d->member = Quoted(message);
  }
  if (kind.outcome == Outcome::kModeDropped) d->section = WordAfter(message, "decoded ");
  if (kind.outcome == Outcome::kTableNotStored) {
    d->section = "Common";
    d->member = TablePath(message);
  }
  if (std::strcmp(kind.check, "common-table-undecodable") == 0) {
    d->section = "Common";
    d->member = Quoted(message);
  }
  if (kind.outcome == Outcome::kAssetIdentity && !pending.table.empty() &&
      message.rfind("Failed to retrieve ", 0) == 0) {
    d->member = pending.table;
    d->message += ": no table \"" + pending.table + "\" in \"Common\"";
  }
  if (kind.outcome == Outcome::kMatrixTruncated) d->member = "matrix";
  if (kind.outcome == Outcome::kRuleSkipped) d->message = OperandMessage(*d, pending);
}

}  // namespace

std::vector<Diagnostic> DiagnosticsFromLog(const std::vector<LoggedLine>& lines) {
  std::vector<Diagnostic> diagnostics;
  Pending pending;
  std::string pending_place;
  for (const LoggedLine& line : lines) {
    const LineKind* kind = FindKind(line.message);
    const Place place = PlaceOf(line.frames);
    const std::string place_key = place.file + '\n' + place.mode + '\n' + place.section;
    if (place_key != pending_place) {
      pending = Pending();
      pending_place = place_key;
    }
    if (kind == nullptr) {
      if (line.priority < ANDROID_LOG_WARN) continue;  // progress lines
      static constexpr LineKind kUnknownLine = {"", false, Severity::kError, kCheckLibraryError,
                                                Outcome::kUnknown};
      kind = &kUnknownLine;
      if (line.priority == ANDROID_LOG_WARN) {
        static constexpr LineKind kUnknownWarning = {"", false, Severity::kWarning,
                                                     kCheckLibraryError, Outcome::kUnknown};
        kind = &kUnknownWarning;
      }
    }
    switch (kind->outcome) {
      case Outcome::kCovered: continue;
      case Outcome::kExplainsTable: pending.table = WordAfter(line.message, " data "); continue;
      case Outcome::kExplainsFactory: pending.factory_found = true; continue;
      case Outcome::kExplainsWorkflow: pending.workflow_found = true; continue;
      default: break;
    }
    Diagnostic d;
    d.severity = kind->severity;
    d.check = kind->check;
    d.file = place.file;
    d.mode = place.mode;
    d.section = place.section;
    d.member = place.member;
    d.message = line.message;
    d.consequence = ConsequenceOf(kind->outcome, place.unit);
    NameFromMessage(*kind, line.message, pending, &d);
    diagnostics.push_back(std::move(d));
    pending = Pending();
  }
  return diagnostics;
}

}  // namespace vexa::lint
