// A whole merge-rules file and the version check of each rule.
#include <cstddef>
#include <cstdint>

#include "formats/json_parser.h"
#include "formats/merge_caps.h"
#include "fuzz/fuzz_support.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  vexa::fuzz::InitFuzzing();
  auto rules = vexa::json_parser::parse_mode_merge_rules(vexa::fuzz::AsText(data, size),
                                                         vexa::fuzz::kFuzzPanel);
  if (!rules) return 0;
  for (const auto& rule : *rules) {
    if (rule) vexa::MergeVersionCheck(rule->version_context);
  }
  return 0;
}
