// Set-up shared by the fuzz targets: log lines are formatted (so format faults show) but not
// printed, every information line is enabled, and any C++ exception aborts the run.
#ifndef VEXA_FUZZ_FUZZ_SUPPORT_H_
#define VEXA_FUZZ_FUZZ_SUPPORT_H_

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace vexa::fuzz {

// The panel key the seeds use.
constexpr char kFuzzPanel[] = "panel";

void InitFuzzing();

inline std::string AsText(const uint8_t* data, size_t size) {
  return std::string(reinterpret_cast<const char*>(data), size);
}

// Splits `text` at every occurrence of `separator`.
std::vector<std::string> SplitText(const std::string& text, const std::string& separator);

}  // namespace vexa::fuzz

#endif  // VEXA_FUZZ_FUZZ_SUPPORT_H_
