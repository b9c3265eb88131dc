// The colour modes a panel offers, without duplicates, in the order they were added.
#ifndef VEXA_MODES_KIV_MODES_MANAGER_H_
#define VEXA_MODES_KIV_MODES_MANAGER_H_

#include <json/json.h>

#include <memory>
#include <string>
#include <vector>

#include "formats/merge_rule.h"
#include "modes/kiv_mode.h"

namespace vexa {

struct KivModeInfoList {
  KivModeList modes;
};

class KivModesManager {
 public:
  // Render intent of the factory-floor calibration mode.
  static constexpr int32_t kFactoryFloorIntent = 384;
  // The colorimetric intent it is promoted to.
  static constexpr int32_t kColorimetricIntent = 1;

  explicit KivModesManager(std::string name);

  // Appends the mode unless an equal one (same six identity fields) is listed; with `replace`
  // the equal one is removed first, so the replacement moves to the end.
  void AddModeToList(std::shared_ptr<KivMode> mode, bool replace);
  // True when the two descriptors describe the same mode.
  static bool KivModeDescrCompare(const KivModeDescr& a, const KivModeDescr& b);
  // Every mode of the factory-floor intent becomes colorimetric; true when any did.
  bool SetFactoryFloorModeAsDefault(KivModeList& modes);
  // The list as one JSON document: {name: {mode name: {descriptor..., asset key: hex}}}.
  std::shared_ptr<Json::Value> GetModeListJV();
  // The merged mode of a rule: the first matching factory mode (left) and workflow mode (right).
  std::shared_ptr<KivMode> MergeModesFromList(VexaKivInterface* intf,
                                              std::shared_ptr<KivModeMergeDef> rule,
                                              KivModeList factory_candidates,
                                              KivModeList workflow_candidates);

  const std::shared_ptr<KivModeInfoList>& mode_list() const { return mode_list_; }
  const std::string& name() const { return name_; }

 private:
  std::shared_ptr<KivModeInfoList> mode_list_;
  std::string name_;
  int32_t factory_floor_intent_ = kFactoryFloorIntent;
};

}  // namespace vexa

#endif  // VEXA_MODES_KIV_MODES_MANAGER_H_
