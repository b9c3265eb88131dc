#include "tools/lint/lint_output.h"

#include <array>
#include <memory>
#include <string>

namespace vexa::lint {
namespace {

// Counts per severity, indexed by Severity.
std::array<int, 3> Counts(const std::vector<Diagnostic>& diagnostics) {
  std::array<int, 3> counts{};
  for (const Diagnostic& d : diagnostics) ++counts[static_cast<size_t>(d.severity)];
  return counts;
}

std::string Plural(int count, const char* word) {
  return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
}

// mode "x", section "y", member "z": the parts that are known.
std::string PlaceText(const Diagnostic& d) {
  std::string text;
  const std::pair<const char*, const std::string*> parts[] = {
      {"mode", &d.mode}, {"section", &d.section}, {"member", &d.member}};
  for (const auto& [label, value] : parts) {
    if (value->empty()) continue;
    text += text.empty() ? "" : ", ";
    text += std::string(label) + " \"" + *value + "\"";
  }
  return text;
}

}  // namespace

std::string DiagnosticPlace(const Diagnostic& d) {
  const std::string place = PlaceText(d);
  return (d.file.empty() ? "(panel)" : d.file) + (place.empty() ? "" : ": " + place);
}

void WriteLintText(const std::vector<Diagnostic>& diagnostics, std::ostream& out) {
  for (const Diagnostic& d : diagnostics) {
    out << SeverityWord(d.severity) << " [" << d.check << "] " << DiagnosticPlace(d);
    out << "\n    " << d.message << "\n    -> "
        << (d.consequence.empty() ? "consequence not known" : d.consequence) << "\n";
  }
  const std::array<int, 3> counts = Counts(diagnostics);
  out << Plural(counts[static_cast<size_t>(Severity::kError)], "error") << ", "
      << Plural(counts[static_cast<size_t>(Severity::kWarning)], "warning") << ", "
      << Plural(counts[static_cast<size_t>(Severity::kNote)], "note") << "\n";
}

Json::Value LintJson(const std::vector<Diagnostic>& diagnostics) {
  Json::Value root(Json::objectValue);
  Json::Value& list = root["diagnostics"] = Json::Value(Json::arrayValue);
  for (const Diagnostic& d : diagnostics) {
    Json::Value item(Json::objectValue);
    item["severity"] = SeverityWord(d.severity);
    item["check"] = d.check;
    item["file"] = d.file;
    item["mode"] = d.mode;
    item["section"] = d.section;
    item["member"] = d.member;
    item["message"] = d.message;
    item["consequence"] = d.consequence;
    list.append(std::move(item));
  }
  const std::array<int, 3> counts = Counts(diagnostics);
  root["errors"] = counts[static_cast<size_t>(Severity::kError)];
  root["warnings"] = counts[static_cast<size_t>(Severity::kWarning)];
  root["notes"] = counts[static_cast<size_t>(Severity::kNote)];
  return root;
}

void WriteLintJson(const std::vector<Diagnostic>& diagnostics, std::ostream& out) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "  ";
  std::unique_ptr<Json::StreamWriter> writer(builder.newStreamWriter());
  writer->write(LintJson(diagnostics), &out);
  out << "\n";
}

}  // namespace vexa::lint
