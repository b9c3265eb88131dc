// One post-blend hardware block of a colour mode: read from the mode's JSON, reset to identity
// (block off), written back as JSON, and handed to the display service as a HwConfigPayload.
#ifndef VEXA_ASSETS_HW_ASSET_H_
#define VEXA_ASSETS_HW_ASSET_H_

#include <json/json.h>

#include <cstdint>
#include <memory>

#include "formats/common_data.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa {

class HwAsset {
 public:
  HwAsset(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common)
      : asset_version_(asset_version), common_data_(std::move(common)) {}
  virtual ~HwAsset() = default;
  HwAsset(const HwAsset&) = delete;
  HwAsset& operator=(const HwAsset&) = delete;

  // Fills the record from the asset's JSON object. A member of the wrong type refuses the
  // section: the asset is left at identity with an error line naming the member.
  virtual void SetConfig(const Json::Value& config) = 0;
  // Switches the block off.
  virtual void SetIdentity() = 0;
  // The record as a new JSON object: "enable" first, the other members only when enabled.
  virtual std::shared_ptr<Json::Value> AsJV() const = 0;
  // A new payload holding a copy of the record; null only when the copy cannot be made.
  virtual std::shared_ptr<HwConfigPayload> AsPayload() const = 0;

  // Below 3 the gamma and gamut tables stand inline in the JSON; from 3 on they are named tables
  // of the common data.
  uint32_t asset_version() const { return asset_version_; }
  const std::shared_ptr<HwAssetsCommonData>& common_data() const { return common_data_; }

 protected:
  uint32_t asset_version_;
  std::shared_ptr<HwAssetsCommonData> common_data_;
};

// Asset version from which tables are named entries of the common data.
constexpr uint32_t kSharedTablesAssetVersion = 3;

}  // namespace vexa

#endif  // VEXA_ASSETS_HW_ASSET_H_
