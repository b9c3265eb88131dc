#include "tools/vexa_modes/svg_heat_map.h"

#include <algorithm>
#include <cmath>

#include "tools/vexa_modes/text_format.h"

namespace vexa::tools {
namespace {

constexpr double kGap = 14;     // between tiles, room for a tile's label
constexpr double kHeader = 24;  // panel title
constexpr double kScaleHeight = 36;

// White -> orange -> dark red: two linear segments.
struct Rgb {
  double r, g, b;
};
constexpr Rgb kLow{255, 255, 255}, kMid{255, 165, 0}, kHigh{140, 0, 0};

Rgb Mix(const Rgb& a, const Rgb& b, double t) {
  return {a.r + (b.r - a.r) * t, a.g + (b.g - a.g) * t, a.b + (b.b - a.b) * t};
}

}  // namespace

SvgHeatMap::SvgHeatMap(std::string title, std::string scale_label, std::vector<HeatTile> tiles)
    : title_(std::move(title)), scale_label_(std::move(scale_label)), tiles_(std::move(tiles)) {
  for (const HeatTile& tile : tiles_) {
    for (double v : tile.values) max_ = std::max(max_, v);
  }
}

std::string SvgHeatMap::Colour(double value, double max) {
  const double t = max > 0 ? std::clamp(value / max, 0.0, 1.0) : 0.0;
  const Rgb c = t < 0.5 ? Mix(kLow, kMid, t * 2) : Mix(kMid, kHigh, t * 2 - 1);
  return Format("#%02x%02x%02x", static_cast<unsigned>(std::lround(c.r)),
                static_cast<unsigned>(std::lround(c.g)), static_cast<unsigned>(std::lround(c.b)));
}

double SvgHeatMap::TileSize() const {
  size_t side = 0;
  for (const HeatTile& tile : tiles_) side = std::max(side, tile.side);
  return static_cast<double>(side) * kCell;
}

double SvgHeatMap::width() const {
  const size_t columns = std::min(kTilesPerRow, std::max<size_t>(tiles_.size(), 1));
  return static_cast<double>(columns) * (TileSize() + kGap);
}

double SvgHeatMap::height() const {
  const size_t rows = (tiles_.size() + kTilesPerRow - 1) / kTilesPerRow;
  return kHeader + static_cast<double>(rows) * (TileSize() + kGap) + kScaleHeight;
}

std::string SvgHeatMap::Render(double x, double y) const {
  std::string text = Format("<g class=\"heat-map\" transform=\"translate(%.1f %.1f)\">\n", x, y);
  text += "<text x=\"0\" y=\"14\" font-weight=\"bold\">" + XmlEscape(title_) + "</text>\n";
  const double tile_size = TileSize();
  for (size_t t = 0; t < tiles_.size(); ++t) {
    const HeatTile& tile = tiles_[t];
    const double left = static_cast<double>(t % kTilesPerRow) * (tile_size + kGap);
    const double top = kHeader + static_cast<double>(t / kTilesPerRow) * (tile_size + kGap);
    text += Format("<g class=\"tile\"><text x=\"%.1f\" y=\"%.1f\" font-size=\"9\">", left,
                   top + tile_size + 10) +
            XmlEscape(tile.label) + "</text>\n";
    for (size_t i = 0; i < tile.values.size() && i < tile.side * tile.side; ++i) {
      const double cx = left + static_cast<double>(i % tile.side) * kCell;
      const double cy = top + tile_size - static_cast<double>(i / tile.side + 1) * kCell;
      text += Format("<rect x=\"%.1f\" y=\"%.1f\" width=\"%.0f\" height=\"%.0f\" fill=\"%s\"/>\n",
                     cx, cy, kCell, kCell, Colour(tile.values[i], max_).c_str());
    }
    text += "</g>\n";
  }
  // Scale bar: ten steps from 0 to the largest value.
  const double scale_top = height() - kScaleHeight + 6;
  constexpr int kSteps = 10;
  for (int i = 0; i < kSteps; ++i) {
    text += Format("<rect x=\"%d\" y=\"%.1f\" width=\"16\" height=\"10\" fill=\"%s\"/>\n", i * 16,
                   scale_top, Colour(max_ * i / (kSteps - 1), max_).c_str());
  }
  text += Format("<text class=\"scale\" x=\"%d\" y=\"%.1f\">0 to %.0f ", kSteps * 16 + 6,
                 scale_top + 9, max_) +
          XmlEscape(scale_label_) + "</text>\n";
  return text + "</g>\n";
}

}  // namespace vexa::tools
