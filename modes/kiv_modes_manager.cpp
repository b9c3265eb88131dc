#include "modes/kiv_modes_manager.h"

#include <utility>

#include "formats/hex_coding.h"
#include "formats/json_access.h"
#include "formats/json_text.h"
#include "formats/keys.h"
#include "platform/log.h"

namespace vexa {
namespace {

constexpr char kLogLabel[] = "VexaJsonModeParser::KivModesManager";
// Line numbers that these messages always carry, so that existing log filters keep matching.
constexpr int kAddedLine = 100;
constexpr int kSetFactoryLine = 110;
constexpr int kFoundFactoryLine = 43;
constexpr int kFoundWorkflowLine = 63;
constexpr int kMergeFailedLine = 71;

// What a factory-floor mode must share with a rule: everything but name and render intent, so a
// factory mode matches whatever its intent was promoted to.
bool MatchesFactory(const KivModeDescr& mode, const KivModeDescr& rule) {
  return mode.color_primaries == rule.color_primaries &&
         mode.gamma_transfer == rule.gamma_transfer && mode.dynamic_range == rule.dynamic_range &&
         mode.white_point == rule.white_point && mode.merge_id == rule.merge_id;
}

// A workflow (calibration) mode must also have the rule's render intent.
bool MatchesWorkflow(const KivModeDescr& mode, const KivModeDescr& rule) {
  return MatchesFactory(mode, rule) && mode.render_intent == rule.render_intent;
}

std::shared_ptr<KivMode> FirstMatch(const KivModeList& candidates, const KivModeDescr& rule,
                                    bool (*matches)(const KivModeDescr&, const KivModeDescr&)) {
  for (const std::shared_ptr<KivMode>& mode : candidates) {
    if (mode && mode->descr() && matches(*mode->descr(), rule)) return mode;
  }
  return nullptr;
}

void FillDescrMembers(const KivModeDescr& descr, Json::Value* out) {
  Json::Value& applicability = (*out)[keys::kApplicability];
  applicability[keys::kColorPrimaries] = ColorPrimaryStr(descr.color_primaries);
  applicability[keys::kGammaTransfer] = GammaTransferStr(descr.gamma_transfer);
  applicability[keys::kRenderIntent] = Json::Int(descr.render_intent);
  applicability[keys::kRenderIntentName] = descr.render_intent_name;
  (*out)[keys::kWhitePoint] = Json::UInt(descr.white_point);
  (*out)[keys::kMergeId] = descr.merge_id;
  (*out)[keys::kDynamicRange] = DynamicRangeStr(descr.dynamic_range);
}

// Each asset's JSON as compact text, carried as hex like the modes file's own sections.
void FillAssetMembers(KivMode& mode, Json::Value* out) {
  const Json::Value& assets = mode.GetHwAssetsJV();
  for (const std::string& key : MemberNames(assets)) {
    const std::string text = JsonToCompactText(assets[key]);
    if (text.empty()) continue;
    std::string hex;
    EncodeData(text, hex);
    (*out)[key] = hex;
  }
}

}  // namespace

KivModesManager::KivModesManager(std::string name)
    : mode_list_(std::make_shared<KivModeInfoList>()), name_(std::move(name)) {}

bool KivModesManager::KivModeDescrCompare(const KivModeDescr& a, const KivModeDescr& b) {
  return a.color_primaries == b.color_primaries && a.gamma_transfer == b.gamma_transfer &&
         a.render_intent == b.render_intent && a.white_point == b.white_point &&
         a.dynamic_range == b.dynamic_range && a.merge_id == b.merge_id;
}

void KivModesManager::AddModeToList(std::shared_ptr<KivMode> mode, bool replace) {
  if (!mode || !mode->descr()) return;
  KivModeList& modes = mode_list_->modes;
  for (auto it = modes.begin(); it != modes.end(); ++it) {
    if (!KivModeDescrCompare(*(*it)->descr(), *mode->descr())) continue;
    if (!replace) return;
    modes.erase(it);  // the replacement goes to the end, not into the old place
    break;
  }
  const std::string& name = mode->descr()->name;
  modes.push_back(std::move(mode));
  VKR_LOGI_AT(2, kLogLabel, "AddModeToList", kAddedLine, "Added %s to mode list", name.c_str());
}

bool KivModesManager::SetFactoryFloorModeAsDefault(KivModeList& modes) {
  bool promoted = false;
  for (const std::shared_ptr<KivMode>& mode : modes) {
    if (!mode || !mode->descr() || mode->descr()->render_intent != factory_floor_intent_) continue;
    mode->descr()->render_intent = kColorimetricIntent;
    promoted = true;
    VKR_LOGI_AT(2, kLogLabel, "SetFactoryFloorModeAsDefault", kSetFactoryLine,
                "Set factory %s mode as colorimetric", mode->descr()->name.c_str());
  }
  return promoted;
}

std::shared_ptr<Json::Value> KivModesManager::GetModeListJV() {
  auto document = std::make_shared<Json::Value>(Json::objectValue);
  Json::Value& modes = (*document)[name_];
  for (const std::shared_ptr<KivMode>& mode : mode_list_->modes) {
    if (!mode || !mode->descr()) continue;
    Json::Value& entry = modes[mode->descr()->name];
    FillDescrMembers(*mode->descr(), &entry);
    FillAssetMembers(*mode, &entry);
  }
  return document;
}

std::shared_ptr<KivMode> KivModesManager::MergeModesFromList(VexaKivInterface* intf,
                                                             std::shared_ptr<KivModeMergeDef> rule,
                                                             KivModeList factory_candidates,
                                                             KivModeList workflow_candidates) {
  if (!rule || !rule->descr) return nullptr;
  std::shared_ptr<KivMode> left = FirstMatch(factory_candidates, *rule->descr, &MatchesFactory);
  if (left) {
    VKR_LOGI_AT(2, kLogLabel, "MergeModesFromList", kFoundFactoryLine,
                "Found applicable factory floor mode: %s", left->descr()->name.c_str());
    // Later messages name the factory mode actually used; the right name stays as written.
    rule->left_mode_name = left->descr()->name;
  }
  std::shared_ptr<KivMode> right = FirstMatch(workflow_candidates, *rule->descr, &MatchesWorkflow);
  if (right) {
    VKR_LOGI_AT(2, kLogLabel, "MergeModesFromList", kFoundWorkflowLine,
                "Found applicable workflow mode: %s", right->descr()->name.c_str());
  }
  if (left && right) return std::make_shared<KivMode>(intf, rule, left, right);
  VKR_LOGE_AT(kLogLabel, "MergeModesFromList", kMergeFailedLine,
              "Failed to create merged mode %s: left mode: %s, right mode: %s",
              rule->descr->name.c_str(), rule->left_mode_name.c_str(),
              rule->right_mode_name.c_str());
  return nullptr;
}

}  // namespace vexa
