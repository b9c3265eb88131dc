// The shared library as a product: what it exports, its factory, and a client that knows only
// the public header.
#include <gtest/gtest.h>

#include <cstdio>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "support/parser_e2e.h"

namespace vexa::testing {
namespace {

// The command's standard output; `status` receives its exit status.
std::string RunCommand(const std::string& command, int* status) {
  std::string out;
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) {
    *status = -1;
    return out;
  }
  char buffer[512];
  size_t read = 0;
  while ((read = std::fread(buffer, 1, sizeof(buffer), pipe)) > 0) out.append(buffer, read);
  *status = pclose(pipe);
  return out;
}

// The last column of each line of nm's output.
std::set<std::string> SymbolNames(const std::string& nm_output) {
  std::set<std::string> names;
  std::istringstream lines(nm_output);
  for (std::string line; std::getline(lines, line);) {
    const size_t last = line.find_last_of(' ');
    if (last != std::string::npos) names.insert(line.substr(last + 1));
  }
  return names;
}

TEST(VexaKivLibraryTest, ExportsTheFactoryAndNothingElse) {
  int status = 0;
  const std::string defined = RunCommand(std::string("nm -D --defined-only ") + kParserLibraryPath, &status);
  ASSERT_EQ(status, 0);
  EXPECT_EQ(SymbolNames(defined), std::set<std::string>{"GetVexaKivInterface"}) << defined;
  const std::string imported =
      RunCommand(std::string("nm -D --undefined-only ") + kParserLibraryPath, &status);
  ASSERT_EQ(status, 0);
  EXPECT_EQ(SymbolNames(imported).count("__android_log_print"), 1u) << imported;
}

using VexaKivLibraryE2eTest = ParserE2eTest;

TEST_F(VexaKivLibraryE2eTest, ClientWithOnlyThePublicHeaderListsTheModes) {
  WriteModes(CalibFile(kVendorDir), {{"Native", NativeMode()}, {"Vivid", VividMode()}});
  int status = 0;
  const std::string out = RunCommand(std::string(kPublicHeaderClientPath) + " " + kParserLibraryPath +
                                  " " + kPanel + " 2>/dev/null",
                              &status);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(out, "status 0 modes 2\nmode 1 1 0 native\nmode 1 1 2 vivid\n");
}

TEST_F(VexaKivLibraryE2eTest, FactoryServesInterfaceTwoZeroOnly) {
  struct Case {
    int32_t major;
    int32_t minor;
    bool served;
  };
  const std::vector<Case> cases = {{2, 0, true},  {2, 1, false}, {1, 0, false},
                                   {3, 0, false}, {0, 0, false}, {-2, 0, false}};
  LoadLibrary();
  for (const Case& c : cases) {
    log_.Clear();
    std::unique_ptr<VexaKivInterface> parser(library_->factory()(c.major, c.minor));
    EXPECT_EQ(parser != nullptr, c.served) << c.major << "." << c.minor;
    const std::string refusal = "Invalid major_version " + std::to_string(c.major) +
                                " minor_version " + std::to_string(c.minor);
    EXPECT_EQ(CountLines("I", "GetVexaKivInterface", refusal), c.served ? 0u : 1u);
    EXPECT_EQ(CountLines("I", "GetVexaKivInterface", "VexaJsonModeParser created"),
              c.served ? 1u : 0u);
  }
  // Each call makes a new, independent object.
  std::unique_ptr<VexaKivInterface> first = library_->NewParser();
  std::unique_ptr<VexaKivInterface> second = library_->NewParser();
  EXPECT_NE(first, second);
  EXPECT_EQ(first->Init(kPanel), 0);
  ColorModeList list{kColorModeListVersion, {}};
  EXPECT_EQ(GetModes(*second, &list), -22) << "the second object is not initialised";
}

}  // namespace
}  // namespace vexa::testing
