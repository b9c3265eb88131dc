// The merge-rules file: under the panel key, the "ModeMerge" version block and one rule per
// merged mode in "MergedModes".
#include <utility>

#include "formats/json_access.h"
#include "formats/json_parser.h"
#include "formats/json_text.h"
#include "formats/keys.h"
#include "formats/mode_descr_json.h"
#include "platform/log.h"

namespace vexa {
namespace json_parser {
namespace {

using namespace kiv_mode_merge_caps;

constexpr char kLogLabel[] = "VexaJsonModeParser::JsonParser";

template <typename Op, Op KivModeMergeDef::*field>
void StoreOp(KivModeMergeDef& rule, uint32_t value) {
  rule.*field = static_cast<Op>(value);
}

struct MergeOpKey {
  const char* key;
  uint32_t (*lookup)(const std::string&);
  void (*store)(KivModeMergeDef&, uint32_t);
};

// "MergeOps" member names, tested in this order.
constexpr MergeOpKey kMergeOpKeys[] = {
    {keys::kPostBlendIGCMergeOp, &GetIGCMergeOp,
     &StoreOp<KivPostBlendIGCMergeOp, &KivModeMergeDef::igc_op>},
    {keys::kPostBlendGCMergeOp, &GetGCMergeOp,
     &StoreOp<KivPostBlendGCMergeOp, &KivModeMergeDef::gc_op>},
    {keys::kPostBlendGamutMergeOp, &GetGamutMergeOp,
     &StoreOp<KivPostBlendGamutMergeOp, &KivModeMergeDef::gamut_op>},
    {keys::kPostBlendPCCMergeOp, &GetPCCMergeOp,
     &StoreOp<KivPostBlendPCCMergeOp, &KivModeMergeDef::pcc_op>},
    {keys::kPostBlendDEMergeOp, &GetDEMergeOp,
     &StoreOp<KivPostBlendDEMergeOp, &KivModeMergeDef::de_op>},
    {keys::kPostBlendDitherMergeOp, &GetDitherMergeOp,
     &StoreOp<KivPostBlendDitherMergeOp, &KivModeMergeDef::dither_op>},
    {keys::kPostBlendPaDitherMergeOp, &GetPaDitherMergeOp,
     &StoreOp<KivPostBlendPaDitherMergeOp, &KivModeMergeDef::pa_dither_op>},
    {keys::kPostBlendPaGlobalMergeOp, &GetPaGlobalMergeOp,
     &StoreOp<KivPostBlendPaGlobalMergeOp, &KivModeMergeDef::pa_global_op>},
    {keys::kPostBlendPaMemoryColorMergeOp, &GetPaMemoryColorsMergeOp,
     &StoreOp<KivPostBlendPaMemoryColorsMergeOp, &KivModeMergeDef::pa_memory_colors_op>},
    {keys::kPostBlendPaMultiZoneMergeOp, &GetPaMultiZoneMergeOp,
     &StoreOp<KivPostBlendPaMultiZoneMergeOp, &KivModeMergeDef::pa_multi_zone_op>},
    {keys::kPostBlendGameBlobMergeOp, &GetGameBlobMergeOp,
     &StoreOp<KivPostBlendGameBlobMergeOp, &KivModeMergeDef::game_blob_op>},
    {keys::kPostBlendHdrBlobMergeOp, &GetHdrBlobMergeOp,
     &StoreOp<KivPostBlendHdrBlobMergeOp, &KivModeMergeDef::hdr_blob_op>},
};

const MergeOpKey* FindMergeOpKey(const std::string& name) {
  for (const MergeOpKey& entry : kMergeOpKeys) {
    if (name == entry.key) return &entry;
  }
  return nullptr;
}

// The operations named in "MergeOps"; unknown member names are ignored, a word that is not a
// string refuses the rule.
void ReadMergeOps(JsonFieldReader& rule_reader, KivModeMergeDef* rule) {
  JsonFieldReader ops(rule_reader.Object(keys::kMergeOps), kLogLabel);
  for (const std::string& name : MemberNames(ops.object())) {
    const MergeOpKey* entry = FindMergeOpKey(name);
    if (entry == nullptr) continue;
    entry->store(*rule, entry->lookup(ops.String(entry->key)));
  }
  if (!ops.ok()) rule_reader.Refuse();
}

}  // namespace

std::shared_ptr<KivModeMergeDefList> parse_mode_merge_rules(std::string_view text,
                                                            const std::string& panel_key) {
  Json::Value root;
  if (!PopulateJsonValue(text, root)) return nullptr;
  JsonFieldReader file(root, kLogLabel);
  JsonFieldReader panel(file.Object(panel_key.c_str()), kLogLabel);
  const Json::Value& mode_merge = panel.Raw(keys::kModeMerge);
  const Json::Value& merged_modes = panel.Object(keys::kMergedModes);
  if (!file.ok() || !panel.ok()) return nullptr;

  auto rules = std::make_shared<KivModeMergeDefList>();
  for (const std::string& name : MemberNames(merged_modes)) {
    std::shared_ptr<KivModeMergeDef> rule = parse_merge_rule(merged_modes[name], name, mode_merge);
    if (!rule) continue;
    rules->push_back(std::move(rule));
    VKR_LOGI(2, "Merged Mode: %s", name.c_str());
  }
  return rules;
}

std::shared_ptr<KivModeMergeDef> parse_merge_rule(Json::Value rule_value, const std::string& name,
                                                  const Json::Value& mode_merge_value) {
  ScopedJsonContext where(JsonScope::kRule, name, "merge rule \"" + name + "\"");
  auto rule = std::make_shared<KivModeMergeDef>();
  rule->version_context = GetModeMergeVersionContext(mode_merge_value);
  rule->descr = std::make_shared<KivModeDescr>();
  rule->descr->name = name;

  JsonFieldReader reader(rule_value, kLogLabel);
  rule->left_mode_name = reader.String(keys::kModeNameInputLeft);
  rule->right_mode_name = reader.String(keys::kModeNameInputRight);
  ReadModeDescrFields(reader, kLogLabel, rule->descr.get());
  ReadMergeOps(reader, rule.get());
  if (!reader.ok() || !rule->version_context) return nullptr;
  return rule;
}

}  // namespace json_parser
}  // namespace vexa
