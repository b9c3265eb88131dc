// One panel of an SVG figure (a line chart, a heat map): a fixed-size block of SVG elements that
// the figure places at a given offset.
#ifndef VEXA_TOOLS_VEXA_MODES_SVG_PANEL_H_
#define VEXA_TOOLS_VEXA_MODES_SVG_PANEL_H_

#include <string>

namespace vexa::tools {

class SvgPanel {
 public:
  virtual ~SvgPanel() = default;
  virtual double width() const = 0;
  virtual double height() const = 0;
  // The panel's elements, as a group translated to (x, y).
  virtual std::string Render(double x, double y) const = 0;
};

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_VEXA_MODES_SVG_PANEL_H_
