// unpack and pack over the example device files and broken copies of them (one fault each).
#include "tools/vexa_modes/file_commands.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iterator>
#include <sstream>

#include "formats/hex_coding.h"
#include "formats/json_text.h"
#include "support/temp_dir.h"
#include "tools/vexa_modes/exit_codes.h"

namespace vexa::tools {
namespace {

const std::string kPanel = VEXA_EXAMPLE_PANEL;
const std::string kDevice = VEXA_EXAMPLE_DEVICE_ROOT;
const std::string kFactory = kDevice + "/mnt/vendor/persist/display/factory_calib_data_" + kPanel + ".json";
const std::string kCalib = kDevice + "/vendor/etc/display/vexa_calib_data_" + kPanel + ".json";
const std::string kRules = kDevice + "/vendor/etc/display/vexa_merge_rules_" + kPanel + ".json";

struct Result {
  int exit_code;
  std::string out, err;
};
using Command = int (*)(const FileCommand&, std::ostream&, std::ostream&);

Result RunFile(Command command, const std::string& in, const std::string& out_file = "") {
  std::ostringstream out, err;
  const int code = command({in, out_file}, out, err);
  return {code, out.str(), err.str()};
}

Json::Value Parsed(const std::string& text) {
  Json::Value value;
  EXPECT_TRUE(PopulateJsonValue(text, value)) << text.substr(0, 200);
  return value;
}

class FileCommandsTest : public ::testing::Test {
 protected:
  // The unpacked form of a device file, edited, written to a file of its own.
  std::string EditedUnpacked(const std::string& device_file, const std::function<void(Json::Value&)>& edit) {
    const Result unpacked = RunFile(RunUnpack, device_file);
    EXPECT_EQ(unpacked.exit_code, kExitOk) << unpacked.err;
    Json::Value document = Parsed(unpacked.out);
    edit(document);
    dir_.Put("edited.json", JsonToCompactText(document));
    return dir_.File("edited.json");
  }

  vexa::testing::TempDir dir_;
};

TEST_F(FileCommandsTest, UnpackDecodesEverySectionAndPackGivesTheDeviceFileBackByteForByte) {
  for (const std::string& device_file : {kFactory, kCalib, kRules}) {
    SCOPED_TRACE(device_file);
    ASSERT_EQ(RunFile(RunUnpack, device_file, dir_.File("unpacked.json")).exit_code, kExitOk);
    const Result packed = RunFile(RunPack, dir_.File("unpacked.json"));
    ASSERT_EQ(packed.exit_code, kExitOk) << packed.err;
    std::ifstream original(device_file, std::ios::binary);
    EXPECT_EQ(packed.out, std::string(std::istreambuf_iterator<char>(original), {}));
    EXPECT_EQ(packed.err, "");
  }
  const Json::Value calib = Parsed(RunFile(RunUnpack, kCalib).out);
  EXPECT_EQ(calib["Common"]["PostBlendGamut"]["numEntries"].asUInt(), 4913u);
  EXPECT_EQ(calib[kPanel]["srgb"]["PostBlendGC"]["Predefined"].asString(), "srgb");
  const Json::Value factory = Parsed(RunFile(RunUnpack, kFactory).out);
  EXPECT_EQ(factory[kPanel]["factory_floor"]["PostBlendGC"]["lutR"].size(), 1024u);
}

TEST_F(FileCommandsTest, PackTurnsAFileOfAnotherWriterIntoAnEquivalentOne) {
  // Lower-case hex of indented text: the library reads it, the tool writes it otherwise.
  std::string hex;
  EncodeData("{\n  \"enable\" : true,\n  \"strength\" : 3\n}\n", hex);
  for (char& c : hex) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  dir_.Put("foreign.json", "{\"Version\": 3, \"p\": {\"m\": {\"PostBlendPaDither\": \"" + hex + "\"}}}");
  const Result unpacked = RunFile(RunUnpack, dir_.File("foreign.json"), dir_.File("unpacked.json"));
  ASSERT_EQ(unpacked.exit_code, kExitOk) << unpacked.err;
  const Result packed = RunFile(RunPack, dir_.File("unpacked.json"), dir_.File("packed.json"));
  ASSERT_EQ(packed.exit_code, kExitOk) << packed.err;
  EXPECT_NE(dir_.Get("packed.json"), dir_.Get("foreign.json"));
  EXPECT_EQ(Parsed(RunFile(RunUnpack, dir_.File("packed.json")).out), Parsed(dir_.Get("unpacked.json")));
  EXPECT_EQ(Parsed(dir_.Get("unpacked.json"))["p"]["m"]["PostBlendPaDither"]["strength"].asUInt(), 3u);
}

TEST_F(FileCommandsTest, PackRefusesTheFirstUnitTheLibraryWouldDropNamingModeAndSection) {
  const struct {
    const std::string& file;
    std::function<void(Json::Value&)> edit;
    std::string message;
  } cases[] = {
      {kFactory, [&](Json::Value& d) { d[kPanel]["factory_floor"]["PostBlendGC"]["lutG"].resize(10); },
       "mode \"factory_floor\", section \"PostBlendGC\": Lut size in Json does not match"},
      {kCalib, [&](Json::Value& d) { d[kPanel]["srgb"]["PostBlendGC"]["Predefined"] = "none"; },
       "mode \"srgb\", section \"PostBlendGC\": Failed to retrieve GC LUTs from common data"},
      {kCalib, [&](Json::Value& d) { d[kPanel]["srgb"]["WhitePoint"] = "warm"; },
       "mode \"srgb\": Invalid member \"WhitePoint\": expected unsigned integer, found string"},
      {kCalib, [&](Json::Value& d) { d[kPanel]["srgb"]["PostBlendDither"] = "00"; },
       "mode \"srgb\", section \"PostBlendDither\": is a string, not a JSON document"},
      {kCalib, [&](Json::Value& d) { d["Common"]["PostBlendGC"]["Predefined"]["srgb"] = "0,1,x"; },
       "Common table \"PostBlendGC\".\"Predefined\".\"srgb\": fewer than 1024 decimal numbers, or a "
       "field that is not one; table not stored"},
      {kCalib, [&](Json::Value& d) { d["Version"] = "3"; },
       "the file: Invalid member \"Version\": expected unsigned integer, found string"},
      {kRules, [&](Json::Value& d) { d[kPanel]["MergedModes"]["srgb_factory"]["MergeOps"] = "all"; },
       "rule \"srgb_factory\": Invalid member \"MergeOps\" in merge rule \"srgb_factory\": expected "
       "object, found string"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.message);
    const std::string edited = EditedUnpacked(c.file, c.edit);
    const Result r = RunFile(RunPack, edited);
    EXPECT_EQ(r.exit_code, kExitFileRefused);
    EXPECT_EQ(r.err, "vexa-modes: pack " + edited + ": " + c.message + "\n");
    EXPECT_EQ(r.out, "");
  }
}

TEST_F(FileCommandsTest, UnpackRefusesWhatDoesNotDecodeAndReportsUnwritableOutput) {
  const struct {
    std::string contents;  // empty: no file
    std::string message;
  } cases[] = {
      {"", "cannot read the file"},
      {"{\"Version\": 3,", "not a JSON document"},
      {"{\"p\": {\"m\": {\"PostBlendGC\": \"ZZ\"}}}",
       "mode \"m\", section \"PostBlendGC\": the hex text does not decode to a JSON document"},
      {"{\"p\": {\"m\": {\"PostBlendGC\": {\"enable\": false}}}}",
       "mode \"m\", section \"PostBlendGC\": is an object, not hex text"},
      {"{\"Version\": 3, \"Common\": {\"PostBlendGC\": 7}}",
       "Common table \"PostBlendGC\": is an integer, not hex text"},
      {"{\"p\": {\"m\": 1}}", "mode \"m\": is an integer"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.message);
    const std::string path = dir_.File("in.json");
    std::remove(path.c_str());
    if (!c.contents.empty()) dir_.Put("in.json", c.contents);
    const Result r = RunFile(RunUnpack, path);
    EXPECT_EQ(r.exit_code, kExitFileRefused);
    EXPECT_EQ(r.err, "vexa-modes: unpack " + path + ": " + c.message + "\n");
  }
  const std::string unwritable = dir_.File("no/such/dir/out.json");
  const Result r = RunFile(RunUnpack, kRules, unwritable);
  EXPECT_EQ(r.exit_code, kExitFileRefused);
  EXPECT_EQ(r.err, "vexa-modes: unpack " + kRules + ": cannot write " + unwritable + "\n");
}

}  // namespace
}  // namespace vexa::tools
