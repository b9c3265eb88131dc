// vexa-modes: lists a panel's colour modes and decodes the payloads of one mode, over the
// parser library loaded as the display service loads it.
//
//   vexa-modes --root DEVICE_TREE --panel NAME list
//   vexa-modes --root DEVICE_TREE --panel NAME show --gamut 1 --gamma 1 --intent 1
//   vexa-modes --root DEVICE_TREE --panel NAME lint [--format json]
//   vexa-modes lint FILE...
#include <CLI/CLI.hpp>
#include <filesystem>
#include <iostream>
#include <system_error>

#include "tools/vexa_modes/exit_codes.h"
#include "tools/vexa_modes/lint_command.h"
#include "tools/vexa_modes/mode_commands.h"

namespace {

using vexa::tools::ToolOptions;
using vexa::tools::WantedMode;

std::string ExecutablePath(const char* argv0) {
  std::error_code error;
  const std::filesystem::path self = std::filesystem::read_symlink("/proc/self/exe", error);
  return error ? std::string(argv0) : self.string();
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{
      "Lists the colour modes that libvexa-json-mode-parser publishes for a panel and "
      "decodes the hardware payloads of one mode."};
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
                 "Panel name handed to Init (lint FILE... takes it from the file names)");
  CLI::Option* log_option =
      app.add_option("--log-level", log_level, "Library log level (vendor.display.kivloglevel)")
          ->check(CLI::IsMember({0, 1, 2}));

  CLI::App* list = app.add_subcommand("list", "Print the published modes");
  WantedMode wanted;
  CLI::App* show =
      app.add_subcommand("show", "Run the mode ops for one mode and decode its payloads");
  show->add_option("--gamut", wanted.gamut, "Colour primaries of the mode (1 sRGB, 12 P3)")
      ->required();
  show->add_option("--gamma", wanted.gamma, "Gamma transfer of the mode (1 sRGB, 4 gamma 2.2)")
      ->required();
  show->add_option("--intent", wanted.intent, "Render intent of the mode")->required();

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

  const bool panel_needed = !lint->parsed() || lint_options.files.empty();
  if (panel_needed && options.panel.empty()) {
    std::cerr << "vexa-modes: --panel is required\n";
    return vexa::tools::kExitBadArguments;
  }
  if (lint->parsed()) {
    lint_options.root = options.root;
    lint_options.panel = options.panel;
    const auto format = lint_format == "json" ? vexa::tools::LintFormat::kJson
                                              : vexa::tools::LintFormat::kText;
    return vexa::tools::RunLint(lint_options, format, std::cout);
  }
  if (list->parsed()) return vexa::tools::RunList(options, std::cout, std::cerr);
  return vexa::tools::RunShow(options, wanted, std::cout, std::cerr);
}
