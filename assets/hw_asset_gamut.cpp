#include "assets/hw_asset_gamut.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <string_view>
#include <vector>

#include "formats/decimal_list.h"

namespace vexa {
namespace {

constexpr const char* kLogLabel = HwAssetGamut::kLogLabel;
constexpr uint32_t kGridMode = 1;
// "%u,%u,%u" of three 32-bit values and its terminator.
constexpr size_t kEntryTextCapacity = 3 * 10 + 2 + 1;

static_assert(offsetof(GamutConfig, reserved0) == HwAssetGamut::kRecordBodyOffset,
              "the exchanged body starts at the first reserved word");

// JSON reading errors are reported under the operation the caller called.
#define GAMUT_LOGE_SET_CONFIG(fmt, ...) VKR_LOGE_AT(kLogLabel, "SetConfig", __LINE__, fmt, ##__VA_ARGS__)

unsigned char* Body(GamutConfig& record) {
  return reinterpret_cast<unsigned char*>(&record) + HwAssetGamut::kRecordBodyOffset;
}

void WriteLength(std::vector<unsigned char>* block) {
  const uint32_t len = static_cast<uint32_t>(block->size());
  std::memcpy(block->data(), &len, sizeof(len));
}

bool ReadOutputWords(DecimalListReader& numbers, GamutEntry& entry) {
  uint32_t out[3];
  if (numbers.Next(out, 3) != 3) return false;
  entry.out_0 = out[0];
  entry.out_1 = out[1];
  entry.out_2 = out[2];
  return true;
}

// The text of a string element, without a copy; other elements go through the reader, which
// converts what it can (into `converted`) and refuses the rest naming the member.
bool ElementText(JsonFieldReader& reader, const Json::Value& array, const Json::Value& element,
                 Json::ArrayIndex index, const char* key, std::string* converted,
                 std::string_view* text) {
  const char* begin = nullptr;
  const char* end = nullptr;
  if (element.isString() && element.getString(&begin, &end)) {
    *text = std::string_view(begin, static_cast<size_t>(end - begin));
    return true;
  }
  *converted = reader.ElementString(array, index, key);
  *text = *converted;
  return reader.ok();
}

// Inline form: an array of "out_0,out_1,out_2" strings filling the entries in order.
bool ReadEntryRows(JsonFieldReader& reader, const char* key, const Json::Value& rows,
                   GamutConfig* record) {
  if (rows.size() > kGamutEntries) {
    const std::string where = JsonContextSuffix();
    GAMUT_LOGE_SET_CONFIG("\"%s\" holds %u entries, more than the table's %u%s", key, rows.size(),
                          kGamutEntries, where.c_str());
    return false;
  }
  // Walked with iterators: jsoncpp's arrays are ordered maps, where indexing costs a search.
  Json::ArrayIndex i = 0;
  std::string converted;
  for (auto it = rows.begin(), end = rows.end(); it != end; ++it, ++i) {
    std::string_view row;
    if (!ElementText(reader, rows, *it, i, key, &converted, &row)) return false;
    DecimalListReader numbers(row);
    if (!ReadOutputWords(numbers, record->entries[i])) {
      const std::string where = JsonContextSuffix();
      GAMUT_LOGE_SET_CONFIG("\"%s\" entry %u: \"%s\" is not three decimal numbers%s", key, i,
                            std::string(row).c_str(), where.c_str());
      return false;
    }
  }
  return true;
}

// Shared-table form of "Tuning": one list of three numbers per entry for every grid point. Every
// word of every entry is written (the input points zero), so the record need not start zeroed.
bool ReadEntryStream(std::string_view text, GamutConfig* record) {
  DecimalListReader numbers(text);
  // Read a block of entries per call: the scanner keeps its place in registers within a call.
  constexpr uint32_t kBlockEntries = 64;
  uint32_t words[3 * kBlockEntries];
  for (uint32_t first = 0; first < kGamutEntries; first += kBlockEntries) {
    const uint32_t count = std::min(kBlockEntries, kGamutEntries - first);
    const bool complete = numbers.Next(words, 3 * count) == 3 * count;
    for (uint32_t k = 0; complete && k < count; ++k) {
      GamutEntry& entry = record->entries[first + k];
      entry.in_0 = entry.in_1 = entry.in_2 = 0;
      entry.out_0 = words[3 * k];
      entry.out_1 = words[3 * k + 1];
      entry.out_2 = words[3 * k + 2];
    }
    if (!complete) {
      const std::string where = JsonContextSuffix();
      GAMUT_LOGE_SET_CONFIG("\"%s\" holds fewer than %u entries of three decimal numbers, or a "
                            "field that is not one%s", keys::kGamutTuning, kGamutEntries,
                            where.c_str());
      return false;
    }
  }
  uint32_t extra = 0;
  if (numbers.Next(&extra)) {
    const std::string where = JsonContextSuffix();
    GAMUT_LOGE_SET_CONFIG("\"%s\" holds more than %u entries%s", keys::kGamutTuning, kGamutEntries,
                          where.c_str());
    return false;
  }
  return true;
}

}  // namespace

HwAssetGamut::HwAssetGamut(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common)
    : HwAssetBase(asset_version, std::move(common)) {}

HwAssetGamut::HwAssetGamut(VexaKivInterface* algo, kiv_mode_merge_caps::KivPostBlendGamutMergeOp op,
                           std::shared_ptr<HwAssetGamut> left, std::shared_ptr<HwAssetGamut> right)
    : HwAssetGamut(0, nullptr) {
  if (op != kiv_mode_merge_caps::KivPostBlendGamutMergeOp::kMergeOperand) {
    MergeFromOperands(static_cast<uint32_t>(op), left, right);
    return;
  }
  GamutConfig* main = (left && right && algo != nullptr) ? left->mutable_record() : nullptr;
  if (main != nullptr) {
    Merge(algo, *main, right->MutableTuning());
    return;
  }
  VKR_LOGE("Gamut Merge Error: Source (either left or right operand) is empty or vexa_algo_intf is nullptr");
  SetIdentity();
}

void HwAssetGamut::SetIdentity() {
  GamutConfig* record = mutable_record();
  if (record == nullptr) return;
  record->enable = false;
  record->reserved0 = 0;
  record->reserved1 = 0;
  record->grid_mode = kGridMode;
  record->num_entries = 0;
}

void HwAssetGamut::SetTuningConfig(const GamutConfig& record) {
  pending_tuning_.clear();
  CopyAfterLen(record, &MutableTuning());
}

std::shared_ptr<const GamutConfig> HwAssetGamut::tuning_config() const {
  static const std::shared_ptr<const GamutConfig> kNoTuning = NewRecord();
  if (tuning_) return tuning_;
  if (pending_tuning_.empty()) return kNoTuning;
  std::shared_ptr<const GamutConfig> converted = TuningFromText(pending_tuning_);
  return converted ? converted : kNoTuning;
}

GamutConfig& HwAssetGamut::MutableTuning() {
  if (!tuning_ && !pending_tuning_.empty()) tuning_ = TuningFromText(pending_tuning_);
  std::string().swap(pending_tuning_);
  if (!tuning_) tuning_ = NewRecord();
  return *tuning_;
}

std::unique_ptr<GamutConfig> HwAssetGamut::TuningFromText(std::string_view text) {
  // Allocated unfilled: the header is set here and every entry by the reader (115 KiB not zeroed).
  std::unique_ptr<GamutConfig> tuning(new GamutConfig);
  std::memset(tuning.get(), 0, offsetof(GamutConfig, entries));
  tuning->len = kRecordLen;
  tuning->enable = true;
  tuning->grid_mode = kGridMode;
  tuning->num_entries = kGamutEntries;
  if (!ReadEntryStream(text, tuning.get())) return nullptr;
  return tuning;
}

uint32_t HwAssetGamut::GridLevel(uint32_t k) { return std::min(k * kGridStep, kGridMax); }

uint32_t HwAssetGamut::HeldEntries(const GamutConfig& record) {
  return std::min(record.num_entries, kGamutEntries);
}

void HwAssetGamut::FillRgbInEntries(GamutConfig* record) {
  if (record == nullptr) return;
  constexpr uint32_t n = kGamutGridLevels;
  for (uint32_t k2 = 0; k2 < n; ++k2) {
    for (uint32_t k1 = 0; k1 < n; ++k1) {
      for (uint32_t k0 = 0; k0 < n; ++k0) {
        GamutEntry& entry = record->entries[n * n * k2 + n * k1 + k0];
        entry.in_0 = GridLevel(k0);
        entry.in_1 = GridLevel(k1);
        entry.in_2 = GridLevel(k2);
      }
    }
  }
}

void HwAssetGamut::SetConfig(const Json::Value& config) {
  // The inline form can be refused halfway through its rows: it goes through a fresh record.
  if (asset_version_ < kSharedTablesAssetVersion) {
    HwAssetBase::SetConfig(config);
    return;
  }
  // The shared form decides everything before it writes; the asset then holds the shared table
  // itself (enabled, 115 KiB), which is copied only if the asset's record is ever written.
  JsonFieldReader reader(config, kLogLabel);
  const bool enable = reader.Bool(keys::kEnable);
  std::unique_ptr<GamutConfig> tuning;
  std::string tuning_text;
  std::shared_ptr<GamutConfig> shared;
  if (reader.ok() && enable) shared = ReadSharedTables(reader, &tuning, &tuning_text);
  if (!shared || !reader.ok()) {
    SetIdentity();
    return;
  }
  record_.Share(std::move(shared));
  if (tuning) {
    tuning_ = std::move(tuning);
    pending_tuning_.clear();
  } else if (!tuning_text.empty()) {
    tuning_.reset();
    pending_tuning_ = std::move(tuning_text);
  }
}

ReadResult HwAssetGamut::ReadJson(JsonFieldReader& reader, GamutConfig& fresh) {
  fresh.grid_mode = kGridMode;
  std::unique_ptr<GamutConfig> tuning;
  if (!ReadInlineTables(reader, fresh, &tuning) || !reader.ok()) return ReadResult::kIdentity;
  if (tuning) {
    tuning_ = std::move(tuning);
    pending_tuning_.clear();
  }
  return ReadResult::kStore;
}

bool HwAssetGamut::ReadInlineTables(JsonFieldReader& reader, GamutConfig& fresh,
                                    std::unique_ptr<GamutConfig>* tuning) {
  const Json::Value& map_fine = reader.Array(keys::kGamutMapFine);
  if (!reader.ok()) return false;
  if (map_fine.isNull()) {
    GAMUT_LOGE_SET_CONFIG("No 3DLUT data found");
    return false;
  }
  if (!ReadEntryRows(reader, keys::kGamutMapFine, map_fine, &fresh)) return false;
  fresh.num_entries = map_fine.size();

  const Json::Value& tuning_rows = reader.Array(keys::kGamutTuning);
  if (!reader.ok()) return false;
  if (tuning_rows.isNull()) return true;
  *tuning = NewRecord();
  (*tuning)->grid_mode = kGridMode;
  return ReadEntryRows(reader, keys::kGamutTuning, tuning_rows, tuning->get());
}

std::shared_ptr<GamutConfig> HwAssetGamut::ReadSharedTables(JsonFieldReader& reader,
                                                           std::unique_ptr<GamutConfig>* tuning,
                                                           std::string* tuning_text) {
  const uint32_t count = reader.Uint(keys::kNumEntries);
  if (!reader.ok()) return nullptr;
  if (count != kGamutEntries) {
    GAMUT_LOGE_SET_CONFIG("Unexpected number of gamut entries %d, expecting %d", static_cast<int>(count),
                          static_cast<int>(kGamutEntries));
    return nullptr;
  }
  std::shared_ptr<GamutConfig> shared = LookUpSharedTable(reader);
  if (!reader.ok()) return nullptr;
  if (!shared) {
    GAMUT_LOGE_SET_CONFIG("Failed to retrieve Gamut LUTs from common data");
    return nullptr;
  }
  if (!reader.Has(keys::kGamutTuning)) return shared;
  const std::string_view text = reader.StringView(keys::kGamutTuning);
  if (!reader.ok()) return nullptr;
  // A plain list cannot be refused: it is kept as text and converted when a merge first needs it
  // (most start-ups merge no gamut by computation). Any other text is read now, with its errors.
  if (IsPlainDecimalList(text, 3 * kGamutEntries)) {
    tuning_text->assign(text);
    return shared;
  }
  *tuning = TuningFromText(text);
  return *tuning ? shared : nullptr;
}

std::shared_ptr<GamutConfig> HwAssetGamut::LookUpSharedTable(JsonFieldReader& reader) {
  if (!common_data_) return nullptr;
  const char* key = reader.Has(keys::kPredefined) ? keys::kPredefined
                    : reader.Has(keys::kCustom)   ? keys::kCustom
                                                  : nullptr;
  if (key == nullptr) return nullptr;
  const std::string name = reader.String(key);
  if (!reader.ok()) return nullptr;
  return common_data_->GetGamut(name);
}

void HwAssetGamut::WriteJson(Json::Value& json) const {
  Json::Value& rows = json[keys::kGamutMapFine] = Json::Value(Json::arrayValue);
  char text[kEntryTextCapacity];
  const GamutConfig& record = this->record();
  for (uint32_t i = 0; i < HeldEntries(record); ++i) {
    const GamutEntry& entry = record.entries[i];
    std::snprintf(text, sizeof(text), "%u,%u,%u", entry.out_0, entry.out_1, entry.out_2);
    rows.append(text);
  }
}

void HwAssetGamut::Merge(VexaKivInterface* algo, GamutConfig& left, GamutConfig& right) {
  FillRgbInEntries(&left);
  FillRgbInEntries(&right);
  // About 345 KiB together: heap buffers, never the stack.
  std::vector<unsigned char> input(kMergeInputLen);
  WriteLength(&input);
  std::memcpy(input.data() + sizeof(uint32_t), Body(left), kRecordBodyLen);
  std::memcpy(input.data() + sizeof(uint32_t) + kRecordBodyLen, Body(right), kRecordBodyLen);
  std::vector<unsigned char> output(kMergeOutputLen);
  WriteLength(&output);

  const VexaKivPayload in_payload = {0, kMergeInputLen, 0, input.data()};
  VexaKivPayload out_payload = {0, kMergeOutputLen, 0, output.data()};
  if (algo->ProcessOps(kKivGamutMerge, in_payload, &out_payload) != 0) {
    VKR_LOGE("Failed to process kKivGamutMerge");
    SetIdentity();
    return;
  }
  GamutConfig* record = mutable_record();
  if (record == nullptr) return;
  std::memcpy(Body(*record), output.data() + sizeof(uint32_t), kRecordBodyLen);
  record->enable = true;
}

}  // namespace vexa
