// Runs a command line to completion and keeps its exit status, standard output and standard error;
// and a fixture that runs the vexa-modes tool over a private copy of the example device tree.
#ifndef VEXA_TESTS_SUPPORT_TOOL_PROCESS_H_
#define VEXA_TESTS_SUPPORT_TOOL_PROCESS_H_

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdio>
#include <filesystem>
#include <string>

#include "support/temp_dir.h"

namespace vexa::testing {

struct ProcessResult {
  int exit_code = -1;  // -1 when the command could not be started or did not exit normally
  std::string out, err;
};

inline ProcessResult RunCommand(const std::string& command_line) {
  const TempDir dir;
  const std::string command = command_line + " 2>" + dir.File("err");
  ProcessResult result;
  FILE* out = popen(command.c_str(), "r");
  if (out == nullptr) return result;
  char buf[4096];
  for (size_t n; (n = std::fread(buf, 1, sizeof(buf), out)) > 0;) result.out.append(buf, n);
  const int status = pclose(out);
  if (WIFEXITED(status)) result.exit_code = WEXITSTATUS(status);
  result.err = dir.Get("err");
  return result;
}

inline std::string Describe(const ProcessResult& r) {
  return "exit " + std::to_string(r.exit_code) + "\nstdout:\n" + r.out.substr(0, 2000) +
         "\nstderr:\n" + r.err;
}

// The tool runs the real library, found where it looks by default (lib/ beside bin/, as in the
// build tree), over a copy of the example tree below dir_, which the library writes into.
class ExampleTreeToolTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::copy(VEXA_EXAMPLE_DEVICE_ROOT, root_, std::filesystem::copy_options::recursive);
  }
  static ProcessResult Tool(const std::string& args) {
    return RunCommand(std::string(VEXA_MODES_TOOL) + " " + args);
  }
  std::string TreeArgs() const { return "--root " + root_ + " --panel " + VEXA_EXAMPLE_PANEL; }
  ProcessResult Run(const std::string& args) const { return Tool(TreeArgs() + " " + args); }

  TempDir dir_;
  const std::string root_ = dir_.File("device");
};

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_TOOL_PROCESS_H_
