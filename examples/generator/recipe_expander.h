// Expands the recipes of an unpacked example file into the data they name: gamma and
// inverse-gamma tables, gamut 3D LUTs and PCC sections, computed for one panel.
//
// A recipe is any object with a "generate" member, for example
//   {"generate": "gc", "curve": "gamma2.2", "entries": 1024, "form": "list"}
// and is replaced in place by a comma-separated string ("list") or a JSON array ("array") of the
// table, or by a whole PCC section.
#ifndef VEXA_EXAMPLES_GENERATOR_RECIPE_EXPANDER_H_
#define VEXA_EXAMPLES_GENERATOR_RECIPE_EXPANDER_H_

#include <json/json.h>

#include <optional>
#include <string>

#include "examples/generator/panel_model.h"

namespace vexa::example {

class RecipeExpander {
 public:
  explicit RecipeExpander(const PanelModel& panel) : panel_(panel) {}

  // Replaces every recipe in `document`. False, with `error` naming the recipe's path, for an
  // unknown recipe or a missing or malformed parameter.
  bool Expand(Json::Value& document, std::string* error) const;

 private:
  bool ExpandAt(Json::Value& value, const std::string& path, std::string* error) const;
  std::optional<Json::Value> Generate(const Json::Value& recipe, std::string* error) const;
  std::optional<Json::Value> InverseGamma(const Json::Value& recipe, std::string* error) const;
  std::optional<Json::Value> Gamma(const Json::Value& recipe, std::string* error) const;
  std::optional<Json::Value> Gamut(const Json::Value& recipe, std::string* error) const;
  std::optional<Json::Value> Pcc(const Json::Value& recipe, std::string* error) const;
  // The panel's mapping of the recipe's "target" primaries.
  std::optional<Mat3> TargetTransform(const Json::Value& recipe, std::string* error) const;

  const PanelModel& panel_;
};

}  // namespace vexa::example

#endif  // VEXA_EXAMPLES_GENERATOR_RECIPE_EXPANDER_H_
