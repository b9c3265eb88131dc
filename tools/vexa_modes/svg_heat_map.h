// A heat map panel: square tiles of cells side by side, each cell coloured from white (0) through
// orange to dark red (the largest value), with a scale bar naming that largest value.
#ifndef VEXA_TOOLS_VEXA_MODES_SVG_HEAT_MAP_H_
#define VEXA_TOOLS_VEXA_MODES_SVG_HEAT_MAP_H_

#include <string>
#include <vector>

#include "tools/vexa_modes/svg_panel.h"

namespace vexa::tools {

struct HeatTile {
  std::string label;
  size_t side = 0;             // cells per row and per column
  std::vector<double> values;  // side * side values, row by row, the first row at the bottom
};

class SvgHeatMap : public SvgPanel {
 public:
  static constexpr double kCell = 6;
  static constexpr size_t kTilesPerRow = 6;

  SvgHeatMap(std::string title, std::string scale_label, std::vector<HeatTile> tiles);

  double width() const override;
  double height() const override;
  std::string Render(double x, double y) const override;

  // The colour of `value` on the 0..max scale, as "#rrggbb".
  static std::string Colour(double value, double max);
  double max_value() const { return max_; }

 private:
  double TileSize() const;

  std::string title_, scale_label_;
  std::vector<HeatTile> tiles_;
  double max_ = 0;
};

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_VEXA_MODES_SVG_HEAT_MAP_H_
