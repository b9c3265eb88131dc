// The shared gamma and 3D-LUT tables of one modes file ("Common"), by name.
//
// Gamma tables come from "Predefined" (one list for all three channels) and "Custom" (one list
// per channel); a custom table replaces a predefined one of the same name. 3D tables come from
// "Custom" only. A table whose list is short, holds a non-number, or whose count exceeds the
// record's capacity is not stored (error line naming it); assets that name it fail their lookup.
#ifndef VEXA_FORMATS_COMMON_DATA_H_
#define VEXA_FORMATS_COMMON_DATA_H_

#include <json/json.h>

#include <map>
#include <memory>
#include <set>
#include <string>

#include "vexa/vexa_kiv_interface.h"

namespace vexa {

class HwAssetsCommonData {
 public:
  using GammaTables = std::map<std::string, std::shared_ptr<GammaPostBlendConfig>>;
  using GamutTables = std::map<std::string, std::shared_ptr<GamutConfig>>;
  using Names = std::set<std::string>;

  // `common` is the decoded "Common" object (or null). Never fails.
  explicit HwAssetsCommonData(const Json::Value& common);

  // The named table, or null (with an information line at level 2). Like a map subscript, an
  // unknown name is remembered with an empty entry; callers serialise access.
  std::shared_ptr<GammaPostBlendConfig> GetIgc(const std::string& name);
  std::shared_ptr<GammaPostBlendConfig> GetGc(const std::string& name);
  std::shared_ptr<GamutConfig> GetGamut(const std::string& name);

  // Read-only views for tools.
  const GammaTables& igc_tables() const { return *igc_; }
  const GammaTables& gc_tables() const { return *gc_; }
  const GamutTables& gamut_tables() const { return *gamut_; }
  // Every name asked for so far, found or not.
  const Names& igc_names_asked() const { return igc_asked_; }
  const Names& gc_names_asked() const { return gc_asked_; }
  const Names& gamut_names_asked() const { return gamut_asked_; }

 private:
  std::shared_ptr<GammaTables> igc_;
  std::shared_ptr<GammaTables> gc_;
  std::shared_ptr<GamutTables> gamut_;
  Names igc_asked_;
  Names gc_asked_;
  Names gamut_asked_;
};

}  // namespace vexa

#endif  // VEXA_FORMATS_COMMON_DATA_H_
