// The parser library as the display service uses it: loaded with dlopen, driven only through
// the public interface.
#ifndef VEXA_TESTS_SUPPORT_PARSER_LIBRARY_H_
#define VEXA_TESTS_SUPPORT_PARSER_LIBRARY_H_

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "algo/vexa_test_algo.h"
#include "support/device_tree.h"
#include "vexa/vexa_kiv_interface.h"

namespace vexa::testing {

// Build products the tests use.
extern const char kParserLibraryPath[];
extern const char kTestAlgoLibraryPath[];
extern const char kNoAlgoSymbolLibraryPath[];
extern const char kPublicHeaderClientPath[];

// The algorithm library's file name, as the parser asks the loader for it.
constexpr char kAlgoLibraryName[] = "libvexa-algo.so";

using KivFactory = VexaKivInterface* (*)(int32_t major, int32_t minor);

class ParserLibrary {
 public:
  explicit ParserLibrary(const std::string& path);
  ~ParserLibrary();
  ParserLibrary(const ParserLibrary&) = delete;
  ParserLibrary& operator=(const ParserLibrary&) = delete;

  bool loaded() const { return factory_ != nullptr; }
  const std::string& error() const { return error_; }
  KivFactory factory() const { return factory_; }
  // A new parser for interface 2.0, owned by the caller; null when the library is not loaded.
  std::unique_ptr<VexaKivInterface> NewParser() const;

 private:
  void* handle_ = nullptr;
  KivFactory factory_ = nullptr;
  std::string error_;
};

// A directory with a copy of the parser library and, when `algo_source` is given, a copy of that
// library named libvexa-algo.so beside it, where the parser's RUNPATH ($ORIGIN) finds it.
//
// Sanitizer runtimes intercept dlopen, and the loader then searches the executable's RUNPATH
// instead of the asking library's. In such builds the stage opens the algorithm library itself,
// by path, until it goes: the parser's open by name then finds it loaded under its soname.
class LibraryStage {
 public:
  explicit LibraryStage(const std::string& algo_source);
  ~LibraryStage();
  LibraryStage(const LibraryStage&) = delete;
  LibraryStage& operator=(const LibraryStage&) = delete;

  std::string parser_path() const;

 private:
  TempDir dir_;
  void* preloaded_algo_ = nullptr;
};

// True while a library opened as libvexa-algo.so is mapped in the process.
bool AlgoLibraryLoaded();
// Keeps the loaded algorithm library mapped while the object lives, so that its counters survive
// a parser closing and reopening it.
class AlgoLibraryHold {
 public:
  AlgoLibraryHold();
  ~AlgoLibraryHold();
  AlgoLibraryHold(const AlgoLibraryHold&) = delete;
  AlgoLibraryHold& operator=(const AlgoLibraryHold&) = delete;

 private:
  void* handle_;
};
// The test algorithm library's counters while it is loaded.
std::optional<TestAlgoCounters> AlgoCounters();

// Records and requests as the display service makes them.
ModeRenderInputParams ModeRequest(int32_t gamut, int32_t gamma, int32_t intent,
                                  std::vector<std::string> hw_assets);
HwConfigOutputParams EmptyOutput();
int32_t GetModes(VexaKivInterface& parser, ColorModeList* list);
int32_t RequestMode(VexaKivInterface& parser, VexaKivOps op, const ModeRenderInputParams& request,
                    HwConfigOutputParams* output);
int32_t GetDitherConfig(VexaKivInterface& parser, HwConfigOutputParams* output);
int32_t SetCaps(VexaKivInterface& parser, VexaKivProperty prop, const PostBlendHwCaps& caps);
PostBlendHwCaps Caps(uint32_t num_of_entries, uint32_t hw_param = 0);

// The names of the payloads, in order.
std::vector<std::string> PayloadNames(const HwConfigOutputParams& output);
// The typed record of a payload.
template <typename Record>
const Record& RecordOf(const HwConfigPayload& payload) {
  return *static_cast<const Record*>(payload.config.get());
}

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_PARSER_LIBRARY_H_
