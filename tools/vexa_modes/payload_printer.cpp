#include "tools/vexa_modes/payload_printer.h"

#include <algorithm>
#include <string>
#include <vector>

#include "formats/keys.h"
#include "tools/vexa_modes/text_format.h"

namespace vexa::tools {
namespace {

constexpr char kIndent[] = "    ";
constexpr size_t kBlobPreviewLength = 60;

// Entry index of grid point (k0, k1, k2): the first coordinate varies fastest.
constexpr uint32_t GridIndex(uint32_t k0, uint32_t k1, uint32_t k2) {
  return (k2 * kGamutGridLevels + k1) * kGamutGridLevels + k0;
}
constexpr uint32_t kTop = kGamutGridLevels - 1;
constexpr uint32_t kMid = kGamutGridLevels / 2;

// The gamut entries printed: the eight corners of the grid and its centre.
struct GamutSample {
  const char* name;
  uint32_t index;
};
const GamutSample kGamutSamples[] = {
    {"black", GridIndex(0, 0, 0)},         {"red", GridIndex(kTop, 0, 0)},
    {"green", GridIndex(0, kTop, 0)},      {"yellow", GridIndex(kTop, kTop, 0)},
    {"blue", GridIndex(0, 0, kTop)},       {"magenta", GridIndex(kTop, 0, kTop)},
    {"cyan", GridIndex(0, kTop, kTop)},    {"white", GridIndex(kTop, kTop, kTop)},
    {"grey", GridIndex(kMid, kMid, kMid)},
};

void Line(std::ostream& out, const std::string& text) { out << kIndent << text << '\n'; }

std::string TableSummary(const char* label, const std::vector<uint32_t>& table) {
  if (table.empty()) return Format("%s: empty", label);
  return Format("%s: %zu entries, first %u, middle %u, last %u", label, table.size(), table.front(),
                table[table.size() / 2], table.back());
}

std::string MatrixText(const uint32_t* matrix, uint32_t size) {
  const uint32_t shown = std::min(size, kDitherMatrixCapacity);
  std::vector<std::string> values;
  for (uint32_t i = 0; i < shown; ++i) values.push_back(std::to_string(matrix[i]));
  return Format("matrix (%u): %s", size, values.empty() ? "-" : Join(values, " ").c_str());
}

void PrintGammaTables(std::ostream& out, const GammaPostBlendConfig& config) {
  Line(out, Format("enable %d", config.enable));
  Line(out, TableSummary("lut_r", config.lut_r));
  Line(out, TableSummary("lut_g", config.lut_g));
  Line(out, TableSummary("lut_b", config.lut_b));
}

void PrintGamma(std::ostream& out, const void* record) {
  PrintGammaTables(out, *static_cast<const GammaPostBlendConfig*>(record));
}

void PrintInverseGamma(std::ostream& out, const void* record) {
  const auto& config = *static_cast<const GammaPostBlendConfig*>(record);
  PrintGammaTables(out, config);
  Line(out, Format("dither_enable %d, dither_strength %u", config.dither_enable,
                   config.dither_strength));
}

void PrintGamut(std::ostream& out, const void* record) {
  const auto& config = *static_cast<const GamutConfig*>(record);
  Line(out, Format("enable %d, grid_mode %u, num_entries %u", config.enable, config.grid_mode,
                   config.num_entries));
  const uint32_t valid = std::min(config.num_entries, kGamutEntries);
  for (const GamutSample& sample : kGamutSamples) {
    if (sample.index >= valid) continue;
    const GamutEntry& e = config.entries[sample.index];
    const uint32_t k0 = sample.index % kGamutGridLevels;
    const uint32_t k1 = sample.index / kGamutGridLevels % kGamutGridLevels;
    const uint32_t k2 = sample.index / (kGamutGridLevels * kGamutGridLevels);
    Line(out, Format("%-7s entry %4u grid (%2u,%2u,%2u): in (%4u,%4u,%4u) out (%4u,%4u,%4u)",
                     sample.name, sample.index, k0, k1, k2, e.in_0, e.in_1, e.in_2, e.out_0,
                     e.out_1, e.out_2));
  }
}

std::string CoefficientsText(const char* channel, const pcc_coeff& c) {
  return Format("%-5s c %g, r %g, g %g, b %g, rr %g, gg %g, bb %g, rg %g, gb %g, rb %g, rgb %g",
                channel, c.c, c.r, c.g, c.b, c.rr, c.gg, c.bb, c.rg, c.gb, c.rb, c.rgb);
}

void PrintPcc(std::ostream& out, const void* record) {
  const auto& config = *static_cast<const PccConfig*>(record);
  Line(out, Format("enable %d", config.enable));
  Line(out, CoefficientsText("red", config.coeffs.red));
  Line(out, CoefficientsText("green", config.coeffs.green));
  Line(out, CoefficientsText("blue", config.coeffs.blue));
}

std::string RegionText(const char* name, const PaMemColRegion& region) {
  return Format("%s: enable %u, hue adj %d, sat adj %g, val adj %g", name, region.enable,
                region.hue.adj, region.sat.adj, region.val.adj);
}

void PrintPa(std::ostream& out, const void* record) {
  const auto& config = *static_cast<const PaConfig*>(record);
  Line(out, Format("enable %d, ops 0x%03X", config.enable, config.ops));
  Line(out,
       Format("global: hue %d, sat %g, val %g, cont %g, sat_thresh %g", config.global.hue,
              config.global.sat, config.global.val, config.global.cont, config.global.sat_thresh));
  Line(out, RegionText("skin", config.skin));
  Line(out, RegionText("sky", config.sky));
  Line(out, RegionText("foliage", config.foliage));
  Line(out, Format("six zone: enable %u, num_entries %u", config.six_zone.enable,
                   config.six_zone.num_entries));
}

void PrintDither(std::ostream& out, const void* record) {
  const auto& config = *static_cast<const DitherConfig*>(record);
  Line(out, Format("enable %d, mode %u (%s), temporal_enable %u", config.enable, config.mode,
                   (config.mode & 1u) ? "luma" : "interleave", config.temporal_enable));
  Line(out, Format("strength r %u, g %u, b %u", config.strength_r, config.strength_g,
                   config.strength_b));
  Line(out, MatrixText(config.matrix, config.matrix_size));
}

void PrintPaDither(std::ostream& out, const void* record) {
  const auto& config = *static_cast<const PaDitherConfig*>(record);
  Line(out, Format("enable %d, mode %u, strength %u, offset_enable %u", config.enable, config.mode,
                   config.strength, config.offset_enable));
  Line(out, MatrixText(config.matrix, config.matrix_size));
}

void PrintDe(std::ostream& out, const void* record) {
  const auto& config = *static_cast<const DETuningConfig*>(record);
  Line(out, Format("enable %d, fill_marker %u, flags 0x%X, sharp %d", config.enable,
                   config.fill_marker, config.flags, config.sharp));
  Line(out,
       Format("thr_quiet %u, thr_dieout %u, thr_low %u, thr_high %u, clip %u", config.thr_quiet,
              config.thr_dieout, config.thr_low, config.thr_high, config.clip));
  Line(out, Format("quality %u, content_type %u, de_blend %u, de_lpf high %u mid %u low %u",
                   config.quality, config.content_type, config.de_blend, config.de_lpf_high,
                   config.de_lpf_mid, config.de_lpf_low));
}

void PrintBlob(std::ostream& out, bool enable, const std::string& blob) {
  Line(out, Format("enable %d, blob %zu bytes: \"%s\"", enable, blob.size(),
                   Abbreviate(blob, kBlobPreviewLength).c_str()));
}

void PrintHdr(std::ostream& out, const void* record) {
  const auto& config = *static_cast<const HdrConfig*>(record);
  PrintBlob(out, config.enable, config.blob);
}

void PrintGame(std::ostream& out, const void* record) {
  const auto& config = *static_cast<const GameConfig*>(record);
  PrintBlob(out, config.enable, config.blob);
}

// Which record a payload name carries, the length the record must declare, and its printer.
struct Decoder {
  const char* name;
  uint32_t record_len;
  void (*print)(std::ostream&, const void*);
};

const Decoder kDecoders[] = {
    {keys::kPostBlendIGC, kGammaConfigLen, PrintInverseGamma},
    {keys::kPostBlendGC, kGammaConfigLen, PrintGamma},
    {keys::kPostBlendGamut, kGamutConfigLen, PrintGamut},
    {keys::kPostBlendPCC, kPccConfigLen, PrintPcc},
    {keys::kPostBlendPa, kPaConfigLen, PrintPa},
    {keys::kPostBlendPaDither, kPaDitherConfigLen, PrintPaDither},
    {keys::kPostBlendDither, kDitherConfigLen, PrintDither},
    {keys::kPostBlendDE, kDETuningConfigLen, PrintDe},
    {keys::kPostBlendHdrBlob, kHdrConfigLen, PrintHdr},
    {keys::kPostBlendGameBlob, kGameConfigLen, PrintGame},
};

const Decoder* FindDecoder(const std::string& name) {
  for (const Decoder& decoder : kDecoders) {
    if (name == decoder.name) return &decoder;
  }
  return nullptr;
}

}  // namespace

void PrintPayload(std::ostream& out, const HwConfigPayload& payload) {
  out << "  " << payload.name << Format(" (config_size %u)", payload.config_size) << '\n';
  const Decoder* decoder = FindDecoder(payload.name);
  if (decoder == nullptr) {
    Line(out, "no decoder for this payload name");
  } else if (payload.config == nullptr) {
    Line(out, "no record");
  } else if (payload.config_size != decoder->record_len) {
    // A record of another length is not the type the name promises: do not read it.
    Line(out, Format("record length %u, expected %u: not decoded", payload.config_size,
                     decoder->record_len));
  } else {
    decoder->print(out, payload.config.get());
  }
}

}  // namespace vexa::tools
