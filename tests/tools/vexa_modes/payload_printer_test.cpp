#include "tools/vexa_modes/payload_printer.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
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

struct Case {
  const char* what;
  HwConfigPayload payload;
  std::vector<std::string> expected;  // substrings of the output
  std::vector<std::string> absent;
};

TEST(PayloadPrinterTest, DecodesEachRecordByItsName) {
  const Case cases[] = {
      {"inverse gamma",
       Make<GammaPostBlendConfig>(
           "PostBlendIGC", 88,
           [](auto& r) {
             r.enable = true, r.lut_r = {0, 100, 4095}, r.lut_b = {7}, r.dither_strength = 4;
           }),
       {"  PostBlendIGC (config_size 88)\n    enable 1\n",
        "lut_r: 3 entries, first 0, middle 100, last 4095", "lut_g: empty",
        "lut_b: 1 entries, first 7, middle 7, last 7", "dither_enable 0, dither_strength 4"},
       {}},
      {"gamut corners and centre",
       Make<GamutConfig>("PostBlendGamut", 117936,
                         [](auto& r) {
                           r.enable = true, r.grid_mode = 1, r.num_entries = kGamutEntries;
                           r.entries[16] = {4095, 0, 0, 4000, 12, 3};
                           r.entries[2456] = {2048, 2048, 2048, 2047, 2048, 2049};
                         }),
       {"enable 1, grid_mode 1, num_entries 4913",
        "red     entry   16 grid (16, 0, 0): in (4095,   0,   0) out (4000,  12,   3)",
        "grey    entry 2456 grid ( 8, 8, 8): in (2048,2048,2048) out (2047,2048,2049)",
        "black   entry    0", "green   entry  272", "yellow  entry  288 grid (16,16, 0)",
        "blue    entry 4624 grid ( 0, 0,16)", "magenta entry 4640", "cyan    entry 4896",
        "white   entry 4912 grid (16,16,16)"},
       {}},
      {"gamut prints valid entries only",
       Make<GamutConfig>("PostBlendGamut", 117936, [](auto& r) { r.num_entries = 17; }),
       {"black   entry    0", "red     entry   16"},
       {"green", "white", "grey"}},
      {"gamut count beyond the record",
       Make<GamutConfig>("PostBlendGamut", 117936, [](auto& r) { r.num_entries = 99999; }),
       {"num_entries 99999", "white   entry 4912"},
       {}},
      {"pcc",
       Make<PccConfig>("PostBlendPCC", 280,
                       [](auto& r) {
                         r.enable = true, r.coeffs.red.r = 0.98, r.coeffs.green.rg = -0.015625,
                         r.coeffs.blue.c = 1.5;
                       }),
       {"enable 1", "red   c 0, r 0.98, g 0, b 0, rr 0",
        "green c 0, r 0, g 0, b 0, rr 0, gg 0, bb 0, rg -0.015625, gb 0", "blue  c 1.5, r 0"},
       {}},
      {"dither matrix bounded by its capacity",
       Make<DitherConfig>("PostBlendDither", 96,
                          [](auto& r) {
                            r.mode = 1, r.strength_r = 2, r.strength_g = 3, r.strength_b = 4,
                            r.matrix_size = 40;
                            for (uint32_t i = 0; i < 16; ++i) r.matrix[i] = i;
                          }),
       {"mode 1 (luma)", "strength r 2, g 3, b 4",
        "matrix (40): 0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15\n"},
       {}},
      {"detail enhancement",
       Make<DETuningConfig>("PostBlendDE", 60,
                            [](auto& r) {
                              r.flags = 0x81, r.sharp = -3, r.clip = 4464, r.quality = 3,
                              r.content_type = 2;
                            }),
       {"flags 0x81, sharp -3", "clip 4464", "quality 3, content_type 2"},
       {}},
      {"picture adjustment",
       Make<PaConfig>("PostBlendPa", 15752,
                      [](auto& r) {
                        r.enable = true, r.ops = 0x121, r.global.hue = -5, r.sky.enable = 1,
                        r.six_zone.num_entries = 384;
                      }),
       {"enable 1, ops 0x121", "global: hue -5", "sky: enable 1", "skin: enable 0",
        "six zone: enable 0, num_entries 384"},
       {}},
      {"long blob",
       Make<HdrConfig>("PostBlendHdrBlob", 32, [](auto& r) { r.blob = std::string(100, 'h'); }),
       {"enable 0, blob 100 bytes: \"" + std::string(57, 'h') + "...\""},
       {std::string(58, 'h')}},
      {"unknown name",
       Make<GameConfig>("PostBlendMixerGc", 32, [](auto&) {}),
       {"  PostBlendMixerGc (config_size 32)\n    no decoder for this payload name\n"},
       {"enable"}},
      {"record of the wrong length",
       Make<PccConfig>("PostBlendGamut", 280, [](auto&) {}),
       {"record length 280, expected 117936: not decoded"},
       {"num_entries"}},
      {"no record",
       {kHwConfigPayloadSize, "PostBlendPCC", nullptr, 280},
       {"    no record\n"},
       {"enable"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    std::ostringstream out;
    PrintPayload(out, c.payload);
    for (const std::string& text : c.expected)
      EXPECT_NE(out.str().find(text), std::string::npos) << text << "\nin:\n" << out.str();
    for (const std::string& text : c.absent)
      EXPECT_EQ(out.str().find(text), std::string::npos) << text << "\nin:\n" << out.str();
  }
}

}  // namespace
}  // namespace vexa::tools
