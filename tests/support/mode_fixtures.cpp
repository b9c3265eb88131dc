#include "support/mode_fixtures.h"

#include <gtest/gtest.h>

#include "formats/json_parser.h"
#include "support/fixture_writer.h"

namespace vexa::testing {

std::shared_ptr<KivMode> ParseReadableMode(const std::string& name, const std::string& readable_mode) {
  Json::Value file(Json::objectValue);
  file["panel"][name] = ParseReadable(readable_mode);
  Json::Value encoded = EncodeModesFile(file, "panel");
  uint32_t version = 0;
  std::shared_ptr<KivMode> mode = json_parser::parse_mode(encoded["panel"][name], name, "", version, nullptr);
  if (!mode) ADD_FAILURE() << "mode " << name << " did not parse:\n" << readable_mode;
  return mode;
}

std::shared_ptr<KivMode> ModeWithDescr(const KivModeDescr& descr) {
  auto def = std::make_shared<KivModeDef>();
  def->descr = std::make_shared<KivModeDescr>(descr);
  return std::make_shared<KivMode>(def, nullptr);
}

}  // namespace vexa::testing
