#include "support/mode_fixtures.h"

#include <gtest/gtest.h>

#include "formats/json_parser.h"
#include "support/fixture_writer.h"

namespace vexa::testing {

std::shared_ptr<KivMode> ParseReadableMode(const std::string& name, const std::string& readable_mode,
                                           uint32_t version,
                                           const std::shared_ptr<HwAssetsCommonData>& common) {
  Json::Value file(Json::objectValue);
  file["panel"][name] = ParseReadable(readable_mode);
  Json::Value encoded = EncodeModesFile(file, "panel");
  std::shared_ptr<KivMode> mode =
      json_parser::parse_mode(encoded["panel"][name], name, "", version, common);
  if (!mode) ADD_FAILURE() << "mode " << name << " did not parse:\n" << readable_mode;
  return mode;
}

std::shared_ptr<KivMode> ModeWithDescr(const KivModeDescr& descr) {
  auto def = std::make_shared<KivModeDef>();
  def->descr = std::make_shared<KivModeDescr>(descr);
  return std::make_shared<KivMode>(def, nullptr);
}

KivModeDescr Descr(const std::string& name, ColorPrimaries primaries, GammaTransfer transfer,
                   int32_t intent, uint32_t white_point, DynamicRange range,
                   const std::string& merge_id) {
  KivModeDescr descr{};
  descr.name = name;
  descr.color_primaries = primaries;
  descr.gamma_transfer = transfer;
  descr.render_intent = intent;
  descr.white_point = white_point;
  descr.dynamic_range = range;
  descr.merge_id = merge_id;
  return descr;
}

}  // namespace vexa::testing
