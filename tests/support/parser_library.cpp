#include "support/parser_library.h"

#include <dlfcn.h>

#include <filesystem>

namespace vexa::testing {
namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr bool kDlopenIntercepted = true;
#elif defined(__has_feature)
constexpr bool kDlopenIntercepted =
    __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
constexpr bool kDlopenIntercepted = false;
#endif

}  // namespace

const char kParserLibraryPath[] = VEXA_PARSER_LIBRARY_PATH;
const char kTestAlgoLibraryPath[] = VEXA_TEST_ALGO_LIBRARY_PATH;
const char kNoAlgoSymbolLibraryPath[] = VEXA_NO_ALGO_SYMBOL_LIBRARY_PATH;
const char kPublicHeaderClientPath[] = VEXA_PUBLIC_HEADER_CLIENT_PATH;

ParserLibrary::ParserLibrary(const std::string& path) {
  handle_ = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (handle_ == nullptr) {
    error_ = dlerror();
    return;
  }
  factory_ = reinterpret_cast<KivFactory>(dlsym(handle_, "GetVexaKivInterface"));
  if (factory_ == nullptr) error_ = "GetVexaKivInterface not found in " + path;
}

ParserLibrary::~ParserLibrary() {
  if (handle_ != nullptr) dlclose(handle_);
}

std::unique_ptr<VexaKivInterface> ParserLibrary::NewParser() const {
  if (factory_ == nullptr) return nullptr;
  return std::unique_ptr<VexaKivInterface>(factory_(2, 0));
}

LibraryStage::LibraryStage(const std::string& algo_source) {
  namespace fs = std::filesystem;
  const fs::path parser(kParserLibraryPath);
  fs::copy_file(parser, fs::path(dir_.path()) / parser.filename());
  if (algo_source.empty()) return;
  const fs::path algo = fs::path(dir_.path()) / kAlgoLibraryName;
  fs::copy_file(algo_source, algo);
  if (kDlopenIntercepted) preloaded_algo_ = dlopen(algo.c_str(), RTLD_NOW | RTLD_LOCAL);
}

LibraryStage::~LibraryStage() {
  if (preloaded_algo_ != nullptr) dlclose(preloaded_algo_);
}

std::string LibraryStage::parser_path() const {
  return (std::filesystem::path(dir_.path()) /
          std::filesystem::path(kParserLibraryPath).filename())
      .string();
}

bool AlgoLibraryLoaded() {
  void* handle = dlopen(kAlgoLibraryName, RTLD_NOW | RTLD_NOLOAD);
  if (handle == nullptr) return false;
  dlclose(handle);
  return true;
}

AlgoLibraryHold::AlgoLibraryHold() : handle_(dlopen(kAlgoLibraryName, RTLD_NOW | RTLD_NOLOAD)) {}

AlgoLibraryHold::~AlgoLibraryHold() {
  if (handle_ != nullptr) dlclose(handle_);
}

std::optional<TestAlgoCounters> AlgoCounters() {
  void* handle = dlopen(kAlgoLibraryName, RTLD_NOW | RTLD_NOLOAD);
  if (handle == nullptr) return std::nullopt;
  auto counters = reinterpret_cast<TestAlgoCountersFunction>(dlsym(handle, kTestAlgoCountersSymbol));
  std::optional<TestAlgoCounters> result;
  if (counters != nullptr) result = counters();
  dlclose(handle);
  return result;
}

ModeRenderInputParams ModeRequest(int32_t gamut, int32_t gamma, int32_t intent,
                                  std::vector<std::string> hw_assets) {
  return ModeRenderInputParams{kModeRenderInputParamsVersion, gamut, gamma, intent,
                               std::move(hw_assets)};
}

HwConfigOutputParams EmptyOutput() { return HwConfigOutputParams{kHwConfigOutputParamsVersion, {}}; }

int32_t GetModes(VexaKivInterface& parser, ColorModeList* list) {
  VexaKivPayload payload{kVexaKivPayloadVersion, kColorModeListLen, kKivModesList, list};
  return parser.GetProperty(&payload);
}

int32_t RequestMode(VexaKivInterface& parser, VexaKivOps op, const ModeRenderInputParams& request,
                    HwConfigOutputParams* output) {
  const VexaKivPayload input{0, kModeRenderInputParamsLen, 0,
                             const_cast<ModeRenderInputParams*>(&request)};
  VexaKivPayload out{0, kHwConfigOutputParamsLen, 0, output};
  return parser.ProcessOps(op, input, &out);
}

int32_t GetDitherConfig(VexaKivInterface& parser, HwConfigOutputParams* output) {
  VexaKivPayload payload{kVexaKivPayloadVersion, kHwConfigOutputParamsLen, kKivPbDitherHwConfig,
                         output};
  return parser.GetProperty(&payload);
}

int32_t SetCaps(VexaKivInterface& parser, VexaKivProperty prop, const PostBlendHwCaps& caps) {
  const VexaKivPayload payload{kVexaKivPayloadVersion, kPostBlendHwCapsLen, prop,
                               const_cast<PostBlendHwCaps*>(&caps)};
  return parser.SetProperty(payload);
}

PostBlendHwCaps Caps(uint32_t num_of_entries, uint32_t hw_param) {
  return PostBlendHwCaps{0, num_of_entries, hw_param, {}};
}

std::vector<std::string> PayloadNames(const HwConfigOutputParams& output) {
  std::vector<std::string> names;
  for (const HwConfigPayload& payload : output.payloads) names.push_back(payload.name);
  return names;
}

}  // namespace vexa::testing
