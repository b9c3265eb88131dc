// The shared library as a product: what it exports and imports, where it finds the algorithm
// library, its factory, and a client that knows only the public header.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "support/parser_e2e.h"

namespace vexa::testing {
namespace {

// The command's standard output, followed by "exit <status>" when the status is not 0.
std::string Output(const std::string& command) {
  FILE* pipe = popen((command + " 2>/dev/null").c_str(), "r");
  std::string out;
  char buf[4096];
  for (size_t n; pipe && (n = std::fread(buf, 1, sizeof(buf), pipe)) > 0;) out.append(buf, n);
  const int status = pipe ? pclose(pipe) : -1;
  return status == 0 ? out : out + "exit " + std::to_string(status);
}

using VexaKivLibraryTest = ParserE2eTest;

TEST_F(VexaKivLibraryTest, ExportsOnlyTheFactoryWhichServesInterfaceTwoZero) {
  const std::string library = VEXA_PARSER_LIBRARY_PATH;
  EXPECT_EQ(Output("nm -D -j --defined-only " + library), "GetVexaKivInterface\n");
  const std::string imported = Output("nm -D -j --undefined-only " + library);
  EXPECT_NE(imported.find("\n__android_log_print\n"), std::string::npos) << imported;
  // A libvexa-algo.so beside the library is found by its bare name.
  EXPECT_NE(Output("readelf -d " + library).find("Library runpath: [$ORIGIN:"), std::string::npos);
  EXPECT_EQ(GetVexaKivInterface(2, 1), nullptr);
}

TEST_F(VexaKivLibraryTest, ClientWithOnlyThePublicHeaderListsTheModes) {
  device_.Write(CalibFile("/vendor/etc/display"), ModesText(kNative + "," + kVivid));
  const std::string client = VEXA_PUBLIC_HEADER_CLIENT_PATH;
  EXPECT_EQ(Output(client + " " + VEXA_PARSER_LIBRARY_PATH + " " + kPanel),
            "status 0 modes 2\nmode 1 1 0 native\nmode 1 1 2 vivid\n");
}

}  // namespace
}  // namespace vexa::testing
