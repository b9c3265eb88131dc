#include "tools/vexa_modes/file_commands.h"

#include <fstream>
#include <iterator>
#include <optional>

#include "formats/json_text.h"
#include "tools/modes_files/modes_file_packer.h"
#include "tools/vexa_modes/exit_codes.h"

namespace vexa::tools {
namespace {

constexpr char kErrorPrefix[] = "vexa-modes: ";

// The unpacked form: two-space indentation, members in the same (name) order as the device form.
std::string IndentedText(const Json::Value& document) {
  Json::StreamWriterBuilder builder;
  builder["indentation"] = "  ";
  builder["commentStyle"] = "None";
  return Json::writeString(builder, document) + "\n";
}

class FileConversion {
 public:
  FileConversion(const char* verb, const FileCommand& command, std::ostream& out,
                 std::ostream& err)
      : verb_(verb), command_(command), out_(out), err_(err) {}

  std::optional<Json::Value> Read() {
    std::ifstream file(command_.input, std::ios::binary);
    if (!file) {
      Fail("cannot read the file");
      return std::nullopt;
    }
    const std::string text(std::istreambuf_iterator<char>(file), {});
    Json::Value document;
    if (!PopulateJsonValue(text, document)) {
      Fail("not a JSON document");
      return std::nullopt;
    }
    return document;
  }

  int Write(const std::string& text) {
    if (command_.output.empty()) {
      out_ << text;
      return kExitOk;
    }
    std::ofstream file(command_.output, std::ios::binary | std::ios::trunc);
    file << text;
    file.close();
    if (!file) return Fail("cannot write " + command_.output);
    return kExitOk;
  }

  int Fail(const std::string& reason) {
    err_ << kErrorPrefix << verb_ << ' ' << command_.input << ": " << reason << '\n';
    return kExitFileRefused;
  }

 private:
  const char* verb_;
  const FileCommand& command_;
  std::ostream& out_;
  std::ostream& err_;
};

}  // namespace

int RunUnpack(const FileCommand& command, std::ostream& out, std::ostream& err) {
  FileConversion conversion("unpack", command, out, err);
  std::optional<Json::Value> document = conversion.Read();
  if (!document) return kExitFileRefused;
  std::string error;
  if (KindOfFile(*document) == ModesFileKind::kModes && !UnpackModesFile(*document, &error))
    return conversion.Fail(error);
  return conversion.Write(IndentedText(*document));
}

int RunPack(const FileCommand& command, std::ostream& out, std::ostream& err) {
  FileConversion conversion("pack", command, out, err);
  std::optional<Json::Value> document = conversion.Read();
  if (!document) return kExitFileRefused;
  std::string error;
  const bool ok = KindOfFile(*document) == ModesFileKind::kModes
                      ? PackModesFile(*document, &error)
                      : CheckRulesFile(*document, &error);
  if (!ok) return conversion.Fail(error);
  return conversion.Write(JsonToCompactText(*document));
}

}  // namespace vexa::tools
