#include "tools/vexa_modes/svg_line_chart.h"

#include <algorithm>

#include "tools/vexa_modes/text_format.h"

namespace vexa::tools {
namespace {

constexpr int kTicks = 4;  // intervals per axis

}  // namespace

SvgLineChart::SvgLineChart(std::string title, std::string x_label, std::string y_label,
                           double x_max, double y_max)
    : title_(std::move(title)),
      x_label_(std::move(x_label)),
      y_label_(std::move(y_label)),
      x_max_(std::max(x_max, 1.0)),
      y_max_(std::max(y_max, 1.0)) {}

std::string SvgLineChart::Axes() const {
  const double right = kLeft + kPlotWidth, bottom = kTop + kPlotHeight;
  std::string text = Format(
      "<rect class=\"plot-area\" x=\"%.1f\" y=\"%.1f\" width=\"%.1f\" height=\"%.1f\" "
      "fill=\"none\" stroke=\"#888\"/>\n",
      kLeft, kTop, kPlotWidth, kPlotHeight);
  for (int i = 0; i <= kTicks; ++i) {
    const double xv = x_max_ * i / kTicks, yv = y_max_ * i / kTicks;
    text += Format("<text x=\"%.1f\" y=\"%.1f\" text-anchor=\"middle\">%.0f</text>\n", PixelX(xv),
                   bottom + 14, xv);
    text += Format("<text x=\"%.1f\" y=\"%.1f\" text-anchor=\"end\">%.0f</text>\n", kLeft - 4,
                   PixelY(yv) + 4, yv);
    text += Format("<line x1=\"%.1f\" y1=\"%.1f\" x2=\"%.1f\" y2=\"%.1f\" stroke=\"#eee\"/>\n",
                   kLeft, PixelY(yv), right, PixelY(yv));
  }
  text += Format("<text x=\"%.1f\" y=\"%.1f\" text-anchor=\"middle\">", kLeft + kPlotWidth / 2,
                 bottom + 30) +
          XmlEscape(x_label_) + "</text>\n";
  text += Format("<text x=\"%.1f\" y=\"%.1f\" transform=\"rotate(-90 %.1f %.1f)\" "
                 "text-anchor=\"middle\">",
                 12.0, kTop + kPlotHeight / 2, 12.0, kTop + kPlotHeight / 2) +
          XmlEscape(y_label_) + "</text>\n";
  text += Format("<line class=\"identity\" x1=\"%.1f\" y1=\"%.1f\" x2=\"%.1f\" y2=\"%.1f\" "
                 "stroke=\"#999\" stroke-dasharray=\"4 3\"/>\n",
                 PixelX(0), PixelY(0), PixelX(x_max_), PixelY(y_max_));
  return text;
}

std::string SvgLineChart::Legend() const {
  std::string text;
  double y = kTop + 10;
  for (const ChartSeries& series : series_) {
    const double x = kLeft + kPlotWidth + 10;
    text += Format("<line x1=\"%.1f\" y1=\"%.1f\" x2=\"%.1f\" y2=\"%.1f\" stroke=\"", x, y - 4,
                   x + 16, y - 4) +
            XmlEscape(series.colour) + "\" stroke-width=\"2\"/>\n";
    text += Format("<text x=\"%.1f\" y=\"%.1f\">", x + 20, y) + XmlEscape(series.label) +
            "</text>\n";
    y += 16;
  }
  return text;
}

std::string SvgLineChart::Render(double x, double y) const {
  std::string text = Format("<g class=\"line-chart\" transform=\"translate(%.1f %.1f)\">\n", x, y);
  text += Format("<text x=\"%.1f\" y=\"14\" font-weight=\"bold\">", kLeft) + XmlEscape(title_) +
          "</text>\n";
  text += Axes();
  for (const ChartSeries& series : series_) {
    std::string points;
    for (const auto& [px, py] : series.points) {
      if (!points.empty()) points += ' ';
      points += Format("%.2f,%.2f", PixelX(px), PixelY(py));
    }
    text += "<polyline class=\"curve\" data-label=\"" + XmlEscape(series.label) +
            "\" fill=\"none\" stroke=\"" + XmlEscape(series.colour) +
            "\" stroke-width=\"1.5\" points=\"" + points + "\"/>\n";
  }
  return text + Legend() + "</g>\n";
}

}  // namespace vexa::tools
