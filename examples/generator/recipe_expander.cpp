#include "examples/generator/recipe_expander.h"

#include <algorithm>
#include <functional>

#include "examples/generator/gamut_table.h"
#include "examples/generator/generator_words.h"
#include "examples/generator/transfer_curves.h"
#include "formats/json_access.h"
#include "formats/keys.h"

namespace vexa::example {
namespace {

// Inverse-gamma outputs feed the 12-bit gamut grid; gamma outputs drive a 10-bit panel.
constexpr uint32_t kInverseGammaOutputBits = 12;
constexpr uint32_t kGammaOutputBits = 10;
// What the gamma blocks accept.
constexpr uint32_t kMinGammaEntries = 2;
constexpr uint32_t kMaxGammaEntries = 1024;
constexpr double kDefaultSaturation = 1.0;

// A parameter of one JSON type: `is` checks the type, `as` converts; `fallback`, when given,
// stands for a missing parameter. `expected` names the type in the error.
template <typename T>
std::optional<T> Parameter(const Json::Value& recipe, const char* key,
                           bool (Json::Value::*is)() const, T (Json::Value::*as)() const,
                           const char* expected, std::string* error,
                           std::optional<T> fallback = std::nullopt) {
  const Json::Value* value = FindMember(recipe, key);
  if (value == nullptr && fallback) return fallback;
  if (value == nullptr || !(value->*is)()) {
    *error = std::string("\"") + key + "\" must be " + expected;
    return std::nullopt;
  }
  return (value->*as)();
}

std::optional<std::string> StringParameter(const Json::Value& recipe, const char* key,
                                           std::string* error) {
  return Parameter<std::string>(recipe, key, &Json::Value::isString, &Json::Value::asString,
                                "a string", error);
}

std::optional<uint32_t> UintParameter(const Json::Value& recipe, const char* key,
                                      std::string* error) {
  return Parameter<Json::UInt>(recipe, key, &Json::Value::isUInt, &Json::Value::asUInt,
                               "an unsigned number", error);
}

std::optional<double> OptionalDoubleParameter(const Json::Value& recipe, const char* key,
                                              double fallback, std::string* error) {
  return Parameter<double>(recipe, key, &Json::Value::isNumeric, &Json::Value::asDouble,
                           "a number", error, fallback);
}

// True for "list", false for "array".
std::optional<bool> ListForm(const Json::Value& recipe, std::string* error) {
  const auto form = StringParameter(recipe, words::kForm, error);
  if (!form) return std::nullopt;
  if (*form == words::kFormList) return true;
  if (*form == words::kFormArray) return false;
  *error = "\"form\" must be \"list\" or \"array\", not \"" + *form + "\"";
  return std::nullopt;
}

std::string CommaList(const std::vector<uint32_t>& values) {
  std::string text;
  for (size_t i = 0; i < values.size(); ++i) {
    if (i > 0) text += ',';
    text += std::to_string(values[i]);
  }
  return text;
}

Json::Value NumberArray(const std::vector<uint32_t>& values) {
  Json::Value array(Json::arrayValue);
  for (uint32_t value : values) array.append(value);
  return array;
}

std::vector<uint32_t> Flatten(const std::vector<GamutOutput>& table) {
  std::vector<uint32_t> values;
  values.reserve(table.size() * 3);
  for (const GamutOutput& output : table) values.insert(values.end(), output.begin(), output.end());
  return values;
}

// One "r,g,b" string per entry, as inline gamut tables hold them.
Json::Value TripletArray(const std::vector<GamutOutput>& table) {
  Json::Value array(Json::arrayValue);
  for (const GamutOutput& output : table) {
    array.append(CommaList({output[0], output[1], output[2]}));
  }
  return array;
}

std::optional<Primaries> TargetPrimaries(const std::string& word, std::string* error) {
  if (word == keys::kPrimariesSrgb) return SrgbPrimaries();
  if (word == keys::kPrimariesP3) return DisplayP3Primaries();
  *error = "unknown \"target\" \"" + word + "\"";
  return std::nullopt;
}

bool IsNumberTriple(const Json::Value& value) {
  if (!value.isArray() || value.size() != 3) return false;
  return std::all_of(value.begin(), value.end(), [](const Json::Value& v) { return v.isNumeric(); });
}

// A 3x3 matrix given as three rows of three numbers.
std::optional<Mat3> MatrixParameter(const Json::Value& recipe, std::string* error) {
  const Json::Value* rows = FindMember(recipe, words::kMatrix);
  if (rows == nullptr || !rows->isArray() || rows->size() != 3 ||
      !std::all_of(rows->begin(), rows->end(), IsNumberTriple)) {
    *error = "\"matrix\" must be three rows of three numbers";
    return std::nullopt;
  }
  Mat3 matrix;
  for (Json::ArrayIndex i = 0; i < 3; ++i) {
    for (Json::ArrayIndex j = 0; j < 3; ++j) matrix[i][j] = (*rows)[i][j].asDouble();
  }
  return matrix;
}

// One output channel's polynomial: the linear terms from a matrix row, every other term 0.
Json::Value PccChannel(const Vec3& row) {
  Json::Value channel(Json::objectValue);
  for (const char* key :
       {keys::kPccCoeffC, keys::kPccCoeffRR, keys::kPccCoeffGG, keys::kPccCoeffBB,
        keys::kPccCoeffRG, keys::kPccCoeffGB, keys::kPccCoeffRB, keys::kPccCoeffRGB}) {
    channel[key] = 0.0;
  }
  channel[keys::kPccCoeffR] = row[0];
  channel[keys::kPccCoeffG] = row[1];
  channel[keys::kPccCoeffB] = row[2];
  return channel;
}

// Reads the curve and entry count of a gamma recipe and builds the table.
std::optional<Json::Value> GammaRecipe(
    const Json::Value& recipe, std::string* error,
    const std::function<std::vector<uint32_t>(TransferCurve, uint32_t)>& build) {
  const auto curve_word = StringParameter(recipe, words::kCurve, error);
  if (!curve_word) return std::nullopt;
  const auto curve = TransferCurveNamed(*curve_word);
  if (!curve) {
    *error = "unknown \"curve\" \"" + *curve_word + "\"";
    return std::nullopt;
  }
  const auto entries = UintParameter(recipe, words::kEntries, error);
  if (!entries) return std::nullopt;
  if (*entries < kMinGammaEntries || *entries > kMaxGammaEntries) {
    *error = "\"entries\" must lie in 2..1024";
    return std::nullopt;
  }
  const auto list = ListForm(recipe, error);
  if (!list) return std::nullopt;
  const std::vector<uint32_t> table = build(*curve, *entries);
  return *list ? Json::Value(CommaList(table)) : NumberArray(table);
}

}  // namespace

bool RecipeExpander::Expand(Json::Value& document, std::string* error) const {
  return ExpandAt(document, "", error);
}

bool RecipeExpander::ExpandAt(Json::Value& value, const std::string& path,
                              std::string* error) const {
  if (value.isObject() && HasMember(value, words::kGenerate)) {
    auto generated = Generate(value, error);
    if (!generated) {
      *error = (path.empty() ? "/" : path) + ": " + *error;
      return false;
    }
    value = std::move(*generated);
    return true;
  }
  if (value.isObject()) {
    for (const std::string& name : MemberNames(value)) {
      if (!ExpandAt(value[name], path + "/" + name, error)) return false;
    }
  } else if (value.isArray()) {
    for (Json::ArrayIndex i = 0; i < value.size(); ++i) {
      if (!ExpandAt(value[i], path + "/" + std::to_string(i), error)) return false;
    }
  }
  return true;
}

std::optional<Json::Value> RecipeExpander::Generate(const Json::Value& recipe,
                                                    std::string* error) const {
  using Recipe =
      std::optional<Json::Value> (RecipeExpander::*)(const Json::Value&, std::string*) const;
  static const struct {
    const char* word;
    Recipe make;
  } kRecipes[] = {
      {words::kRecipeIgc, &RecipeExpander::InverseGamma},
      {words::kRecipeGc, &RecipeExpander::Gamma},
      {words::kRecipeGamut, &RecipeExpander::Gamut},
      {words::kRecipePcc, &RecipeExpander::Pcc},
  };
  const auto word = StringParameter(recipe, words::kGenerate, error);
  if (!word) return std::nullopt;
  for (const auto& entry : kRecipes) {
    if (*word == entry.word) return (this->*entry.make)(recipe, error);
  }
  *error = "unknown recipe \"" + *word + "\"";
  return std::nullopt;
}

std::optional<Json::Value> RecipeExpander::InverseGamma(const Json::Value& recipe,
                                                        std::string* error) const {
  return GammaRecipe(recipe, error, [](TransferCurve curve, uint32_t entries) {
    return LinearisingTable(curve, entries, kInverseGammaOutputBits);
  });
}

std::optional<Json::Value> RecipeExpander::Gamma(const Json::Value& recipe,
                                                 std::string* error) const {
  return GammaRecipe(recipe, error, [](TransferCurve curve, uint32_t entries) {
    return EncodingTable(curve, entries, kGammaOutputBits);
  });
}

std::optional<Json::Value> RecipeExpander::Gamut(const Json::Value& recipe,
                                                 std::string* error) const {
  const auto transform = HasMember(recipe, words::kMatrix) ? MatrixParameter(recipe, error)
                                                           : TargetTransform(recipe, error);
  if (!transform) return std::nullopt;
  const auto list = ListForm(recipe, error);
  if (!list) return std::nullopt;
  const std::vector<GamutOutput> table = GamutTable(*transform);
  return *list ? Json::Value(CommaList(Flatten(table))) : TripletArray(table);
}

std::optional<Mat3> RecipeExpander::TargetTransform(const Json::Value& recipe,
                                                   std::string* error) const {
  const auto target_word = StringParameter(recipe, words::kTarget, error);
  if (!target_word) return std::nullopt;
  const auto target = TargetPrimaries(*target_word, error);
  if (!target) return std::nullopt;
  const auto transform = panel_.GamutMatrix(*target);
  if (!transform) *error = "degenerate target primaries";
  return transform;
}

std::optional<Json::Value> RecipeExpander::Pcc(const Json::Value& recipe,
                                               std::string* error) const {
  const auto saturation =
      OptionalDoubleParameter(recipe, words::kSaturation, kDefaultSaturation, error);
  if (!saturation) return std::nullopt;
  const Mat3 matrix = panel_.PccMatrix(*saturation);
  Json::Value section(Json::objectValue);
  section[keys::kEnable] = true;
  section[keys::kPccR] = PccChannel(matrix[0]);
  section[keys::kPccG] = PccChannel(matrix[1]);
  section[keys::kPccB] = PccChannel(matrix[2]);
  return section;
}

}  // namespace vexa::example
