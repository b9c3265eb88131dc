#include "tools/vexa_modes/svg_figure.h"

#include <algorithm>

#include "tools/vexa_modes/text_format.h"

namespace vexa::tools {
namespace {

constexpr double kMargin = 10;
constexpr double kTitleHeight = 30;
constexpr double kMinWidth = 400;

}  // namespace

SvgFigure::Placement SvgFigure::Layout() const {
  // Each row is as tall as its tallest panel; each column as wide as its widest.
  const size_t columns = std::max<size_t>(1, std::min(columns_, panels_.size()));
  std::vector<double> column_widths(columns, 0);
  std::vector<double> row_heights((panels_.size() + columns - 1) / columns, 0);
  for (size_t i = 0; i < panels_.size(); ++i) {
    column_widths[i % columns] = std::max(column_widths[i % columns], panels_[i]->width());
    row_heights[i / columns] = std::max(row_heights[i / columns], panels_[i]->height());
  }
  Placement placement;
  double y = kTitleHeight;
  for (size_t i = 0; i < panels_.size(); ++i) {
    if (i > 0 && i % columns == 0) y += row_heights[i / columns - 1] + kMargin;
    double x = kMargin;
    for (size_t column = 0; column < i % columns; ++column) x += column_widths[column] + kMargin;
    placement.offsets.emplace_back(x, y);
  }
  if (!row_heights.empty()) y += row_heights.back() + kMargin;
  placement.width = kMargin;
  for (double w : column_widths) placement.width += w + kMargin;
  placement.width = std::max(placement.width, kMinWidth);
  placement.height = y;
  return placement;
}

std::string SvgFigure::Render(double x, double y) const {
  const Placement placement = Layout();
  const double w = placement.width, h = placement.height;
  std::string text =
      Format("<svg xmlns=\"http://www.w3.org/2000/svg\" x=\"%.0f\" y=\"%.0f\" width=\"%.0f\" "
             "height=\"%.0f\" viewBox=\"0 0 %.0f %.0f\" font-family=\"sans-serif\" "
             "font-size=\"11\">\n",
             x, y, w, h, w, h);
  text += "<title>" + XmlEscape(title_) + "</title>\n";
  text += Format("<rect width=\"%.0f\" height=\"%.0f\" fill=\"white\"/>\n", w, h);
  text += Format("<text x=\"%.0f\" y=\"20\" font-size=\"15\" font-weight=\"bold\">", kMargin) +
          XmlEscape(title_) + "</text>\n";
  for (size_t i = 0; i < panels_.size(); ++i)
    text += panels_[i]->Render(placement.offsets[i].first, placement.offsets[i].second);
  return text + "</svg>\n";
}

}  // namespace vexa::tools
