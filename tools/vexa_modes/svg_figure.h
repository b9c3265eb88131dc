// A self-contained SVG figure: a title over panels laid out in rows of a fixed number of columns.
// No external style sheet, font or script, so the file shows the same in any browser and can be
// placed inline in an XHTML page.
#ifndef VEXA_TOOLS_VEXA_MODES_SVG_FIGURE_H_
#define VEXA_TOOLS_VEXA_MODES_SVG_FIGURE_H_

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "tools/vexa_modes/svg_panel.h"

namespace vexa::tools {

class SvgFigure {
 public:
  SvgFigure(std::string title, size_t columns) : title_(std::move(title)), columns_(columns) {}

  void Add(std::unique_ptr<SvgPanel> panel) { panels_.push_back(std::move(panel)); }
  const std::string& title() const { return title_; }

  // The whole <svg> element, with its namespace; placed at (x, y) when nested in another.
  std::string Render(double x = 0, double y = 0) const;
  double width() const { return Layout().width; }
  double height() const { return Layout().height; }

 private:
  struct Placement {
    std::vector<std::pair<double, double>> offsets;  // of each panel
    double width = 0, height = 0;
  };
  Placement Layout() const;

  std::string title_;
  size_t columns_;
  std::vector<std::unique_ptr<SvgPanel>> panels_;
};

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_VEXA_MODES_SVG_FIGURE_H_
