#include "tools/vexa_modes/mode_table.h"

#include <algorithm>
#include <array>
#include <string>

#include "tools/vexa_modes/text_format.h"

namespace vexa::tools {
namespace {

constexpr size_t kColumns = 6;
using Row = std::array<std::string, kColumns>;

const Row kHeader = {"#", "gamut", "gamma", "intent", "intent name", "hw assets"};
// Numbers are right-aligned, text left-aligned; the last column is never padded.
constexpr std::array<bool, kColumns> kRightAligned = {true, true, true, true, false, false};

Row MakeRow(size_t index, const ColorMode& mode) {
  return {std::to_string(index),
          std::to_string(mode.gamut),
          std::to_string(mode.gamma),
          std::to_string(mode.intent),
          mode.render_intent_name.empty() ? "-" : mode.render_intent_name,
          mode.hw_assets.empty() ? "-" : Join(mode.hw_assets, ", ")};
}

std::string Cell(const std::string& text, size_t width, bool right_aligned) {
  const std::string padding(width > text.size() ? width - text.size() : 0, ' ');
  return right_aligned ? padding + text : text + padding;
}

void PrintRow(std::ostream& out, const Row& row, const std::array<size_t, kColumns>& widths) {
  std::string line;
  for (size_t column = 0; column < kColumns; ++column) {
    const bool last = column + 1 == kColumns;
    line += last ? row[column] : Cell(row[column], widths[column], kRightAligned[column]) + "  ";
  }
  out << line << '\n';
}

}  // namespace

void PrintModeTable(std::ostream& out, const std::vector<ColorMode>& modes) {
  std::vector<Row> rows = {kHeader};
  for (size_t i = 0; i < modes.size(); ++i) rows.push_back(MakeRow(i, modes[i]));
  std::array<size_t, kColumns> widths{};
  for (const Row& row : rows) {
    for (size_t column = 0; column < kColumns; ++column) {
      widths[column] = std::max(widths[column], row[column].size());
    }
  }
  for (const Row& row : rows) PrintRow(out, row, widths);
}

}  // namespace vexa::tools
