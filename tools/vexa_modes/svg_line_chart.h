// A line chart panel: axes from 0 to the given maxima with five labelled ticks each, the identity
// diagonal as a dashed line (the curve of a block that changes nothing), and one polyline per
// series with a legend.
#ifndef VEXA_TOOLS_VEXA_MODES_SVG_LINE_CHART_H_
#define VEXA_TOOLS_VEXA_MODES_SVG_LINE_CHART_H_

#include <string>
#include <utility>
#include <vector>

#include "tools/vexa_modes/svg_panel.h"

namespace vexa::tools {

struct ChartSeries {
  std::string label;
  std::string colour;
  std::vector<std::pair<double, double>> points;  // (x, y) in data units
};

class SvgLineChart : public SvgPanel {
 public:
  // Plot area size in pixels; the panel adds room for labels around it.
  static constexpr double kPlotWidth = 260;
  static constexpr double kPlotHeight = 200;
  static constexpr double kLeft = 50;
  static constexpr double kTop = 24;

  SvgLineChart(std::string title, std::string x_label, std::string y_label, double x_max,
               double y_max);

  void AddSeries(ChartSeries series) { series_.push_back(std::move(series)); }

  double width() const override { return kLeft + kPlotWidth + 90; }
  double height() const override { return kTop + kPlotHeight + 40; }
  std::string Render(double x, double y) const override;

  // Pixel position of a data point within the panel.
  double PixelX(double value) const { return kLeft + value / x_max_ * kPlotWidth; }
  double PixelY(double value) const { return kTop + (1 - value / y_max_) * kPlotHeight; }

 private:
  std::string Axes() const;
  std::string Legend() const;

  std::string title_, x_label_, y_label_;
  double x_max_, y_max_;
  std::vector<ChartSeries> series_;
};

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_VEXA_MODES_SVG_LINE_CHART_H_
