// The per-channel gamma tables that the inverse-gamma and gamma blocks share: read inline (asset
// version below 3) or by name from the common data, written back inline, and fitted to the
// class-wide entry count of a payload.
#ifndef VEXA_ASSETS_GAMMA_LUT_H_
#define VEXA_ASSETS_GAMMA_LUT_H_

#include <json/json.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "assets/hw_asset_base.h"

namespace vexa {

// Most entries per channel that an inline table may hold, and that a gamma block takes.
constexpr uint32_t kMaxGammaEntries = 1024;

class GammaLut {
 public:
  using Lookup = std::shared_ptr<GammaPostBlendConfig> (HwAssetsCommonData::*)(const std::string&);

  // `block` ("IGC", "GC") names the tables in error lines; `lookup` finds a shared table by name;
  // a non-zero `required_entries` is the only "numEntries" a shared-table reference may give.
  constexpr GammaLut(const char* log_label, const char* block, Lookup lookup,
                     uint32_t required_entries)
      : log_label_(log_label), block_(block), lookup_(lookup), required_entries_(required_entries) {}

  // Fills the three tables of `fresh` from an asset section: inline below
  // kSharedTablesAssetVersion, from `common` from then on.
  ReadResult Read(JsonFieldReader& reader, uint32_t asset_version, HwAssetsCommonData* common,
                  GammaPostBlendConfig& fresh) const;

  // Writes "lutR", "lutG" and "lutB", each with every entry of its table.
  static void Write(const GammaPostBlendConfig& record, Json::Value& json);
  // Copies enable and the three tables.
  static void CopyTables(const GammaPostBlendConfig& from, GammaPostBlendConfig& to);
  // Copies enable and `entries` entries per channel into `out`; a table shorter than that is
  // padded with its last entry (zeros when it is empty).
  static void FillPayload(const GammaPostBlendConfig& from, uint32_t entries,
                          GammaPostBlendConfig& out);
  // Reserves room for `entries` entries per channel.
  static void Reserve(GammaPostBlendConfig& record, uint32_t entries);

 private:
  ReadResult ReadInline(JsonFieldReader& reader, GammaPostBlendConfig& fresh) const;
  ReadResult ReadShared(JsonFieldReader& reader, HwAssetsCommonData* common,
                        GammaPostBlendConfig& fresh) const;
  ReadResult LookupFailed() const;

  const char* log_label_;
  const char* block_;
  Lookup lookup_;
  uint32_t required_entries_;
};

}  // namespace vexa

#endif  // VEXA_ASSETS_GAMMA_LUT_H_
