#include "tools/vexa_modes/mode_figures.h"

#include <algorithm>
#include <cmath>
#include <memory>

#include "formats/keys.h"
#include "tools/vexa_modes/svg_heat_map.h"
#include "tools/vexa_modes/svg_line_chart.h"
#include "tools/vexa_modes/text_format.h"

namespace vexa::tools {
namespace {

constexpr uint32_t kGamutTop = 4095;
constexpr uint32_t kGridStep = 256;
constexpr char kRed[] = "#d62728";
constexpr char kGreen[] = "#2ca02c";
constexpr char kBlue[] = "#1f77b4";

const char* EnabledText(bool enable) { return enable ? "" : " (disabled)"; }

// Smallest all-ones code (255, 1023, 4095, ...) that holds every entry: the table's full scale.
double FullScale(const GammaPostBlendConfig& config) {
  uint32_t top = 0;
  for (const auto* lut : {&config.lut_r, &config.lut_g, &config.lut_b}) {
    for (uint32_t v : *lut) top = std::max(top, v);
  }
  uint64_t scale = 255;
  while (scale < top) scale = scale * 2 + 1;
  return static_cast<double>(scale);
}

ChartSeries LutSeries(const char* label, const char* colour, const std::vector<uint32_t>& lut) {
  ChartSeries series{label, colour, {}};
  for (size_t i = 0; i < lut.size(); ++i) series.points.emplace_back(i, lut[i]);
  return series;
}

SvgFigure GammaFigure(const std::string& title, const char* block,
                      const GammaPostBlendConfig& config) {
  const size_t entries = std::max({config.lut_r.size(), config.lut_g.size(), config.lut_b.size()});
  SvgFigure figure(Format("%s: %s%s", title.c_str(), block, EnabledText(config.enable)), 1);
  auto chart = std::make_unique<SvgLineChart>(
      Format("%s, %zu entries per channel", block, entries), "input (entry)", "output (code)",
      entries > 0 ? static_cast<double>(entries - 1) : 1.0, FullScale(config));
  chart->AddSeries(LutSeries("red", kRed, config.lut_r));
  chart->AddSeries(LutSeries("green", kGreen, config.lut_g));
  chart->AddSeries(LutSeries("blue", kBlue, config.lut_b));
  figure.Add(std::move(chart));
  return figure;
}

// A ramp through the grid: which of the three input coordinates follow the level (the others 0).
struct Ramp {
  const char* name;
  bool c0, c1, c2;
};
constexpr Ramp kRamps[] = {
    {"grey", true, true, true},    {"red", true, false, false},  {"green", false, true, false},
    {"blue", false, false, true},  {"cyan", false, true, true},  {"magenta", true, false, true},
    {"yellow", true, true, false},
};

uint32_t EntryIndex(uint32_t k0, uint32_t k1, uint32_t k2) {
  return (k2 * kGamutGridLevels + k1) * kGamutGridLevels + k0;
}

SvgFigure GamutRampsFigure(const std::string& title, const GamutConfig& config) {
  SvgFigure figure(Format("%s: gamut ramps%s", title.c_str(), EnabledText(config.enable)), 4);
  for (const Ramp& ramp : kRamps) {
    ChartSeries out[3] = {{"out red", kRed, {}}, {"out green", kGreen, {}}, {"out blue", kBlue, {}}};
    for (uint32_t k = 0; k < kGamutGridLevels; ++k) {
      const GamutEntry& e = config.entries[EntryIndex(ramp.c0 ? k : 0, ramp.c1 ? k : 0,
                                                      ramp.c2 ? k : 0)];
      const double level = GamutGridLevel(k);
      out[0].points.emplace_back(level, e.out_0);
      out[1].points.emplace_back(level, e.out_1);
      out[2].points.emplace_back(level, e.out_2);
    }
    auto chart = std::make_unique<SvgLineChart>(Format("%s ramp", ramp.name), "input level",
                                                "output", kGamutTop, kGamutTop);
    for (ChartSeries& series : out) chart->AddSeries(std::move(series));
    figure.Add(std::move(chart));
  }
  return figure;
}

// The distance of each grid point's output from its input point, one tile per blue level.
SvgFigure GamutShiftFigure(const std::string& title, const GamutConfig& config) {
  std::vector<HeatTile> tiles;
  for (uint32_t k2 = 0; k2 < kGamutGridLevels; ++k2) {
    HeatTile tile{Format("blue %u", GamutGridLevel(k2)), kGamutGridLevels, {}};
    for (uint32_t k1 = 0; k1 < kGamutGridLevels; ++k1) {
      for (uint32_t k0 = 0; k0 < kGamutGridLevels; ++k0) {
        const GamutEntry& e = config.entries[EntryIndex(k0, k1, k2)];
        const double d0 = double(e.out_0) - GamutGridLevel(k0);
        const double d1 = double(e.out_1) - GamutGridLevel(k1);
        const double d2 = double(e.out_2) - GamutGridLevel(k2);
        tile.values.push_back(std::sqrt(d0 * d0 + d1 * d1 + d2 * d2));
      }
    }
    tiles.push_back(std::move(tile));
  }
  SvgFigure figure(Format("%s: gamut shift%s", title.c_str(), EnabledText(config.enable)), 1);
  figure.Add(std::make_unique<SvgHeatMap>(
      "distance of each grid point's output from its input (red across, green up)",
      "(12-bit codes)", std::move(tiles)));
  return figure;
}

// The payload's record when its name and length are those of `name` and `len`.
const void* RecordOf(const HwConfigPayload& payload, const char* name, uint32_t len) {
  if (payload.name != name || payload.config == nullptr || payload.config_size != len)
    return nullptr;
  return payload.config.get();
}

template <typename Record>
const Record* Find(const std::vector<HwConfigPayload>& payloads, const char* name, uint32_t len) {
  for (const HwConfigPayload& payload : payloads) {
    if (const void* record = RecordOf(payload, name, len))
      return static_cast<const Record*>(record);
  }
  return nullptr;
}

}  // namespace

uint32_t GamutGridLevel(uint32_t k) { return std::min(k * kGridStep, kGamutTop); }

std::vector<ModeFigure> ModeFigures(const std::string& mode_title,
                                    const std::vector<HwConfigPayload>& payloads) {
  std::vector<ModeFigure> figures;
  if (const auto* gc = Find<GammaPostBlendConfig>(payloads, keys::kPostBlendGC, kGammaConfigLen))
    figures.push_back({"gc", GammaFigure(mode_title, "GC", *gc)});
  if (const auto* igc = Find<GammaPostBlendConfig>(payloads, keys::kPostBlendIGC, kGammaConfigLen))
    figures.push_back({"igc", GammaFigure(mode_title, "IGC", *igc)});
  const auto* gamut = Find<GamutConfig>(payloads, keys::kPostBlendGamut, kGamutConfigLen);
  // The table is drawn only when it fills the grid; a shorter one has no ramps to follow.
  if (gamut != nullptr && gamut->num_entries == kGamutEntries) {
    figures.push_back({"gamut-ramps", GamutRampsFigure(mode_title, *gamut)});
    figures.push_back({"gamut-shift", GamutShiftFigure(mode_title, *gamut)});
  }
  return figures;
}

}  // namespace vexa::tools
