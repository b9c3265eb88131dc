// vexa-modes: lists a panel's colour modes and decodes the payloads of one mode, over the
// parser library loaded as the display service loads it; converts the panel's files between
// their device and readable forms; plots modes and writes a panel report.
//
//   vexa-modes --root DEVICE_TREE --panel NAME list
//   vexa-modes --root DEVICE_TREE --panel NAME show --gamut 1 --gamma 1 --intent 1
//   vexa-modes unpack FILE [-o OUT]      vexa-modes pack FILE [-o OUT]
//   vexa-modes --root DEVICE_TREE --panel NAME plot -o DIR [--per-figure] [--gamut --gamma --intent]
//   vexa-modes --root DEVICE_TREE --panel NAME report [-o PAGE.html]
//   vexa-modes --root DEVICE_TREE --panel NAME lint [--format json]
//   vexa-modes lint FILE...
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <system_error>

#include "tools/vexa_modes/exit_codes.h"
#include "tools/vexa_modes/file_commands.h"
#include "tools/vexa_modes/lint_command.h"
#include "tools/vexa_modes/mode_commands.h"
#include "tools/vexa_modes/plot_command.h"
#include "tools/vexa_modes/report_command.h"

namespace {

using vexa::tools::ToolOptions;
using vexa::tools::WantedMode;

std::string ExecutablePath(const char* argv0) {
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::string(argv0) : self.string();
}

// The --gamut, --gamma and --intent options of a command; `required` or all-or-nothing.
struct ModeOptions {
  WantedMode wanted;
  CLI::Option* gamut = nullptr;

  void AddTo(CLI::App* command, bool required) {
    gamut = command->add_option("--gamut", wanted.gamut, "Colour primaries of the mode (1 sRGB, 12 P3)");
    CLI::Option* gamma = command->add_option("--gamma", wanted.gamma,
                                             "Gamma transfer of the mode (1 sRGB, 4 gamma 2.2)");
    CLI::Option* intent = command->add_option("--intent", wanted.intent, "Render intent of the mode");
    if (required) {
      gamut->required();
      gamma->required();
      intent->required();
    } else {
      gamut->needs(gamma)->needs(intent);
      gamma->needs(gamut);
      intent->needs(gamut);
    }
  }
};

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{
      "Lists the colour modes that libvexa-json-mode-parser publishes for a panel, decodes the "
      "hardware payloads of one mode, packs and unpacks the panel's files, plots modes and "
      "writes a panel report."};
  app.require_subcommand(1);

  ToolOptions options;
  options.library = vexa::tools::DefaultLibraryPath(ExecutablePath(argv[0]));
  uint32_t log_level = 0;
  app.add_option("--library", options.library, "Path of libvexa-json-mode-parser.so")
      ->capture_default_str();
  app.add_option("--root", options.root,
                 "Device tree that stands for the device's file system (exported as VEXA_SYSROOT)")
      ->check(CLI::ExistingDirectory);
  app.add_option("--panel", options.panel,
                 "Panel name handed to Init (list, show, plot, report and lint of a tree)");
  CLI::Option* log_option =
      app.add_option("--log-level", log_level, "Library log level (vendor.display.kivloglevel)")
          ->check(CLI::IsMember({0, 1, 2}));

  CLI::App* list = app.add_subcommand("list", "Print the published modes");
  CLI::App* show =
      app.add_subcommand("show", "Run the mode ops for one mode and decode its payloads");
  ModeOptions show_mode;
  show_mode.AddTo(show, true);

  vexa::tools::FileCommand file_command;
  CLI::App* unpack = app.add_subcommand(
      "unpack", "Write a modes or rules file as indented JSON, hex sections decoded");
  CLI::App* pack = app.add_subcommand(
      "pack", "Write an unpacked file in the device form, checking it with the library's readers");
  for (CLI::App* command : {unpack, pack}) {
    command->add_option("FILE", file_command.input, "The file to convert")->required();
    command->add_option("-o,--output", file_command.output, "Output file (default: stdout)");
  }

  vexa::tools::PlotOptions plot_options;
  CLI::App* plot = app.add_subcommand("plot", "Write SVG figures of the published modes");
  plot->add_option("-o,--output", plot_options.output_dir, "Directory for the SVG files")
      ->required();
  plot->add_flag("--per-figure", plot_options.per_figure,
                 "One file per figure instead of one per mode");
  ModeOptions plot_mode;
  plot_mode.AddTo(plot, false);

  std::string report_output;
  CLI::App* report = app.add_subcommand("report", "Write the panel's report as one XHTML page");
  report->add_option("-o,--output", report_output, "Output file (default: stdout)");

  CLI::App* lint = app.add_subcommand(
      "lint", "Load the panel's files as the device does and report every problem");
  vexa::lint::LintOptions lint_options;
  std::string lint_format = "text";
  lint->add_option("files", lint_options.files,
                   "Single modes or rules files, named <stem>_<panel>.json, instead of the tree")
      ->check(CLI::ExistingFile);
  lint->add_option("--format", lint_format, "text or json")
      ->check(CLI::IsMember({"text", "json"}))
      ->capture_default_str();

  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    const int code = app.exit(error);
    return code == 0 ? vexa::tools::kExitOk : vexa::tools::kExitBadArguments;
  }
  if (!options.root.empty()) options.root = std::filesystem::absolute(options.root).string();
  if (log_option->count() > 0) options.log_level = log_level;

  if (unpack->parsed()) return vexa::tools::RunUnpack(file_command, std::cout, std::cerr);
  if (pack->parsed()) return vexa::tools::RunPack(file_command, std::cout, std::cerr);
  const auto format = lint_format == "json" ? vexa::tools::LintFormat::kJson
                                            : vexa::tools::LintFormat::kText;
  // Single files name their panel; every other command needs it.
  if (lint->parsed() && !lint_options.files.empty()) {
    lint_options.panel = options.panel;
    return vexa::tools::RunLint(lint_options, format, std::cout);
  }
  if (options.panel.empty()) {
    std::cerr << "vexa-modes: --panel is required for " << app.get_subcommands().front()->get_name()
              << '\n';
    return vexa::tools::kExitBadArguments;
  }
  if (lint->parsed()) {
    lint_options.root = options.root;
    lint_options.panel = options.panel;
    return vexa::tools::RunLint(lint_options, format, std::cout);
  }
  if (list->parsed()) return vexa::tools::RunList(options, std::cout, std::cerr);
  if (show->parsed()) return vexa::tools::RunShow(options, show_mode.wanted, std::cout, std::cerr);
  if (plot->parsed()) {
    if (plot_mode.gamut->count() > 0) plot_options.mode = plot_mode.wanted;
    return vexa::tools::RunPlot(options, plot_options, std::cout, std::cerr);
  }
  vexa::tools::LintFindingsSource lint_findings;
  return vexa::tools::RunReport(options, report_output, &lint_findings, std::cout, std::cerr);
}
