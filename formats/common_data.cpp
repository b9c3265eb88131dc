#include "formats/common_data.h"

#include <cstring>
#include <vector>

#include "formats/decimal_list.h"
#include "formats/json_access.h"
#include "formats/keys.h"
#include "platform/log.h"

namespace vexa {
namespace {

constexpr char kLogLabel[] = "VexaJsonModeParser::HwAssetsCommonData";

// The count of a section's "numEntries": a signed count, so values above 2^31 read as none.
bool ReadCount(const Json::Value& section, const char* section_name, int64_t* count) {
  JsonFieldReader reader(section, kLogLabel);
  ScopedJsonContext where(std::string("\"") + keys::kCommon + "\".\"" + section_name + "\"");
  const uint32_t value = reader.Uint(keys::kNumEntries);
  *count = static_cast<int32_t>(value);
  return reader.ok();
}

// One channel list of `count` values; false (with an error line) when the text cannot give them.
bool ReadChannel(const Json::Value& text, int64_t count, const std::string& table,
                 const char* section, std::vector<uint32_t>* out) {
  if (count < 1) {
    out->clear();
    return true;
  }
  if (!text.isString()) {
    VKR_LOGE("Common %s table %s: expected a string of %lld comma-separated numbers, found %s",
             section, table.c_str(), static_cast<long long>(count), JsonTypeName(text));
    return false;
  }
  const char* begin = nullptr;
  const char* end = nullptr;
  text.getString(&begin, &end);
  if (!ParseDecimalList(std::string_view(begin, static_cast<size_t>(end - begin)),
                        static_cast<size_t>(count), out)) {
    VKR_LOGE("Common %s table %s: fewer than %lld decimal numbers, or a field that is not one; "
             "table not stored", section, table.c_str(), static_cast<long long>(count));
    return false;
  }
  return true;
}

std::shared_ptr<GammaPostBlendConfig> NewGammaTable() {
  auto table = std::make_shared<GammaPostBlendConfig>();
  table->len = kGammaConfigLen;
  return table;
}

void ReadPredefinedGamma(const Json::Value& predefined, int64_t count, const char* section,
                         HwAssetsCommonData::GammaTables* tables) {
  for (const std::string& name : MemberNames(predefined)) {
    auto table = NewGammaTable();
    if (!ReadChannel(predefined[name], count, name, section, &table->lut_r)) continue;
    table->lut_g = table->lut_r;
    table->lut_b = table->lut_r;
    (*tables)[name] = std::move(table);
  }
}

void ReadCustomGamma(const Json::Value& custom, int64_t count, const char* section,
                     HwAssetsCommonData::GammaTables* tables) {
  for (const std::string& name : MemberNames(custom)) {
    const Json::Value& channels = custom[name];
    auto table = NewGammaTable();
    const Json::Value* r = FindMember(channels, keys::kDitherLutR);
    const Json::Value* g = FindMember(channels, keys::kDitherLutG);
    const Json::Value* b = FindMember(channels, keys::kDitherLutB);
    static const Json::Value kNull;
    if (!ReadChannel(r ? *r : kNull, count, name, section, &table->lut_r) ||
        !ReadChannel(g ? *g : kNull, count, name, section, &table->lut_g) ||
        !ReadChannel(b ? *b : kNull, count, name, section, &table->lut_b)) {
      continue;
    }
    (*tables)[name] = std::move(table);
  }
}

void ReadGammaSection(const Json::Value& common, const char* section,
                      HwAssetsCommonData::GammaTables* tables) {
  const Json::Value* gamma = FindMember(common, section);
  if (gamma == nullptr || gamma->isNull()) return;
  int64_t count = 0;
  if (!ReadCount(*gamma, section, &count)) return;
  if (const Json::Value* predefined = FindMember(*gamma, keys::kPredefined)) {
    ReadPredefinedGamma(*predefined, count, section, tables);
  }
  if (const Json::Value* custom = FindMember(*gamma, keys::kCustom)) {
    ReadCustomGamma(*custom, count, section, tables);
  }
}

bool ReadGamutTable(const Json::Value& text, int64_t count, const std::string& name,
                    GamutConfig* table) {
  table->len = kGamutConfigLen;
  table->grid_mode = 1;
  if (count > static_cast<int64_t>(kGamutEntries)) {
    VKR_LOGE("Common 3DLUT table %s: %lld entries exceed the capacity of %u; table not stored",
             name.c_str(), static_cast<long long>(count), kGamutEntries);
    return false;
  }
  std::vector<uint32_t> values;
  if (!ReadChannel(text, count < 1 ? 0 : count * 3, name, keys::kPostBlendGamut, &values)) return false;
  const size_t entries = values.size() / 3;
  for (size_t i = 0; i < entries; ++i) {
    table->entries[i].out_0 = values[3 * i];
    table->entries[i].out_1 = values[3 * i + 1];
    table->entries[i].out_2 = values[3 * i + 2];
  }
  table->num_entries = static_cast<uint32_t>(entries);
  table->enable = true;
  return true;
}

void ReadGamutSection(const Json::Value& common, HwAssetsCommonData::GamutTables* tables) {
  const Json::Value* gamut = FindMember(common, keys::kPostBlendGamut);
  if (gamut == nullptr || gamut->isNull()) return;
  const Json::Value* custom = FindMember(*gamut, keys::kCustom);
  if (custom == nullptr || custom->isNull()) return;
  int64_t count = 0;
  if (!ReadCount(*gamut, keys::kPostBlendGamut, &count)) return;
  for (const std::string& name : MemberNames(*custom)) {
    auto table = std::make_shared<GamutConfig>();
    std::memset(table.get(), 0, sizeof(GamutConfig));
    if (ReadGamutTable((*custom)[name], count, name, table.get())) (*tables)[name] = std::move(table);
  }
}

template <typename Tables>
typename Tables::mapped_type LookUp(Tables* tables, const std::string& name) {
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
  auto table = LookUp(igc_.get(), name);
  if (!table) VKR_LOGI(2, "Common IGC data %s not found", name.c_str());
  return table;
}

std::shared_ptr<GammaPostBlendConfig> HwAssetsCommonData::GetGc(const std::string& name) {
  auto table = LookUp(gc_.get(), name);
  if (!table) VKR_LOGI(2, "Common GC data %s not found", name.c_str());
  return table;
}

std::shared_ptr<GamutConfig> HwAssetsCommonData::GetGamut(const std::string& name) {
  auto table = LookUp(gamut_.get(), name);
  if (!table) VKR_LOGI(2, "Common 3DLUT data %s not found", name.c_str());
  return table;
}

}  // namespace vexa
