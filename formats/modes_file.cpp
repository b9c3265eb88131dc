// The modes file: format version, the shared "Common" tables and one object per mode under the
// panel key, each asset section carried as hex text of its own JSON document.
#include <sched.h>

#include <utility>

#include "formats/hex_coding.h"
#include "formats/json_access.h"
#include "formats/json_parser.h"
#include "formats/json_text.h"
#include "formats/keys.h"
#include "formats/mode_descr_json.h"
#include "formats/mode_members.h"
#include "modes/kiv_mode.h"
#include "platform/log.h"

namespace vexa {
namespace json_parser {
namespace {

constexpr char kLogLabel[] = "VexaJsonModeParser::JsonParser";
// A long file yields the processor once per this many modes.
constexpr size_t kModesPerYield = 5;

// The buffer that every section decodes into while a file (or a mode) is parsed on this thread:
// one large allocation per file instead of one per section. Released when the outermost parse
// ends, so nothing stays after start-up.
class DecodeScratch {
 public:
  DecodeScratch() { ++depth_; }
  ~DecodeScratch() {
    if (--depth_ == 0) buffer_ = ByteBuffer();
  }
  DecodeScratch(const DecodeScratch&) = delete;
  DecodeScratch& operator=(const DecodeScratch&) = delete;

  static ByteBuffer* buffer() { return &buffer_; }

 private:
  static thread_local int depth_;
  static thread_local ByteBuffer buffer_;
};

thread_local int DecodeScratch::depth_ = 0;
thread_local ByteBuffer DecodeScratch::buffer_;

// Replaces the hex text of object[name] by the document it encodes; false when it does not
// decode to JSON.
bool DecodeInPlace(Json::Value& object, const std::string& name) {
  const std::string_view decoded = DecodeDataInto(object[name], DecodeScratch::buffer());
  Json::Value parsed;
  if (!PopulateJsonValue(decoded, parsed)) return false;
  object[name] = std::move(parsed);
  return true;
}

// Decodes every table of "Common" in place; false (with an error line) at the first bad one.
bool DecodeCommonTables(Json::Value& common) {
  for (const std::string& name : MemberNames(common)) {
    if (common[name].isNull()) continue;
    if (!DecodeInPlace(common, name)) {
      VKR_LOGE("unable to decode common data \"%s\"%s", name.c_str(), JsonContextSuffix().c_str());
      return false;
    }
  }
  return true;
}

// The shared tables of a version-3 file; null when the file has none. `ok` turns false when
// "Common" is not an object or one of its tables does not decode.
std::shared_ptr<HwAssetsCommonData> ReadCommonData(JsonFieldReader& file, Json::Value& root,
                                                   uint32_t version, bool* ok) {
  *ok = true;
  if (version < kLatestModesFileVersion || !file.Has(keys::kCommon)) return nullptr;
  file.Object(keys::kCommon);
  Json::Value& common = root[keys::kCommon];
  if (!file.ok() || !DecodeCommonTables(common)) {
    *ok = false;
    return nullptr;
  }
  auto tables = std::make_shared<HwAssetsCommonData>(common);
  common = Json::Value();  // the tables are records now
  return tables;
}

// " (did you mean "<name>"?)" when a known member is a slip away from `name`, else empty.
std::string SuggestionSuffix(const std::string& name) {
  const std::string nearest = NearestModeMember(name);
  return nearest.empty() ? std::string() : " (did you mean \"" + nearest + "\"?)";
}

// A member that is neither a descriptor member nor an asset section makes no asset: say so, or a
// misspelt section would silently leave its block untouched.
void ReportUnknownMember(const std::string& mode_name, const std::string& name) {
  if (IsKnownModeMember(name)) return;
  VKR_LOGI(2, "Unknown member \"%s\" in mode \"%s\" ignored%s", name.c_str(), mode_name.c_str(),
           SuggestionSuffix(name).c_str());
}

// Decodes each asset section of a mode in place; false (with an error line) at the first one
// that is not a string or does not decode.
bool DecodeAssetSections(Json::Value& mode_value, const std::string& mode_name) {
  for (const std::string& name : MemberNames(mode_value)) {
    if (IsModeDescrMember(name)) continue;
    const Json::Value& section = mode_value[name];
    if (!section.isString() && !section.isNull()) {
      LogWrongType(kLogLabel, name.c_str(), "string of hex text", section);
      return false;
    }
    if (!DecodeInPlace(mode_value, name)) {
      VKR_LOGE("Unable to populate decoded %s asset into json value object%s", name.c_str(),
               JsonContextSuffix().c_str());
      return false;
    }
    ReportUnknownMember(mode_name, name);
  }
  return true;
}

}  // namespace

std::shared_ptr<std::vector<std::shared_ptr<KivMode>>> parse_modes(std::string_view text,
                                                                    const std::string& panel_key) {
  DecodeScratch scratch;
  Json::Value root;
  if (!PopulateJsonValue(text, root)) return nullptr;
  JsonFieldReader file(root, kLogLabel);
  const uint32_t version = file.Uint(keys::kVersion);
  if (!file.ok()) return nullptr;
  if (version < kLatestModesFileVersion) {
    VKR_LOG_PRINT(ANDROID_LOG_WARN, kLogLabel, __func__, __LINE__,
                  "Modes file version %d is not latest (%d)", static_cast<int>(version),
                  static_cast<int>(kLatestModesFileVersion));
  }
  bool common_ok = true;
  std::shared_ptr<HwAssetsCommonData> common_data = ReadCommonData(file, root, version, &common_ok);
  if (!common_ok) return nullptr;

  file.Object(panel_key.c_str());
  if (!file.ok()) return nullptr;
  auto modes = std::make_shared<std::vector<std::shared_ptr<KivMode>>>();
  if (!file.Has(panel_key.c_str())) return modes;
  Json::Value& panel = root[panel_key];
  uint32_t mode_version = version;
  size_t count = 0;
  for (const std::string& name : MemberNames(panel)) {
    if (count++ % kModesPerYield == 0) sched_yield();
    Json::Value& mode_value = panel[name];
    std::shared_ptr<KivMode> mode = parse_mode(mode_value, name, std::string(), mode_version,
                                               common_data);
    // The mode keeps records, not JSON: its tree goes now, while it is still in the cache.
    mode_value = Json::Value();
    if (mode) {
      modes->push_back(std::move(mode));
      VKR_LOGI(2, "Parsed %s", name.c_str());
    } else {
      VKR_LOGI(2, "unable to instantiate KivMode for %s", name.c_str());
    }
  }
  return modes;
}

std::shared_ptr<KivMode> parse_mode(Json::Value& mode_value, const std::string& mode_name,
                                    const std::string& /*reserved*/, uint32_t& version,
                                    const std::shared_ptr<HwAssetsCommonData>& common_data) {
  ScopedJsonContext where(JsonScope::kMode, mode_name, "mode \"" + mode_name + "\"");
  DecodeScratch scratch;
  auto def = std::make_shared<KivModeDef>();
  def->descr = std::make_shared<KivModeDescr>();
  def->asset_version = version;
  def->descr->name = mode_name;

  JsonFieldReader reader(mode_value, kLogLabel);
  ReadModeDescrFields(reader, kLogLabel, def->descr.get());
  if (!reader.ok()) return nullptr;
  def->assets = &mode_value;
  if (!DecodeAssetSections(mode_value, mode_name)) return nullptr;
  return std::make_shared<KivMode>(def, common_data);
}

}  // namespace json_parser
}  // namespace vexa
