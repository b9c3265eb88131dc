// The shared library as a product: what it exports and imports, where it finds the algorithm
// library, its factory, and a client that knows only the public header.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "support/parser_e2e.h"
#include "support/process_runner.h"

namespace vexa::testing {
namespace {

using VexaKivLibraryTest = ParserE2eTest;

TEST_F(VexaKivLibraryTest, ExportsOnlyTheFactoryWhichServesInterfaceTwoZero) {
  const std::string library = VEXA_PARSER_LIBRARY_PATH;
  const ProcessResult defined = RunProcess({"/usr/bin/nm", "-D", "--defined-only", library});
  EXPECT_EQ(std::count(defined.out.begin(), defined.out.end(), '\n'), 1) << defined.out;
  EXPECT_NE(defined.out.find(" T GetVexaKivInterface\n"), std::string::npos) << defined.out;
  const ProcessResult imported = RunProcess({"/usr/bin/nm", "-D", "--undefined-only", library});
  EXPECT_NE(imported.out.find(" __android_log_print\n"), std::string::npos) << imported.out;
  // A libvexa-algo.so beside the library is found by its bare name.
  const ProcessResult dynamic = RunProcess({"/usr/bin/readelf", "-d", library});
  EXPECT_NE(dynamic.out.find("Library runpath: [$ORIGIN:"), std::string::npos) << dynamic.out;
  EXPECT_EQ(GetVexaKivInterface(2, 1), nullptr);
}

TEST_F(VexaKivLibraryTest, ClientWithOnlyThePublicHeaderListsTheModes) {
  device_.Write(CalibFile("/vendor/etc/display"), ModesText(kNative + "," + kVivid));
  const ProcessResult client =
      RunProcess({VEXA_PUBLIC_HEADER_CLIENT_PATH, VEXA_PARSER_LIBRARY_PATH, kPanel});
  EXPECT_EQ(client.exit_code, 0);
  EXPECT_EQ(client.out, "status 0 modes 2\nmode 1 1 0 native\nmode 1 1 2 vivid\n");
}

}  // namespace
}  // namespace vexa::testing
