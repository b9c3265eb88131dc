#include "tools/vexa_modes/plot_command.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>

#include "tools/vexa_modes/exit_codes.h"
#include "tools/vexa_modes/text_format.h"

namespace vexa::tools {
namespace {

constexpr char kErrorPrefix[] = "vexa-modes: ";
constexpr char kSvgSuffix[] = ".svg";
constexpr double kStackGap = 10;

bool WriteFile(const std::filesystem::path& path, const std::string& text, std::ostream& err) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file << text;
  file.close();
  if (!file) err << kErrorPrefix << "cannot write " << path.string() << '\n';
  return static_cast<bool>(file);
}

}  // namespace

std::string ModeFileStem(const ColorMode& mode) {
  std::string name;
  for (char c : mode.render_intent_name)
    name += std::isalnum(static_cast<unsigned char>(c)) || c == '_' ? c : '_';
  if (name.empty()) name = "mode";
  return Format("%s-g%d-t%d-i%d", name.c_str(), mode.gamut, mode.gamma, mode.intent);
}

std::string ModeTitle(const ColorMode& mode) {
  return "Mode \"" + mode.render_intent_name + "\" (" + ModeText(mode) + ")";
}

std::string StackedFigures(const std::string& title, const std::vector<ModeFigure>& figures) {
  double width = 0, height = 0;
  std::string body;
  for (const ModeFigure& figure : figures) {
    body += figure.figure.Render(0, height);
    width = std::max(width, figure.figure.width());
    height += figure.figure.height() + kStackGap;
  }
  return Format("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"%.0f\" height=\"%.0f\" "
                "viewBox=\"0 0 %.0f %.0f\">\n",
                width, height, width, height) +
         "<title>" + XmlEscape(title) + "</title>\n" + body + "</svg>\n";
}

bool PlotModes(KivLibrary& library, const std::vector<ColorMode>& modes,
               std::vector<PlottedMode>* plotted, std::ostream& err) {
  for (const ColorMode& mode : modes) {
    HwConfigOutputParams output{};
    const int32_t status = library.RunModeOp(kKivModeRenderIntent, RenderInputOf(mode), &output);
    if (status != 0) {
      err << kErrorPrefix << "the render-intent operation returned " << status << " for "
          << ModeText(mode) << '\n';
      return false;
    }
    plotted->push_back({mode, ModeFigures(ModeTitle(mode), output.payloads)});
  }
  return true;
}

int RunPlot(const ToolOptions& options, const PlotOptions& plot, std::ostream& out,
            std::ostream& err) {
  KivLibrary library;  // outlives every record it hands out
  ColorModeList list{};
  const int status = LoadModes(library, options, &list, err);
  if (status != kExitOk) return status;
  std::vector<ColorMode> modes = list.modes;
  if (plot.mode) {
    const ColorMode* wanted = FindMode(list.modes, *plot.mode);
    if (wanted == nullptr) {
      err << kErrorPrefix << "panel " << options.panel << " has no mode with "
          << ModeText(*plot.mode) << " (the list command shows the published modes)\n";
      return kExitNoSuchMode;
    }
    modes = {*wanted};
  }
  std::error_code failure;
  std::filesystem::create_directories(plot.output_dir, failure);
  std::vector<PlottedMode> plotted;
  if (!PlotModes(library, modes, &plotted, err)) return kExitFailure;
  const std::filesystem::path dir(plot.output_dir);
  for (const PlottedMode& entry : plotted) {
    const std::string stem = ModeFileStem(entry.mode);
    if (entry.figures.empty()) {
      out << stem << ": no GC, IGC or gamut payload to plot\n";
      continue;
    }
    std::vector<std::pair<std::filesystem::path, std::string>> files;
    if (plot.per_figure) {
      for (const ModeFigure& figure : entry.figures)
        files.emplace_back(dir / (stem + "-" + figure.kind + kSvgSuffix), figure.figure.Render());
    } else {
      files.emplace_back(dir / (stem + kSvgSuffix),
                         StackedFigures(ModeTitle(entry.mode), entry.figures));
    }
    for (const auto& [path, text] : files) {
      if (!WriteFile(path, text, err)) return kExitFileRefused;
      out << path.string() << '\n';
    }
  }
  return kExitOk;
}

}  // namespace vexa::tools
