#include "formats/common_data.h"

#include <string>
#include <vector>

#include "formats/decimal_list.h"
#include "formats/json_access.h"
#include "formats/keys.h"
#include "platform/log.h"

namespace vexa {
namespace {

constexpr char kLogLabel[] = "VexaJsonModeParser::HwAssetsCommonData";

// Where a list stands in "Common", for error lines: "PostBlendIGC"."Custom"."a"."lutR".
std::string ListPath(const char* section, const char* group, const std::string& name,
                     const char* channel) {
  std::string path = std::string("\"") + section + "\".\"" + group + "\".\"" + name + "\"";
  if (channel != nullptr) path += std::string(".\"") + channel + "\"";
  return path;
}

// One section's members and the entry count that every table of the section shares.
struct Section {
  const char* name = nullptr;  // "PostBlendIGC", "PostBlendGC" or "PostBlendGamut"
  const Json::Value* predefined = nullptr;
  const Json::Value* custom = nullptr;
  int64_t count = 0;  // "numEntries" taken as a signed count: below 1 reads no values
};

// The section's count and sub-sections ("Predefined" only when the section has one); false when
// the section is absent, or (with an error line naming the member) when one of them has the wrong
// type, which refuses every table of the section.
bool ReadSection(const Json::Value& common, const char* name, bool with_predefined,
                 Section* section) {
  const Json::Value* json = FindMember(common, name);
  if (json == nullptr || json->isNull()) return false;
  ScopedJsonContext where(JsonScope::kTable, name,
                          std::string("\"") + keys::kCommon + "\".\"" + name + "\"");
  JsonFieldReader reader(*json, kLogLabel, "HwAssetsCommonData");
  section->name = name;
  section->count = static_cast<int32_t>(reader.Uint(keys::kNumEntries));
  if (with_predefined) section->predefined = &reader.Object(keys::kPredefined);
  section->custom = &reader.Object(keys::kCustom);
  return reader.ok();
}

// Exactly `count` numbers of the list `text` into `out`; false (with an error line naming the
// list) when `text` is not a string or does not hold them. A missing list reads as empty text,
// which is enough for a count below 1.
bool ReadList(const Json::Value& text, int64_t count, const std::string& path,
              std::vector<uint32_t>* out) {
  out->clear();
  if (count < 1 && (text.isNull() || text.isString())) return true;
  if (!text.isString()) {
    VKR_LOGE("Common table %s: expected a string of %lld comma-separated numbers, found %s; "
             "table not stored", path.c_str(), static_cast<long long>(count), JsonTypeName(text));
    return false;
  }
  const char* begin = nullptr;
  const char* end = nullptr;
  text.getString(&begin, &end);
  if (!ParseDecimalList(std::string_view(begin, static_cast<size_t>(end - begin)),
                        static_cast<size_t>(count), out)) {
    VKR_LOGE("Common table %s: fewer than %lld decimal numbers, or a field that is not one; "
             "table not stored", path.c_str(), static_cast<long long>(count));
    return false;
  }
  return true;
}

const Json::Value& MemberOrNull(const Json::Value& object, const char* key) {
  static const Json::Value kNull;
  const Json::Value* member = FindMember(object, key);
  return member == nullptr ? kNull : *member;
}

std::shared_ptr<GammaPostBlendConfig> NewGammaTable() {
  auto table = std::make_shared<GammaPostBlendConfig>();
  table->len = kGammaConfigLen;
  return table;
}

// "Predefined": one list per table, used for all three channels.
void ReadPredefinedGamma(const Section& section, HwAssetsCommonData::GammaTables* tables) {
  if (section.predefined == nullptr) return;
  for (const std::string& name : MemberNames(*section.predefined)) {
    auto table = NewGammaTable();
    const std::string path = ListPath(section.name, keys::kPredefined, name, nullptr);
    if (!ReadList((*section.predefined)[name], section.count, path, &table->lut_r)) continue;
    table->lut_g = table->lut_r;
    table->lut_b = table->lut_r;
    (*tables)[name] = std::move(table);
  }
}

// "Custom": one list per channel; read after "Predefined", so it replaces a table of the same name.
void ReadCustomGamma(const Section& section, HwAssetsCommonData::GammaTables* tables) {
  for (const std::string& name : MemberNames(*section.custom)) {
    const Json::Value& channels = (*section.custom)[name];
    if (!channels.isObject() && !channels.isNull()) {
      VKR_LOGE("Common table %s: expected an object of channel lists, found %s; table not stored",
               ListPath(section.name, keys::kCustom, name, nullptr).c_str(), JsonTypeName(channels));
      continue;
    }
    auto table = NewGammaTable();
    const struct {
      const char* key;
      std::vector<uint32_t>* lut;
    } kChannels[] = {{keys::kDitherLutR, &table->lut_r},
                     {keys::kDitherLutG, &table->lut_g},
                     {keys::kDitherLutB, &table->lut_b}};
    bool complete = true;
    for (const auto& channel : kChannels) {
      const std::string path = ListPath(section.name, keys::kCustom, name, channel.key);
      complete = complete && ReadList(MemberOrNull(channels, channel.key), section.count, path,
                                      channel.lut);
    }
    if (complete) (*tables)[name] = std::move(table);
  }
}

void ReadGammaSection(const Json::Value& common, const char* name,
                      HwAssetsCommonData::GammaTables* tables) {
  Section section;
  if (!ReadSection(common, name, /*with_predefined=*/true, &section)) return;
  ReadPredefinedGamma(section, tables);
  ReadCustomGamma(section, tables);
}

// One 3D table: `count` entries of three outputs each, at most the record's capacity.
bool ReadGamutTable(const Json::Value& text, int64_t count, const std::string& path,
                    GamutConfig* table) {
  if (count > static_cast<int64_t>(kGamutEntries)) {
    VKR_LOGE("Common table %s: %lld entries exceed the capacity of %u; table not stored",
             path.c_str(), static_cast<long long>(count), kGamutEntries);
    return false;
  }
  std::vector<uint32_t> values;
  if (!ReadList(text, count < 1 ? 0 : count * 3, path, &values)) return false;
  const size_t entries = values.size() / 3;
  for (size_t i = 0; i < entries; ++i) {
    table->entries[i].out_0 = values[3 * i];
    table->entries[i].out_1 = values[3 * i + 1];
    table->entries[i].out_2 = values[3 * i + 2];
  }
  table->len = kGamutConfigLen;
  table->grid_mode = 1;
  table->num_entries = static_cast<uint32_t>(entries);
  table->enable = true;
  return true;
}

// 3D tables come from "Custom" only; a "Predefined" member is ignored.
void ReadGamutSection(const Json::Value& common, HwAssetsCommonData::GamutTables* tables) {
  Section section;
  if (!ReadSection(common, keys::kPostBlendGamut, /*with_predefined=*/false, &section)) return;
  for (const std::string& name : MemberNames(*section.custom)) {
    auto table = std::make_shared<GamutConfig>();  // value-initialised: every entry zero
    const std::string path = ListPath(section.name, keys::kCustom, name, nullptr);
    if (ReadGamutTable((*section.custom)[name], section.count, path, table.get())) {
      (*tables)[name] = std::move(table);
    }
  }
}

// A map subscript: an unknown name is remembered with an empty entry. The name is noted as asked.
template <typename Tables>
typename Tables::mapped_type LookUp(Tables* tables, HwAssetsCommonData::Names* asked,
                                    const std::string& name) {
  asked->insert(name);
  return (*tables)[name];
}

}  // namespace

HwAssetsCommonData::HwAssetsCommonData(const Json::Value& common)
    : igc_(std::make_shared<GammaTables>()),
      gc_(std::make_shared<GammaTables>()),
      gamut_(std::make_shared<GamutTables>()) {
  if (!common.isObject()) return;
  ReadGammaSection(common, keys::kPostBlendIGC, igc_.get());
  ReadGammaSection(common, keys::kPostBlendGC, gc_.get());
  ReadGamutSection(common, gamut_.get());
}

std::shared_ptr<GammaPostBlendConfig> HwAssetsCommonData::GetIgc(const std::string& name) {
  auto table = LookUp(igc_.get(), &igc_asked_, name);
  if (!table) VKR_LOGI(2, "Common IGC data %s not found", name.c_str());
  return table;
}

std::shared_ptr<GammaPostBlendConfig> HwAssetsCommonData::GetGc(const std::string& name) {
  auto table = LookUp(gc_.get(), &gc_asked_, name);
  if (!table) VKR_LOGI(2, "Common GC data %s not found", name.c_str());
  return table;
}

std::shared_ptr<GamutConfig> HwAssetsCommonData::GetGamut(const std::string& name) {
  auto table = LookUp(gamut_.get(), &gamut_asked_, name);
  if (!table) VKR_LOGI(2, "Common 3DLUT data %s not found", name.c_str());
  return table;
}

}  // namespace vexa
