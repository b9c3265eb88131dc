#include "assets/hw_asset_pcc.h"

#include <cstddef>

namespace vexa {
namespace {

constexpr const char* kLogLabel = HwAssetPCC::kLogLabel;

// Which clip range a coefficient falls under.
enum CoeffGroup { kConstantTerm, kLinearTerm, kQuadraticTerm, kCubicTerm };

struct CoeffField {
  const char* key;  // JSON member, also the name in the clip information line
  double pcc_coeff::*member;
  CoeffGroup group;
};

// In the order the coefficients are read, written and clipped.
constexpr CoeffField kCoeffFields[] = {
    {keys::kPccCoeffC, &pcc_coeff::c, kConstantTerm},     {keys::kPccCoeffR, &pcc_coeff::r, kLinearTerm},
    {keys::kPccCoeffG, &pcc_coeff::g, kLinearTerm},       {keys::kPccCoeffB, &pcc_coeff::b, kLinearTerm},
    {keys::kPccCoeffRR, &pcc_coeff::rr, kQuadraticTerm},  {keys::kPccCoeffGG, &pcc_coeff::gg, kQuadraticTerm},
    {keys::kPccCoeffBB, &pcc_coeff::bb, kQuadraticTerm},  {keys::kPccCoeffRG, &pcc_coeff::rg, kQuadraticTerm},
    {keys::kPccCoeffGB, &pcc_coeff::gb, kQuadraticTerm},  {keys::kPccCoeffRB, &pcc_coeff::rb, kQuadraticTerm},
    {keys::kPccCoeffRGB, &pcc_coeff::rgb, kCubicTerm},
};

struct ChannelField {
  const char* key;   // JSON member
  const char* name;  // name in the clip information line
  pcc_coeff pcc_coeff_data::*member;
};

constexpr ChannelField kChannels[] = {
    {keys::kPccR, "red", &pcc_coeff_data::red},
    {keys::kPccG, "green", &pcc_coeff_data::green},
    {keys::kPccB, "blue", &pcc_coeff_data::blue},
};

// The record exchanged with the algorithm library as input: its length, then both operands.
struct PccMergeInput {
  uint32_t len;
  pcc_coeff_data left;
  pcc_coeff_data right;
};
static_assert(sizeof(PccMergeInput) == HwAssetPCC::kMergeInputLen, "PCC merge input layout");
static_assert(offsetof(PccMergeInput, left) == 8 && offsetof(PccMergeInput, right) == 280,
              "PCC merge input offsets");

// Clamps one value into [min, max]; strict comparisons keep the limits themselves and NaN.
bool Clip(double& value, const HwAssetPCC::ClipRange& range) {
  if (value < range.min) {
    VKR_LOGI(2, "PCC Merge Info: Coefficient value [%f] clipped to min[%f]", value, range.min);
    value = range.min;
    return true;
  }
  if (value > range.max) {
    VKR_LOGI(2, "PCC Merge Info: Coefficient value [%f] clipped to max[%f]", value, range.max);
    value = range.max;
    return true;
  }
  return false;
}

// Reads the three channel objects of `reader`'s section; a wrong type refuses the section.
void ReadCoeffData(JsonFieldReader& reader, pcc_coeff_data* data) {
  data->reserved = 0;
  for (const ChannelField& channel : kChannels) {
    const Json::Value& channel_json = reader.Object(channel.key);
    ScopedJsonContext where(JsonScope::kMember, channel.key,
                            std::string("channel \"") + channel.key + "\"");
    JsonFieldReader channel_reader(channel_json, kLogLabel);
    pcc_coeff& coeff = data->*channel.member;
    for (const CoeffField& field : kCoeffFields) coeff.*field.member = channel_reader.Double(field.key);
    if (!channel_reader.ok()) reader.Refuse();
  }
}

}  // namespace

HwAssetPCC::HwAssetPCC(uint32_t asset_version, std::shared_ptr<HwAssetsCommonData> common)
    : HwAssetBase(asset_version, std::move(common)), tuning_() {
  tuning_.len = kPccConfigLen;
}

HwAssetPCC::HwAssetPCC(VexaKivInterface* algo, kiv_mode_merge_caps::KivPostBlendPCCMergeOp op,
                       std::shared_ptr<HwAssetPCC> left, std::shared_ptr<HwAssetPCC> right)
    : HwAssetPCC(0, nullptr) {
  if (op != kiv_mode_merge_caps::KivPostBlendPCCMergeOp::kMergeOperand) {
    MergeFromOperands(static_cast<uint32_t>(op), left, right);
    return;
  }
  if (left && right && algo != nullptr) {
    Merge(algo, left->record_, right->tuning_);
    return;
  }
  VKR_LOGE("PCC Merge Error: Source (either left or right operand) is empty or vexa_algo_intf is "
           "nullptr: left(%s), right(%s), vexa_algo_intf(%s)",
           left ? "ok" : "null", right ? "ok" : "null", algo != nullptr ? "ok" : "null");
  SetIdentity();
}

void HwAssetPCC::SetIdentity() {
  record_.enable = false;
  record_.coeffs = pcc_coeff_data();
  record_.coeffs.red.r = 1.0;
  record_.coeffs.green.g = 1.0;
  record_.coeffs.blue.b = 1.0;
}

void HwAssetPCC::SetTuningConfig(const PccConfig& record) { CopyAfterLen(record, &tuning_); }

ReadResult HwAssetPCC::ReadJson(JsonFieldReader& reader, PccConfig& fresh) {
  ReadCoeffData(reader, &fresh.coeffs);
  const Json::Value& tuning_json = reader.Object(keys::kPccTuning);
  PccConfig tuning = PccConfig();
  tuning.len = kPccConfigLen;
  if (!tuning_json.isNull()) {
    ScopedJsonContext where(JsonScope::kMember, keys::kPccTuning,
                            std::string("\"") + keys::kPccTuning + "\"");
    JsonFieldReader tuning_reader(tuning_json, kLogLabel);
    ReadCoeffData(tuning_reader, &tuning.coeffs);
    if (!tuning_reader.ok()) reader.Refuse();
    tuning.enable = true;
  }
  if (!reader.ok()) return ReadResult::kIdentity;
  if (tuning.enable) tuning_ = tuning;
  return ReadResult::kStore;
}

void HwAssetPCC::WriteJson(Json::Value& json) const {
  for (const ChannelField& channel : kChannels) {
    Json::Value& channel_json = json[channel.key];
    const pcc_coeff& coeff = record_.coeffs.*channel.member;
    for (const CoeffField& field : kCoeffFields) channel_json[field.key] = coeff.*field.member;
  }
}

void HwAssetPCC::Merge(VexaKivInterface* algo, PccConfig& left, PccConfig& right) {
  if (ClipPccCoeffData(left.coeffs)) {
    VKR_LOGI(2, "PCC Merge Info: Left PCC had an out of range coefficient and has been clipped");
  }
  if (ClipPccCoeffData(right.coeffs)) {
    VKR_LOGI(2, "PCC Merge Info: Right PCC had an out of range coefficient and has been clipped");
  }
  PccMergeInput input = PccMergeInput();
  input.len = kMergeInputLen;
  input.left = left.coeffs;
  input.right = right.coeffs;
  PccConfig output = PccConfig();
  output.len = kMergeOutputLen;
  const VexaKivPayload in_payload = {0, kMergeInputLen, 0, &input};
  VexaKivPayload out_payload = {0, kMergeOutputLen, 0, &output};
  if (algo->ProcessOps(kKivPccMerge, in_payload, &out_payload) != 0) {
    VKR_LOGE("Failed to process kKivPccMerge");
    SetIdentity();
    return;
  }
  if (ClipPccCoeffData(output.coeffs)) {
    VKR_LOGI(2, "PCC Merge Info: Output PCC had an out of range coefficient and has been clipped");
  }
  record_.coeffs = output.coeffs;
  record_.enable = true;
}

bool HwAssetPCC::ClipPccCoeffData(pcc_coeff_data& data) {
  bool clipped = false;
  for (const ChannelField& channel : kChannels) {
    if (!ClipPccCoeffs(data.*channel.member)) continue;
    VKR_LOGI(2, "PCC Merge Info: Coefficient(s) from %s channel PCC out of valid range and clipped",
             channel.name);
    clipped = true;
  }
  return clipped;
}

bool HwAssetPCC::ClipPccCoeffs(pcc_coeff& coeff) {
  const ClipRange* const ranges[] = {&clip_constant_, &clip_linear_, &clip_quadratic_, &clip_cubic_};
  bool clipped = false;
  for (const CoeffField& field : kCoeffFields) {
    if (!Clip(coeff.*field.member, *ranges[field.group])) continue;
    VKR_LOGI(2, "PCC Merge Info: Coefficient '%s' is out of valid range and has been clipped", field.key);
    clipped = true;
  }
  return clipped;
}

}  // namespace vexa
