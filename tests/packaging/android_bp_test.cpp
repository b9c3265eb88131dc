// Android.bp builds the same sources as CMake: each cc_library_shared module's srcs, compared
// with the list the CMake build wrote ("<module> <path>" per line).
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>

namespace vexa::testing {
namespace {

using SourcesByModule = std::map<std::string, std::set<std::string>>;

SourcesByModule AndroidBpSources(const std::string& text) {
  SourcesByModule modules;
  const std::regex module(R"(cc_library_shared\s*\{([^}]*)\})"), name(R"(name:\s*"([^"]+)\")"),
      srcs(R"(srcs:\s*\[([^\]]*)\])"), quoted(R"xx("([^"]+)")xx");
  for (std::sregex_iterator m(text.begin(), text.end(), module), end; m != end; ++m) {
    const std::string body = (*m)[1];
    std::smatch n, s;
    if (!std::regex_search(body, n, name) || !std::regex_search(body, s, srcs)) continue;
    const std::string list = s[1];
    for (std::sregex_iterator q(list.begin(), list.end(), quoted); q != end; ++q)
      modules[n[1]].insert((*q)[1]);
  }
  return modules;
}

TEST(AndroidBpTest, BuildsTheSameSourcesAsCMake) {
  SourcesByModule cmake;
  std::ifstream list(VEXA_BUILD_SOURCES_FILE);
  for (std::string module, source; list >> module >> source;) cmake[module].insert(source);
  ASSERT_EQ(cmake.size(), 2u);
  std::ifstream bp(std::string(VEXA_SOURCE_DIR) + "/Android.bp");
  EXPECT_EQ(AndroidBpSources(std::string(std::istreambuf_iterator<char>(bp), {})), cmake);
}

}  // namespace
}  // namespace vexa::testing
