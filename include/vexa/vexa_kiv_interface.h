// Public interface of libvexa-json-mode-parser.
//
// A display service obtains one parser object through GetVexaKivInterface(2, 0), calls Init with
// the panel name, then any number of SetProperty / GetProperty / ProcessOps, then DeInit, and
// deletes the object through its virtual destructor. Every call carries its record in a
// VexaKivPayload envelope; the records below are owned by the caller.
//
// This header needs nothing but the C++17 standard library.
#ifndef VEXA_VEXA_KIV_INTERFACE_H_
#define VEXA_VEXA_KIV_INTERFACE_H_

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace vexa {

// ---------------------------------------------------------------------------------------------
// Envelope, properties and operations
// ---------------------------------------------------------------------------------------------

struct VexaKivPayload {
  uint32_t version;  // must be kVexaKivPayloadVersion for SetProperty and GetProperty
  uint32_t len;      // byte length of the record that payload points to (fixed per record type)
  uint32_t prop;     // a VexaKivProperty, read by SetProperty and GetProperty only
  void* payload;     // the typed record
};

constexpr uint32_t kVexaKivPayloadVersion = 24;

enum VexaKivProperty : uint32_t {
  kKivModesList = 1,                // get, ColorModeList
  kKivPostBlendGamutConfig = 6,     // set, PostBlendHwCaps
  kKivPostBlendGammaConfig = 7,     // set, PostBlendHwCaps
  kKivPostBlendInvGammaConfig = 8,  // set, PostBlendHwCaps
  kKivPbDitherHwConfig = 12,        // get, HwConfigOutputParams
};

enum VexaKivOps : uint32_t {
  kKivModeRenderIntent = 0,  // served by the parser
  kKivModeSwAssets = 1,      // served by the parser
  kKivPccMerge = 2,          // served by the colour-algorithm library
  kKivGamutMerge = 3,        // served by the colour-algorithm library
};

class VexaKivInterface {
 public:
  virtual ~VexaKivInterface() {}
  virtual int32_t Init(const std::string& panel_name) = 0;
  virtual int32_t DeInit() = 0;
  virtual int32_t SetProperty(const VexaKivPayload& payload) = 0;
  virtual int32_t GetProperty(VexaKivPayload* payload) = 0;
  virtual int32_t ProcessOps(VexaKivOps op, const VexaKivPayload& input,
                             VexaKivPayload* output) = 0;
};

// ---------------------------------------------------------------------------------------------
// Typed asset records: what HwConfigPayload::config points at, chosen by HwConfigPayload::name.
// Each begins with len (the length the display hardware layer knows) and enable.
// ---------------------------------------------------------------------------------------------

constexpr uint32_t kDitherMatrixCapacity = 16;

struct DitherConfig {  // "PostBlendDither", len 96
  uint32_t len;
  bool enable;
  uint32_t mode;  // bit 0: luma dithering, else interleaved
  uint32_t strength_g;
  uint32_t strength_r;
  uint32_t strength_b;
  uint32_t temporal_enable;
  uint32_t matrix_size;  // valid entries of matrix, at most kDitherMatrixCapacity
  uint32_t matrix[kDitherMatrixCapacity];
};

struct PaDitherConfig {  // "PostBlendPaDither", len 88
  uint32_t len;
  bool enable;
  uint32_t mode;  // always 0
  uint32_t strength;
  uint32_t offset_enable;
  uint32_t matrix_size;
  uint32_t matrix[kDitherMatrixCapacity];
};

struct DETuningConfig {  // "PostBlendDE", len 60
  uint32_t len;
  bool enable;
  uint32_t fill_marker;  // 1 when filled from JSON
  uint32_t flags;        // detail-enhancement feature bits
  int32_t sharp;
  uint16_t thr_quiet;
  uint16_t thr_dieout;
  uint16_t thr_low;
  uint16_t thr_high;
  uint16_t clip;
  uint16_t reserved16;
  uint32_t quality;       // 0 invalid, 1 low power, 2 medium, 3 high
  uint32_t content_type;  // 1 video, 2 graphics
  uint32_t de_blend;
  uint32_t de_lpf_high;
  uint32_t de_lpf_mid;
  uint32_t de_lpf_low;
  uint32_t reserved32;
};

struct GammaPostBlendConfig {  // "PostBlendIGC" and "PostBlendGC", len 88
  uint32_t len;
  bool enable;
  std::vector<uint32_t> lut_r;
  std::vector<uint32_t> lut_g;
  std::vector<uint32_t> lut_b;
  bool dither_enable;        // inverse gamma only
  uint32_t dither_strength;  // inverse gamma only
};

struct HdrConfig {  // "PostBlendHdrBlob", len 32; enable is never set
  uint32_t len;
  bool enable;
  std::string blob;
};

struct GameConfig {  // "PostBlendGameBlob", len 32
  uint32_t len;
  bool enable;
  std::string blob;
};

// 3D LUT: 17 levels per axis, entry i = 289 * k2 + 17 * k1 + k0 holds the input point
// (level k0, level k1, level k2) and its output.
constexpr uint32_t kGamutGridLevels = 17;
constexpr uint32_t kGamutEntries = kGamutGridLevels * kGamutGridLevels * kGamutGridLevels;

struct GamutEntry {
  uint32_t in_0;
  uint32_t in_1;
  uint32_t in_2;
  uint32_t out_0;
  uint32_t out_1;
  uint32_t out_2;
};

struct GamutConfig {  // "PostBlendGamut", len 117936
  uint32_t len;
  bool enable;
  uint32_t reserved0;
  uint32_t reserved1;
  uint32_t grid_mode;    // always 1
  uint32_t num_entries;  // valid entries, at most kGamutEntries
  GamutEntry entries[kGamutEntries];
};

// Polynomial colour correction: out = c + r*R + g*G + b*B + rr*R*R + gg*G*G + bb*B*B + rg*R*G
// + gb*G*B + rb*R*B + rgb*R*G*B, one polynomial per output channel.
struct pcc_coeff {
  double c, r, g, b, rr, gg, bb, rg, gb, rb, rgb;
};

struct pcc_coeff_data {
  uint32_t reserved;  // always 0
  pcc_coeff red;
  pcc_coeff green;
  pcc_coeff blue;
};

struct PccConfig {  // "PostBlendPCC", len 280
  uint32_t len;
  bool enable;
  pcc_coeff_data coeffs;
};

// Picture adjustment ("PostBlendPa", len 15752). After len and enable: the feature-flag word ops
// (kPa* bits below), a reserved 64-bit word, then the global adjustments, the three memory-colour
// regions (skin, sky, foliage) and the six-zone section. Comments name the JSON member of each
// field. Flags stored as uint32_t hold 0 or 1.
constexpr uint32_t kPaSixZoneEntries = 384;

enum PaFeatureBits : uint32_t {
  kPaGlobal = 0x1,                  // a global value is non-zero
  kPaMemColHueProtect = 0x2,        // some region's "hue" protects
  kPaMemColSatProtect = 0x4,        // some region's "sat" protects
  kPaMemColValProtect = 0x8,        // some region's "val" protects
  kPaMemColContrastProtect = 0x10,  // some region has "protectContrast"
  kPaMemColSkin = 0x20,             // "MemColSkin" enabled
  kPaMemColSky = 0x40,              // "MemColSky" enabled
  kPaMemColFoliage = 0x80,          // "MemColFol" enabled
  kPaSixZone = 0x100,               // "SixZone" enabled
  kPaMemColSixZoneProtect = 0x200,  // some region has "protectVsSixZone"
  kPaMemColBlendDisable = 0x400,    // some region has "blendingEnable" false
};

// Trapezoid edge type of a range: bit 0 set for a sloped left edge, bit 1 for a sloped right
// edge ("SLOPE"); a clear bit is a step ("STEP").
constexpr uint32_t kPaEdgeLeftSlope = 0x1;
constexpr uint32_t kPaEdgeRightSlope = 0x2;

struct PaGlobalAdjust {  // top-level members of the PA section
  int32_t hue;           // "hue"
  float sat;             // "sat"
  float val;             // "val"
  float cont;            // "cont"
  float sat_thresh;      // "satThresh"
};

struct PaMemColHue {  // "hue" object of a memory-colour region
  int32_t adj;        // "adj"
  int32_t min;        // "min"
  int32_t max;        // "max"
  uint32_t mid;       // "mid"
  uint32_t protect;   // "protect"
};

struct PaMemColRange {           // "sat" or "val" object of a memory-colour region
  float adj;                     // "adj"
  float min;                     // "min"
  float max;                     // "max"
  uint32_t mid;                  // "mid"
  uint32_t protect;              // "protect"
  uint32_t trapezoid_edge_type;  // "trapezoidEdgeLeft" / "trapezoidEdgeRight"
};

struct PaMemColRegion {          // "MemColSkin", "MemColSky" or "MemColFol"
  uint32_t enable;               // "enable"
  uint32_t protect_contrast;     // "protectContrast"
  uint32_t protect_vs_six_zone;  // "protectVsSixZone"
  uint32_t blending_enable;      // "blendingEnable"
  PaMemColHue hue;               // "hue"
  PaMemColRange sat;             // "sat"
  PaMemColRange val;             // "val"
};

struct PaSixZoneEntry {  // element i of each "SixZone" curve
  uint32_t hue;          // "hueCurve"
  uint32_t sat;          // "satCurve"
  uint32_t val;          // "valCurve"
  uint32_t sat_mid;      // "satCurveMid"
  uint32_t sat_high;     // "satCurveHigh"
};

struct PaSixZoneThresholds {     // "SixZoneThresholds"
  int32_t sat_min;               // "sat": "min"
  int32_t sat_max;               // "sat": "max"
  uint32_t sat_offset;           // "sat": "offset"
  uint32_t trapezoid_edge_type;  // "sat": "trapezoidEdgeLeft" / "trapezoidEdgeRight"
  uint32_t sv_enable;            // "sat": "svEnable"
  uint32_t sat_low;              // "satLow"
  uint32_t sat_mid;              // "satMid"
  uint32_t sat_high;             // "satHigh"
};

struct PaSixZone {       // "SixZone" and "SixZoneThresholds"
  uint32_t enable;       // "enable"
  uint32_t num_entries;  // "numEntries": kPaSixZoneEntries once read, 0 when absent
  PaSixZoneEntry entries[kPaSixZoneEntries];
  PaSixZoneThresholds thresholds;
};

struct PaConfig {
  uint32_t len;
  bool enable;                  // exactly when ops is non-zero
  uint32_t ops;                 // PaFeatureBits
  uint64_t reserved;            // always 0
  PaGlobalAdjust global;
  PaMemColRegion skin;          // "MemColSkin"
  PaMemColRegion sky;           // "MemColSky"
  PaMemColRegion foliage;       // "MemColFol"
  PaSixZone six_zone;
  uint8_t reserved_tail[7736];  // always 0: pads the record to the length the service reads
};

// Byte lengths that the display service knows for each record (HwConfigPayload::config_size).
constexpr uint32_t kDitherConfigLen = 96;
constexpr uint32_t kPaDitherConfigLen = 88;
constexpr uint32_t kDETuningConfigLen = 60;
constexpr uint32_t kGammaConfigLen = 88;
constexpr uint32_t kHdrConfigLen = 32;
constexpr uint32_t kGameConfigLen = 32;
constexpr uint32_t kGamutConfigLen = 117936;
constexpr uint32_t kPccConfigLen = 280;
constexpr uint32_t kPaConfigLen = 15752;

static_assert(sizeof(DitherConfig) == kDitherConfigLen, "DitherConfig layout");
static_assert(sizeof(PaDitherConfig) == kPaDitherConfigLen, "PaDitherConfig layout");
static_assert(sizeof(DETuningConfig) == kDETuningConfigLen, "DETuningConfig layout");
static_assert(sizeof(GamutEntry) == 24, "GamutEntry layout");
static_assert(sizeof(GamutConfig) == kGamutConfigLen, "GamutConfig layout");
static_assert(offsetof(GamutConfig, reserved0) == 8 && offsetof(GamutConfig, grid_mode) == 16 &&
                  offsetof(GamutConfig, num_entries) == 20 && offsetof(GamutConfig, entries) == 24,
              "GamutConfig offsets");
static_assert(sizeof(pcc_coeff) == 88, "pcc_coeff layout");
static_assert(sizeof(pcc_coeff_data) == 272, "pcc_coeff_data layout");
static_assert(offsetof(pcc_coeff_data, red) == 8 && offsetof(pcc_coeff_data, green) == 96 &&
                  offsetof(pcc_coeff_data, blue) == 184,
              "pcc_coeff_data offsets");
static_assert(sizeof(PccConfig) == kPccConfigLen, "PccConfig layout");
static_assert(offsetof(PccConfig, coeffs) == 8, "PccConfig offsets");
static_assert(sizeof(PaMemColRegion) == 84 && sizeof(PaSixZone) == 7720, "PA section layout");
static_assert(offsetof(PaConfig, ops) == 8 && offsetof(PaConfig, reserved) == 16 &&
                  offsetof(PaConfig, global) == 24 && offsetof(PaConfig, skin) == 44 &&
                  offsetof(PaConfig, six_zone) == 296 && offsetof(PaConfig, reserved_tail) == 8016,
              "PaConfig offsets");
static_assert(sizeof(PaConfig) == kPaConfigLen, "PaConfig layout");

// ---------------------------------------------------------------------------------------------
// Boundary records
// ---------------------------------------------------------------------------------------------

// One asset's hardware configuration for the selected mode.
struct HwConfigPayload {
  uint32_t size;  // always kHwConfigPayloadSize
  std::string name;
  std::shared_ptr<void> config;  // the typed record named by name
  uint32_t config_size;          // the typed record's len
};

constexpr uint32_t kHwConfigPayloadSize = 56;

struct ModeRenderInputParams {  // input of kKivModeRenderIntent and kKivModeSwAssets
  uint32_t version;             // kModeRenderInputParamsVersion
  int32_t gamut;
  int32_t gamma;
  int32_t intent;
  std::vector<std::string> hw_assets;
};

struct HwConfigOutputParams {  // output of both ops and of kKivPbDitherHwConfig
  uint32_t version;            // kHwConfigOutputParamsVersion
  std::vector<HwConfigPayload> payloads;
};

struct ColorMode {
  int32_t gamut;
  int32_t gamma;
  int32_t intent;
  std::vector<std::string> hw_assets;
  std::string render_intent_name;
};

struct ColorModeList {  // kKivModesList
  uint32_t version;     // kColorModeListVersion
  std::vector<ColorMode> modes;
};

struct PostBlendHwCaps {  // kKivPostBlendGamutConfig, kKivPostBlendGammaConfig, kKivPostBlendInvGammaConfig
  uint32_t config_size;
  uint32_t num_of_entries;
  uint32_t hw_param;
  std::vector<std::tuple<std::string, bool, std::pair<int64_t, int64_t>>> properties;
};

// Record versions and the envelope lengths that go with them.
constexpr uint32_t kModeRenderInputParamsVersion = 2912;
constexpr uint32_t kModeRenderInputParamsLen = 2912;
constexpr uint32_t kHwConfigOutputParamsVersion = 32;
constexpr uint32_t kHwConfigOutputParamsLen = 32;
constexpr uint32_t kColorModeListVersion = 96;
constexpr uint32_t kColorModeListLen = 32;
constexpr uint32_t kPostBlendHwCapsLen = 40;

}  // namespace vexa

// The library's one exported symbol: a new, uninitialised parser for interface version 2.0,
// null for any other version. The caller owns the object.
extern "C" vexa::VexaKivInterface* GetVexaKivInterface(int32_t major, int32_t minor);

// The colour-algorithm library ("libvexa-algo.so") exports a factory of the same shape.
extern "C" vexa::VexaKivInterface* GetVexaAlgoInterface(int32_t major, int32_t minor);

#endif  // VEXA_VEXA_KIV_INTERFACE_H_
