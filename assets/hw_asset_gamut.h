// The 17x17x17 gamut 3D LUT. Inline "mapFine" text below asset version 3, a named shared table
// from 3 on. Besides its main record the asset keeps a tuning record; a merge combines the left
// operand's main table with the right operand's tuning table through the colour-algorithm
// library. Records are about 115 KiB: they live inside the heap-allocated asset and in heap
// buffers, never on the stack.
#ifndef VEXA_ASSETS_HW_ASSET_GAMUT_H_
#define VEXA_ASSETS_HW_ASSET_GAMUT_H_

#include <memory>
#include <string>
#include <string_view>

#include "assets/hw_asset_base.h"

namespace vexa {

class HwAssetGamut : public HwAssetBase<HwAssetGamut, GamutConfig> {
 public:
  static constexpr const char* kLogLabel = "VexaJsonModeParser::HwAssetGamut";
  static constexpr const char* kClassName = "HwAssetGamut";
  static constexpr const char* kMergeName = "Gamut";
  static constexpr const char* kPayloadName = keys::kPostBlendGamut;
  static constexpr uint32_t kRecordLen = kGamutConfigLen;

  // The grid's 12-bit levels: steps of 256, the last one 4095.
  static constexpr uint32_t kGridStep = 256;
  static constexpr uint32_t kGridMax = 4095;
  // A record from its reserved words on: what is exchanged with the algorithm library.
  static constexpr uint32_t kRecordBodyOffset = 8;
  static constexpr uint32_t kRecordBodyLen = kGamutConfigLen - kRecordBodyOffset;  // 117928
  static constexpr uint32_t kMergeInputLen = 4 + 2 * kRecordBodyLen;                 // 235860
  static constexpr uint32_t kMergeOutputLen = 4 + kRecordBodyLen;                    // 117932

  HwAssetGamut(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common);
  HwAssetGamut(VexaKivInterface* algo, kiv_mode_merge_caps::KivPostBlendGamutMergeOp op,
               std::shared_ptr<HwAssetGamut> left, std::shared_ptr<HwAssetGamut> right);

  using HwAssetBase::SetConfig;
  void SetConfig(const Json::Value& config) override;
  // Main record disabled, entries kept; the tuning record is kept.
  void SetIdentity() override;

  void SetTuningConfig(const GamutConfig& record);
  // The tuning record; a zero record until one is read or set. A "Tuning" text kept unconverted
  // is converted for the caller (each call) until a merge converts it for good.
  std::shared_ptr<const GamutConfig> tuning_config() const;

  // Combines `left` (main) and `right` (tuning) into this asset's main record. Writes the grid's
  // input points into both operands first.
  void Merge(VexaKivInterface* algo, GamutConfig& left, GamutConfig& right);
  // Writes the input points of all entries from the grid; nothing for null.
  static void FillRgbInEntries(GamutConfig* record);
  // The grid level of index k (0..16).
  static uint32_t GridLevel(uint32_t k);
  // Entries that a record holds: its count, bounded by the record's capacity whoever wrote it.
  static uint32_t HeldEntries(const GamutConfig& record);

 private:
  friend class HwAssetBase<HwAssetGamut, GamutConfig>;
  // The inline form: the main table into `fresh` and, when "Tuning" is present, a new tuning
  // record (stored only when the whole section is accepted).
  ReadResult ReadJson(JsonFieldReader& reader, GamutConfig& fresh);
  void WriteJson(Json::Value& json) const;
  // False refuses the section; `tuning` is set when present.
  bool ReadInlineTables(JsonFieldReader& reader, GamutConfig& fresh,
                        std::unique_ptr<GamutConfig>* tuning);
  // The shared form: the common-data table to copy, every check and the tuning table done.
  // A plain "Tuning" text comes back in `tuning_text`, unconverted; any other in `tuning`.
  std::shared_ptr<GamutConfig> ReadSharedTables(JsonFieldReader& reader,
                                                std::unique_ptr<GamutConfig>* tuning,
                                                std::string* tuning_text);
  // The tuning record of a shared-form "Tuning" text; null (with an error line) when refused.
  static std::unique_ptr<GamutConfig> TuningFromText(std::string_view text);
  // The common-data table named by "Predefined" (preferred) or "Custom"; null when none.
  std::shared_ptr<GamutConfig> LookUpSharedTable(JsonFieldReader& reader);
  // The tuning record to write into: the pending text converted, or a zero record on first use.
  GamutConfig& MutableTuning();

  // Null until a tuning table is read, set or merged against: most gamut assets have none, and
  // each record is 115 KiB.
  std::shared_ptr<GamutConfig> tuning_;
  // A "Tuning" text checked to be plain (it cannot be refused) and not yet converted: half the
  // size of the record, and only a merge by computation ever needs the record.
  std::string pending_tuning_;
};

}  // namespace vexa

#endif  // VEXA_ASSETS_HW_ASSET_GAMUT_H_
