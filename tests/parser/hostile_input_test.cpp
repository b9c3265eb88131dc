// Hostile content at every level where the library reads JSON (a whole file, a mode, a hex section,
// a "Common" table, a rule), each run through Init on a device whose other files and modes are
// sound. Every case: Init returns 0, the modes that the damage cannot reach still load, every listed
// mode answers both requests, and no C++ exception is thrown anywhere (in a jsoncpp built without
// exceptions each throw would be an abort).
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <stdexcept>

#include "formats/hex_coding.h"
#include "fuzz/fuzz_support.h"
#include "fuzz/throw_guard.h"
#include "support/parser_e2e.h"

namespace vexa::testing {
namespace {

constexpr char kMarker[] = "\"@HOSTILE@\"";

// A sound device with every kind of asset: a factory file, a calibration file with shared tables
// and a rules file, in readable form (sections and tables as objects).
const char kFactory[] = R"({"Version": 2, "panelA": {"FactoryFloor": {
  "Applicability": {"ColorPrimaries": "P3", "GammaTransfer": "sRGB", "RenderIntent": 384, "RenderIntentName": "factory"},
  "PostBlendGamut": {"enable": true, "mapFine": ["10,20,30", "40,50,60"]},
  "PostBlendPCC": {"enable": true, "R": {"c": 0.5, "r": 1.0}, "G": {"g": 1.0}, "B": {"b": 1.0}},
  "PostBlendGC": {"enable": true, "lutR": [0, 4], "lutG": [0, 4], "lutB": [0, 4]},
  "PostBlendIGC": {"enable": true, "lutR": [0, 4], "lutG": [0, 4], "lutB": [0, 4]},
  "PostBlendDither": {"enable": true, "strengthR": 1, "matrix": [1, 2, 3]}}}})";

const char kCalibration[] = R"({"Version": 3,
 "Common": {"PostBlendGC": {"numEntries": 4, "Predefined": {"g": "0,1,2,3"}},
            "PostBlendIGC": {"numEntries": 2, "Custom": {"i": {"lutR": "0,4", "lutG": "0,4", "lutB": "0,4"}}},
            "PostBlendGamut": {"numEntries": 2, "Custom": {"p3": "1,2,3,4,5,6"}}},
 "panelA": {
  "Native": {"Applicability": {"ColorPrimaries": "sRGB", "GammaTransfer": "sRGB", "RenderIntent": 0, "RenderIntentName": "native"},
    "WhitePoint": 6500, "MergeId": "n", "DynamicRange": "SDR",
    "PostBlendIGC": {"enable": true, "numEntries": 2, "Custom": "i", "ditherEnable": true, "ditherStrength": 4},
    "PostBlendGC": {"enable": true, "numEntries": 4, "Predefined": "g"},
    "PostBlendGamut": {"enable": true, "numEntries": 2, "Custom": "p3", "Tuning": "1,1,1,2,2,2"},
    "PostBlendPaDither": {"enable": true, "strength": 4, "offsetEn": 1, "matrix": [0, 8, 2, 10]}},
  "Vivid": {"Applicability": {"ColorPrimaries": "sRGB", "GammaTransfer": "2p2", "RenderIntent": 2, "RenderIntentName": "vivid"},
    "PostBlendPa": {"cont": 0.25, "hue": -7, "sat": 1.5, "satThresh": 0.125, "val": -0.75,
      "MemColSkin": {"enable": true, "protectContrast": true, "blendingEnable": true,
        "hue": {"adj": -3, "min": 10, "max": 40, "mid": 25, "protect": true},
        "sat": {"adj": 0.5, "min": 0.1, "max": 0.9, "trapezoidEdgeLeft": "SLOPE", "trapezoidEdgeRight": "STEP"}},
      "MemColSky": {"protectVsSixZone": true, "val": {"protect": true}},
      "SixZone": {"enable": true, "numEntries": 384, "hueCurve": [1, 2], "satCurve": "1,2", "valCurve": [3]},
      "SixZoneThresholds": {"sat": {"min": -5, "max": 60, "offset": 7, "svEnable": true},
        "satLow": 11, "satMid": 22, "satHigh": 33}},
    "PostBlendDE": {"enable": true, "flags": "SHARPNESS", "sharp": 16, "thrQuiet": 8, "thrDieout": 400,
      "thrLow": 16, "thrHigh": 64, "clip": 512, "quality": "HIGH_QUALITY_GRAPHICS", "deBlend": 0,
      "deLpfHigh": 1, "deLpfMid": 2, "deLpfLow": 3},
    "PostBlendDither": {"enable": true, "ditherMode": "LUMA", "strengthR": 2, "strengthG": 2,
      "strengthB": 2, "temporalEnable": 1, "matrix": [0, 8, 2, 10]}},
  "Workflow": {"Applicability": {"ColorPrimaries": "P3", "GammaTransfer": "sRGB", "RenderIntent": 5, "RenderIntentName": "workflow"},
    "PostBlendPCC": {"enable": true, "R": {"r": 1.0, "rgb": 0.0001}, "G": {"g": 1.0, "gg": 0.01}, "B": {"b": 1.0},
      "Tuning": {"R": {"c": 0.125, "r": 0.25}, "G": {"g": 0.5}, "B": {"b": -0.25}}},
    "PostBlendHdrBlob": {"blob": "hdr10"}, "PostBlendGameBlob": {"enable": true, "blob": "7B7D"}}}})";

const char kRules[] = R"({"panelA": {"ModeMerge": {"Version": 1, "PostBlendGamutMergeOp": {"Version": 1}},
 "MergedModes": {"Merged": {
  "Applicability": {"ColorPrimaries": "P3", "GammaTransfer": "sRGB", "RenderIntent": 7, "RenderIntentName": "merged"},
  "ModeNameInputLeft": "FactoryFloor", "ModeNameInputRight": "Workflow",
  "MergeOps": {"PostBlendGamutMergeOp": "LEFT_OPERAND", "PostBlendPCCMergeOp": "RIGHT_OPERAND",
               "PostBlendDitherMergeOp": "LEFT_OPERAND", "PostBlendPaMultiZoneMergeOp": "IDENTITY"}}}}})";

const Names kFactoryModes = {"factory"};
const Names kCalibrationModes = {"native", "vivid", "workflow"};
const Names kAllModes = {"factory", "native", "vivid", "workflow"};

std::string Hex(const std::string& text) {
  std::string hex;
  EncodeData(text, hex);
  return hex;
}
std::string FileText(const std::string& readable) { return CompactText(EncodeModesFile(ParseReadable(readable), kPanel)); }
std::string RulesFileText() { return CompactText(ParseReadable(kRules)); }

// The three files of a device as written to disk.
struct DeviceTexts {
  std::string factory = FileText(kFactory);
  std::string calibration = FileText(kCalibration);
  std::string rules = RulesFileText();
};

// `text` (compact JSON holding one kMarker) with the marker replaced by `hostile`.
std::string Splice(const std::string& text, const std::string& hostile) {
  const size_t at = text.find(kMarker);
  if (at == std::string::npos) throw std::logic_error("no marker in fixture");
  return text.substr(0, at) + hostile + text.substr(at + sizeof(kMarker) - 1);
}

class HostileInputTest : public ::testing::Test {
 protected:
  void TearDown() override {
    EXPECT_EQ(fuzz::ThrowCount(), throws_at_start_) << "C++ exceptions thrown while the library ran";
    std::printf("[ hostile  ] %zu inputs through Init\n", cases_);
  }

  // Writes the device, runs Init and every request; `required` modes must be listed.
  void Check(const DeviceTexts& texts, const Names& required, const std::string& what) {
    ++cases_;
    device_.Write(kFactoryFile, texts.factory);
    device_.Write(CalibFile(kDataDir), texts.calibration);
    device_.Write(RulesFile(kDataDir), texts.rules);
    VexaJsonModeParser parser;
    ASSERT_EQ(parser.Init(kPanel), 0) << what;
    ColorModeList list{kColorModeListVersion, {}};
    ASSERT_EQ(GetProperty(parser, kKivModesList, kColorModeListLen, &list), 0) << what;
    std::set<std::string> listed;
    for (const ColorMode& mode : list.modes) {
      listed.insert(mode.render_intent_name);
      for (VexaKivOps op : {kKivModeRenderIntent, kKivModeSwAssets}) {
        HwConfigOutputParams out{kHwConfigOutputParamsVersion, {}};
        const int32_t status = RequestMode(
            parser, op, ModeRequest(mode.gamut, mode.gamma, mode.intent, mode.hw_assets), &out);
        EXPECT_TRUE(status == 0 || status == -22) << what << ": status " << status;
        for (const HwConfigPayload& payload : out.payloads) {
          EXPECT_TRUE(payload.config != nullptr && payload.config_size > 0) << what << ": " << payload.name;
        }
      }
    }
    HwConfigOutputParams dither{kHwConfigOutputParamsVersion, {}};
    GetProperty(parser, kKivPbDitherHwConfig, kHwConfigOutputParamsLen, &dither);
    for (const std::string& name : required) {
      EXPECT_EQ(listed.count(name), 1u) << what << ": mode " << name << " lost\n" << log_.Dump();
    }
    log_.Clear();
  }

  // Every text placement of one hostile text: each file, a mode, a hex section, a shared-table
  // kind, a rule and the merge versions.
  void CheckEverywhere(const std::string& hostile, const std::string& name) {
    for (const Placement& placement : Placements()) {
      DeviceTexts texts;
      std::string& file = placement.file == kFactoryText ? texts.factory
                          : placement.file == kCalibrationText ? texts.calibration : texts.rules;
      file = placement.marked.empty() ? hostile
                                      : Splice(placement.marked, placement.as_hex ? "\"" + Hex(hostile) + "\"" : hostile);
      Check(texts, placement.required, name + " as " + placement.where);
    }
  }

  enum FileKind { kFactoryText, kCalibrationText, kRulesText };
  struct Placement {
    const char* where;
    FileKind file;
    std::string marked;  // the file's text holding the marker; empty: the whole file
    bool as_hex;         // the hostile text goes in hex-encoded, as a section or table
    const Names& required;
  };
  static const std::vector<Placement>& Placements() {
    // `entry` inserted before `anchor` in the readable file, then the file encoded.
    const auto marked = [](FileKind file, const std::string& anchor, const std::string& entry) {
      const std::string readable = file == kRulesText ? kRules : kCalibration;
      const size_t at = readable.find(anchor);
      if (at == std::string::npos) throw std::logic_error("no anchor in fixture");
      const std::string text = readable.substr(0, at) + entry + readable.substr(at);
      return file == kRulesText ? CompactText(ParseReadable(text)) : FileText(text);
    };
    const std::string bad = R"("Bad": {"Applicability": {"RenderIntent": 9, "RenderIntentName": "bad"}, )";
    static const std::vector<Placement> placements = {
        {"factory file", kFactoryText, "", false, kCalibrationModes},
        {"calibration file", kCalibrationText, "", false, kFactoryModes},
        {"rules file", kRulesText, "", false, kAllModes},
        {"mode", kCalibrationText, marked(kCalibrationText, "\"Native\":", "\"Bad\": \"@HOSTILE@\", "), false,
         kFactoryModes},
        {"hex section", kCalibrationText,
         marked(kCalibrationText, "\"Native\":", bad + "\"PostBlendDE\": \"@HOSTILE@\"}, "), true, kAllModes},
        // After the sound table of the kind: of two equal keys the last one counts.
        {"common table kind", kCalibrationText,
         marked(kCalibrationText, "},\n \"panelA\"", ", \"PostBlendGamut\": \"@HOSTILE@\""), true, kFactoryModes},
        {"rule", kRulesText, marked(kRulesText, "\"Merged\":", "\"Bad\": \"@HOSTILE@\", "), false, kAllModes},
        {"merge versions", kRulesText,
         marked(kRulesText, "\"Version\": 1,", "\"PostBlendGCMergeOp\": \"@HOSTILE@\", "), false, kAllModes},
    };
    return placements;
  }

  Device device_{MemoryBase()};
  LogCapture log_{0};
  size_t cases_ = 0;
  const size_t throws_at_start_ = fuzz::ThrowCount();
};

// The throw counter sees throws made inside jsoncpp, so a zero count means something.
TEST(ThrowGuardTest, CountsThrowsFromJsoncppAndTheTestItself) {
  const size_t before = fuzz::ThrowCount();
  try {
    throw std::runtime_error("counted");
  } catch (const std::exception&) {
  }
  Json::Value array(Json::arrayValue);
  try {
    (void)array.asString();  // jsoncpp refuses the conversion by throwing
  } catch (const std::exception&) {
  }
  EXPECT_EQ(fuzz::ThrowCount(), before + 2);
}

TEST_F(HostileInputTest, SoundDeviceLoadsEveryMode) {
  Check(DeviceTexts{}, kAllModes, "sound device");
  EXPECT_EQ(cases_, 1u);
}

std::vector<std::string> FilesIn(const std::string& directory) {
  std::vector<std::string> files;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(directory, error)) files.push_back(entry.path());
  std::sort(files.begin(), files.end());
  return files;
}
std::string ReadFile(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(in), {});
}

// Every file of JSONTestSuite's parsing tests (valid, invalid and implementation-defined JSON).
TEST_F(HostileInputTest, JsonTestSuiteEverywhere) {
  const std::vector<std::string> files = FilesIn(VEXA_SOURCE_DIR "/tests/data/json_test_suite");
  ASSERT_GE(files.size(), 300u);
  for (const std::string& path : files) CheckEverywhere(ReadFile(path), path.substr(path.rfind('/') + 1));
}

// Deep nesting around the reader's limit and far beyond, bytes that are not text, and files cut
// short or empty.
TEST_F(HostileInputTest, NestingBytesAndCutFilesEverywhere) {
  const auto nested = [](size_t levels, const std::string& open, const std::string& close) {
    std::string text;
    for (size_t i = 0; i < levels; ++i) text += open;
    text += "1";
    for (size_t i = 0; i < levels; ++i) text += close;
    return text;
  };
  std::vector<std::pair<std::string, std::string>> inputs = {
      {"", "empty"}, {"{", "one brace"}, {" ", "one blank"}, {"\xff", "one byte 0xff"},
      {std::string(1, '\0'), "one NUL"}, {"{\"a\":\"\xc3\x28\xff\"}", "invalid UTF-8"},
      {"\xef\xbb\xbf{}", "byte order mark"}, {"{\"a\":1}\x00trailing", "NUL then text"}};
  for (size_t levels : {999, 1000, 1001, 100000}) {
    inputs.push_back({nested(levels, "[", "]"), std::to_string(levels) + " arrays"});
    inputs.push_back({nested(levels, "{\"a\":", "}"), std::to_string(levels) + " objects"});
  }
  const DeviceTexts sound;
  for (const std::string& file : {sound.factory, sound.calibration, sound.rules}) {
    for (size_t cut = 1; cut < 16; ++cut) inputs.push_back({file.substr(0, file.size() * cut / 16), "cut file"});
    std::string bad_utf8 = file;
    bad_utf8.insert(bad_utf8.find("\":") , "\xfe\xed");
    inputs.push_back({bad_utf8, "invalid UTF-8 in a key"});
  }
  for (const auto& [text, name] : inputs) CheckEverywhere(text, name);
}

// 100 MB of blanks as a file, before a sound file, and inside a section.
TEST_F(HostileInputTest, HundredMegabytesOfWhitespace) {
  const std::string blanks(100u << 20, ' ');
  DeviceTexts texts;
  texts.factory = blanks;
  Check(texts, kCalibrationModes, "100 MB of blanks as the factory file");
  texts.factory = blanks + DeviceTexts{}.factory;
  Check(texts, kAllModes, "100 MB of blanks before the factory file");
}

// Values that a member of any type may be given instead of its own: other types, numbers out of
// every range a reader could assume, counts at and past the limits, texts that are not numbers.
std::vector<Json::Value> HostileValues(const Json::Value& original) {
  std::vector<Json::Value> values = {
      "x", "", "NaN", "1e999,-1,4294967296", "\xff\xfe", true, Json::Value(Json::arrayValue),
      Json::Value(Json::objectValue), -1, Json::Int64(-2147483649LL), Json::UInt64(4294967296ULL),
      Json::UInt64(~0ULL), 1e300, -1e300, 0.5, 0, 4914, 1000000000};
  Json::Value nested;
  nested["a"].append("x");
  values.push_back(nested);
  std::string long_list;  // one entry past a 3D table, as text
  for (int i = 0; i < 3 * 4914; ++i) long_list += "1,";
  values.push_back(long_list);
  for (Json::ArrayIndex count : {17u, 385u, 1025u, 4914u}) {  // past each record's capacity
    Json::Value longer(Json::arrayValue);
    const Json::Value fill = original.isArray() && !original.empty() ? original[0] : Json::Value(1);
    for (Json::ArrayIndex i = 0; i < count; ++i) longer.append(fill);
    values.push_back(longer);
  }
  return values;
}

using JsonPath = std::vector<std::string>;  // member names; "#0" the first element of an array

void CollectPaths(const Json::Value& value, JsonPath& path, std::vector<JsonPath>& out) {
  if (value.isObject()) {
    for (const std::string& name : value.getMemberNames()) {
      path.push_back(name);
      out.push_back(path);
      CollectPaths(value[name], path, out);
      path.pop_back();
    }
  } else if (value.isArray() && !value.empty()) {
    path.push_back("#0");
    out.push_back(path);
    CollectPaths(value[0], path, out);
    path.pop_back();
  }
}

Json::Value& At(Json::Value& root, const JsonPath& path) {
  Json::Value* value = &root;
  for (const std::string& step : path) value = step == "#0" ? &(*value)[0] : &(*value)[step];
  return *value;
}

// Every member of every file, at any depth (asset members inside hex sections and shared tables
// included), given each hostile value in turn. A change inside a calibration mode may cost that
// mode; anything else in a modes file may cost that file's modes; a rules file costs no mode.
TEST_F(HostileInputTest, EveryMemberGivenEveryWrongValue) {
  const struct {
    const char* file;
    const char* readable;
    bool is_rules;
  } files[] = {{"factory", kFactory, false}, {"calibration", kCalibration, false}, {"rules", kRules, true}};
  for (const auto& file : files) {
    const Json::Value sound = ParseReadable(file.readable);
    std::vector<JsonPath> paths;
    JsonPath path;
    CollectPaths(sound, path, paths);
    for (const JsonPath& member : paths) {
      Names required = file.is_rules ? kAllModes : file.readable == kFactory ? kCalibrationModes : kFactoryModes;
      if (file.readable == kCalibration && member.size() >= 2 && member[0] == kPanel) {
        required = kAllModes;
        const std::string& intent_name = sound[kPanel][member[1]]["Applicability"]["RenderIntentName"].asString();
        required.erase(std::find(required.begin(), required.end(), intent_name));
      }
      std::string where = file.file;
      for (const std::string& step : member) where += "/" + step;
      for (const Json::Value& hostile : HostileValues(At(const_cast<Json::Value&>(sound), member))) {
        Json::Value changed = sound;
        At(changed, member) = hostile;
        DeviceTexts texts;
        (file.is_rules ? texts.rules : file.readable == kFactory ? texts.factory : texts.calibration) =
            file.is_rules ? CompactText(changed) : CompactText(EncodeModesFile(changed, kPanel));
        Check(texts, required, where + " = " + CompactText(hostile).substr(0, 40));
        if (HasFailure()) return;
      }
    }
  }
}

// The fuzzers' kept inputs: whole device trees, modes files and rules files.
TEST_F(HostileInputTest, FuzzCorpora) {
  const std::string corpus = VEXA_SOURCE_DIR "/fuzz/corpus/";
  for (const std::string& path : FilesIn(corpus + "modes_file")) {
    DeviceTexts texts;
    texts.calibration = ReadFile(path);
    Check(texts, kFactoryModes, path);
  }
  for (const std::string& path : FilesIn(corpus + "rules_file")) {
    DeviceTexts texts;
    texts.rules = ReadFile(path);
    Check(texts, kAllModes, path);
  }
  for (const std::string& path : FilesIn(corpus + "device_tree")) {
    std::vector<std::string> parts = fuzz::SplitText(ReadFile(path), "\n--8<--\n");
    parts.resize(3);
    Check(DeviceTexts{parts[0], parts[1], parts[2]}, {}, path);
  }
}

}  // namespace
}  // namespace vexa::testing
