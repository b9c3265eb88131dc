// libvexa-algo.so as the parser loads it: its factory, and a merged mode whose gamut and PCC
// payloads hold the composition of the factory mode's main tables after the workflow mode's
// tuning. The library is opened by its build path first, so that the parser's open by name finds
// this library and not the test double.
#include <dlfcn.h>
#include <gtest/gtest.h>

#include "support/gamut_tables.h"
#include "support/parser_e2e.h"

namespace vexa::testing {
namespace {

using AlgoLibraryTest = ParserE2eTest;

// The real library, opened by path for the life of the object, also when a test stops early.
struct RealAlgoLibrary {
  void* handle = dlopen(VEXA_ALGO_LIBRARY_PATH, RTLD_NOW | RTLD_LOCAL);
  ~RealAlgoLibrary() {
    if (handle != nullptr) dlclose(handle);
  }
};

const HwConfigPayload* Find(const HwConfigOutputParams& out, const std::string& name) {
  for (const HwConfigPayload& payload : out.payloads) {
    if (payload.name == name) return &payload;
  }
  return nullptr;
}

// One "a,b,c" string per grid point.
std::string MapFine(const GridFunction& f) {
  std::string rows;
  for (uint32_t i = 0; i < kGamutEntries; ++i) {
    const RgbWord out = f(Lut3d::GridPoint(i));
    rows += (i ? ",\"" : "\"") + std::to_string(out[0]) + "," + std::to_string(out[1]) + "," +
            std::to_string(out[2]) + "\"";
  }
  return "[" + rows + "]";
}

TEST_F(AlgoLibraryTest, FactoryServesInterfaceTwoZeroOnly) {
  const RealAlgoLibrary library;
  ASSERT_NE(library.handle, nullptr) << dlerror();
  auto factory = reinterpret_cast<decltype(&GetVexaAlgoInterface)>(dlsym(library.handle, "GetVexaAlgoInterface"));
  ASSERT_NE(factory, nullptr);
  EXPECT_EQ(factory(2, 1), nullptr);
  EXPECT_EQ(factory(1, 0), nullptr);
  VexaKivInterface* algo = factory(2, 0);
  ASSERT_NE(algo, nullptr);
  EXPECT_EQ(algo->Init(kPanel), 0);
  EXPECT_EQ(algo->DeInit(), 0);
  delete algo;
}

TEST_F(AlgoLibraryTest, MergedModeHoldsTheMainTablesAfterTheTuning) {
  const GridFunction main = [](const RgbWord& p) -> RgbWord { return {p[1], p[0], 4095 - p[2]}; };
  const GridFunction tuning = [](const RgbWord& p) -> RgbWord { return {p[0] / 2, p[1], p[2]}; };
  device_.Write(kFactoryFile, ModesText(Mode(
      "FactoryFloor", "P3", 384, "factory",
      R"("PostBlendGamut":{"enable":true,"mapFine":)" + MapFine(main) + "}," +
          R"("PostBlendPCC":{"enable":true,"R":{"c":10,"r":0.5},"G":{"g":2},"B":{"c":-5,"b":1}},)" + Dither(1))));
  device_.Write(CalibFile(kDataDir), ModesText(Mode(
      "Workflow", "P3", 5, "workflow",
      R"("PostBlendGamut":{"enable":true,"mapFine":["0,0,0"],"Tuning":)" + MapFine(tuning) + "}," +
          R"("PostBlendPCC":{"enable":true,"R":{"r":1},"G":{"g":1},"B":{"b":1},)"
          R"("Tuning":{"R":{"c":4,"r":1},"G":{"g":0.5},"B":{"b":1.5}}})")));
  device_.Write(RulesFile(kDataDir), RulesText(R"({"Version":1})"));

  const RealAlgoLibrary library;
  ASSERT_NE(library.handle, nullptr) << dlerror();
  auto parser = std::make_unique<VexaJsonModeParser>();
  ASSERT_EQ(parser->Init(kPanel), 0);
  void* by_name = dlopen("libvexa-algo.so", RTLD_NOW | RTLD_NOLOAD);
  EXPECT_EQ(by_name, library.handle);  // the parser holds this library, not another of the same name
  if (by_name != nullptr) dlclose(by_name);

  HwConfigOutputParams out{kHwConfigOutputParamsVersion, {}};
  ASSERT_EQ(RequestMode(*parser, kKivModeRenderIntent, ModeRequest(12, 1, 5, Names(9)), &out), 0);
  const HwConfigPayload* gamut_payload = Find(out, "PostBlendGamut");
  const HwConfigPayload* pcc_payload = Find(out, "PostBlendPCC");
  ASSERT_TRUE(gamut_payload && pcc_payload) << ::testing::PrintToString(PayloadNames(out));
  const GamutConfig& gamut = RecordOf<GamutConfig>(*gamut_payload);
  ASSERT_TRUE(gamut.enable);
  ASSERT_EQ(std::make_pair(gamut.grid_mode, gamut.num_entries), std::make_pair(1u, kGamutEntries));
  for (uint32_t i = 0; i < kGamutEntries; ++i) {
    const GamutEntry& e = gamut.entries[i];
    const RgbWord p = Lut3d::GridPoint(i);
    ASSERT_EQ((RgbWord{e.in_0, e.in_1, e.in_2}), p) << i;
    ASSERT_EQ((RgbWord{e.out_0, e.out_1, e.out_2}), main(tuning(p))) << i;
  }
  const PccConfig& pcc = RecordOf<PccConfig>(*pcc_payload);
  EXPECT_TRUE(pcc.enable);
  const pcc_coeff_data& k = pcc.coeffs;
  const std::vector<double> got = {k.red.c, k.red.r, k.green.g, k.blue.c, k.blue.b, k.red.g, k.green.rr};
  const std::vector<double> expected = {12, 0.5, 1, -5, 1.5, 0, 0};
  for (size_t i = 0; i < got.size(); ++i) EXPECT_NEAR(got[i], expected[i], 1e-9) << i;
  EXPECT_TRUE(log_.Errors().empty()) << log_.Dump();
}

}  // namespace
}  // namespace vexa::testing
