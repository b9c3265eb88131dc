// A whole device through the exported interface: the input is split at "\n--8<--\n" into a
// factory file, a calibration file and a merge-rules file, written into a temporary device tree;
// then Init, the mode list, both mode operations for every mode, the dither configuration, DeInit.
#include <stdlib.h>
#include <sys/stat.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include "fuzz/fuzz_support.h"
#include "platform/device_paths.h"
#include "vexa/vexa_kiv_interface.h"

namespace {

constexpr char kSeparator[] = "\n--8<--\n";

void MakeDirs(const std::string& path) {
  std::string partial;
  for (size_t i = 1; i <= path.size(); ++i) {
    if (i == path.size() || path[i] == '/') {
      partial = path.substr(0, i);
      mkdir(partial.c_str(), 0755);
    }
  }
}

void WriteFile(const std::string& path, const std::string& text) {
  FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return;
  std::fwrite(text.data(), 1, text.size(), file);
  std::fclose(file);
}

const std::string& Sysroot() {
  static const std::string root = [] {
    // A memory file system where there is one: every Init writes and syncs the merge-version file.
    struct stat shm;
    const bool in_memory = stat("/dev/shm", &shm) == 0 && S_ISDIR(shm.st_mode);
    std::string pattern = in_memory ? "/dev/shm/vexa-fuzz-XXXXXX" : "/tmp/vexa-fuzz-XXXXXX";
    std::string dir = mkdtemp(pattern.data());
    setenv(vexa::kSysrootVariable, dir.c_str(), 1);
    for (const char* sub : {"/data/vendor/display", "/mnt/vendor/persist/display", "/vendor/etc/display"}) {
      MakeDirs(dir + sub);
    }
    return dir;
  }();
  return root;
}

void Request(vexa::VexaKivInterface* parser, vexa::VexaKivOps op, const vexa::ColorMode& mode) {
  vexa::ModeRenderInputParams input{vexa::kModeRenderInputParamsVersion, mode.gamut, mode.gamma,
                                    mode.intent, mode.hw_assets};
  vexa::HwConfigOutputParams output{vexa::kHwConfigOutputParamsVersion, {}};
  vexa::VexaKivPayload in{0, vexa::kModeRenderInputParamsLen, 0, &input};
  vexa::VexaKivPayload out{0, vexa::kHwConfigOutputParamsLen, 0, &output};
  parser->ProcessOps(op, in, &out);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  vexa::fuzz::InitFuzzing();
  const std::string& root = Sysroot();
  std::vector<std::string> parts = vexa::fuzz::SplitText(vexa::fuzz::AsText(data, size), kSeparator);
  parts.resize(3);
  const std::string panel = vexa::fuzz::kFuzzPanel;
  WriteFile(root + "/mnt/vendor/persist/display/factory_calib_data_" + panel + ".json", parts[0]);
  WriteFile(root + "/vendor/etc/display/vexa_calib_data_" + panel + ".json", parts[1]);
  WriteFile(root + "/vendor/etc/display/vexa_merge_rules_" + panel + ".json", parts[2]);

  std::unique_ptr<vexa::VexaKivInterface> parser(GetVexaKivInterface(2, 0));
  if (!parser) return 0;
  parser->Init(panel);
  vexa::ColorModeList list{vexa::kColorModeListVersion, {}};
  vexa::VexaKivPayload get{vexa::kVexaKivPayloadVersion, vexa::kColorModeListLen, vexa::kKivModesList, &list};
  parser->GetProperty(&get);
  for (const vexa::ColorMode& mode : list.modes) {
    Request(parser.get(), vexa::kKivModeRenderIntent, mode);
    Request(parser.get(), vexa::kKivModeSwAssets, mode);
  }
  vexa::HwConfigOutputParams dither{vexa::kHwConfigOutputParamsVersion, {}};
  vexa::VexaKivPayload get_dither{vexa::kVexaKivPayloadVersion, vexa::kHwConfigOutputParamsLen,
                                  vexa::kKivPbDitherHwConfig, &dither};
  parser->GetProperty(&get_dither);
  parser->DeInit();
  return 0;
}
