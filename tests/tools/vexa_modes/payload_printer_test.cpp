#include "tools/vexa_modes/payload_printer.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <numeric>
#include <sstream>

namespace vexa::tools {
namespace {

template <typename Record>
HwConfigPayload Make(const char* name, uint32_t len, const std::function<void(Record&)>& fill) {
  auto record = std::make_shared<Record>();  // zeroed, on the heap (a gamut record is 115 KiB)
  record->len = len;
  fill(*record);
  return {kHwConfigPayloadSize, name, record, len};
}

// The decoders read only what the record holds, whatever its counts claim, and decode a record
// only by the name and length it was made for.
TEST(PayloadPrinterTest, DecodesWithinTheRecordAndOnlyWhatItKnows) {
  const struct {
    HwConfigPayload payload;
    std::vector<std::string> expected;  // substrings of the output
    std::string absent;
  } cases[] = {
      {Make<GamutConfig>("PostBlendGamut", 117936,
                         [](auto& r) {
                           r.num_entries = 99999;
                           r.entries[16] = {4095, 0, 0, 4000, 12, 3};
                         }),
       {"num_entries 99999", "white   entry 4912",
        "red     entry   16 grid (16, 0, 0): in (4095,   0,   0) out (4000,  12,   3)"},
       "not decoded"},
      {Make<DitherConfig>("PostBlendDither", 96,
                          [](auto& r) {
                            r.matrix_size = 40, std::iota(r.matrix, r.matrix + 16, 0);
                          }),
       {"matrix (40): 0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15\n"}, "not decoded"},
      {Make<GameConfig>("PostBlendMixerGc", 32, [](auto&) {}),
       {"  PostBlendMixerGc (config_size 32)\n    no decoder for this payload name\n"}, "enable"},
      {Make<PccConfig>("PostBlendGamut", 280, [](auto&) {}),
       {"record length 280, expected 117936: not decoded"}, "num_entries"},
      {{kHwConfigPayloadSize, "PostBlendPCC", nullptr, 280}, {"    no record\n"}, "enable"},
  };
  for (const auto& c : cases) {
    std::ostringstream out;
    PrintPayload(out, c.payload);
    for (const std::string& text : c.expected)
      EXPECT_NE(out.str().find(text), std::string::npos) << text << "\nin:\n" << out.str();
    EXPECT_EQ(out.str().find(c.absent), std::string::npos) << c.absent << "\nin:\n" << out.str();
  }
}

}  // namespace
}  // namespace vexa::tools
