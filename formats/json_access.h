// Checked access to untrusted JSON.
//
// jsoncpp's accessors assert on a wrong type (an exception, or an abort where jsoncpp is built
// without exceptions), so nothing in the library converts a value without checking it first.
// JsonFieldReader reads the members of one unit (an asset section, a mode, a rule, a table):
// a missing or null member reads as jsoncpp's default, a member that jsoncpp would refuse to
// convert logs one error naming the member and marks the unit as refused (ok() false).
#ifndef VEXA_FORMATS_JSON_ACCESS_H_
#define VEXA_FORMATS_JSON_ACCESS_H_

#include <json/json.h>

#include <cstdint>
#include <string>
#include <vector>

namespace vexa {

// The member, or null when `object` is not an object or has no such member.
const Json::Value* FindMember(const Json::Value& object, const char* key);

// True when the member exists and is not null.
bool HasMember(const Json::Value& object, const char* key);

// Names of an object's members in jsoncpp's (ascending byte) order; empty for a non-object.
std::vector<std::string> MemberNames(const Json::Value& value);

// What kind of unit a context frame stands for, so that tools can attribute log lines.
enum class JsonScope { kOther, kFile, kMode, kRule, kSection, kTable, kMember };

struct JsonContextFrame {
  JsonScope scope = JsonScope::kOther;
  std::string name;  // the unit's own name: a path, a mode name, an asset key, a member
  std::string text;  // how error lines show it; empty: not shown
};

// What a file, mode, section or table is being read, for error lines. Scopes nest per thread:
// ScopedJsonContext mode(JsonScope::kMode, "Vivid", "mode \"Vivid\"");
class ScopedJsonContext {
 public:
  explicit ScopedJsonContext(std::string what);
  ScopedJsonContext(JsonScope scope, std::string name, std::string text);
  ~ScopedJsonContext();
  ScopedJsonContext(const ScopedJsonContext&) = delete;
  ScopedJsonContext& operator=(const ScopedJsonContext&) = delete;
};

// The current context as " in <outer>, <inner>" (frames with a text only), or empty.
std::string JsonContextSuffix();

// The current frames of this thread, outermost first.
const std::vector<JsonContextFrame>& JsonContextFrames();

// The JSON type name used in error lines ("string", "array", ...).
const char* JsonTypeName(const Json::Value& value);

// Logs the refusal of a member whose type is wrong, as a line of `function` (the function that
// reads the unit: an asset's SetConfig unless the caller names another).
void LogWrongType(const char* log_label, const char* member, const char* expected,
                  const Json::Value& found, const char* function = "SetConfig");

class JsonFieldReader {
 public:
  // `object` must outlive the reader. A value that is neither an object nor null refuses the unit
  // at once (every read then gives its default). Error lines carry `log_label` and `function`.
  JsonFieldReader(const Json::Value& object, const char* log_label,
                  const char* function = "SetConfig");

  bool Has(const char* key) const;
  uint32_t Uint(const char* key);
  int32_t Int(const char* key);
  double Double(const char* key);
  float Float(const char* key);
  bool Bool(const char* key);
  std::string String(const char* key);
  // An array member (a null value when missing); anything else but null refuses the unit.
  const Json::Value& Array(const char* key);
  // An object member (a null value when missing); anything else but null refuses the unit.
  const Json::Value& Object(const char* key);
  // The raw member, unchecked (a null value when missing).
  const Json::Value& Raw(const char* key) const;

  // Elements of an array obtained from Array(); `member` names the array in error lines.
  uint32_t ElementUint(const Json::Value& array, Json::ArrayIndex index, const char* member);
  std::string ElementString(const Json::Value& array, Json::ArrayIndex index, const char* member);

  // Marks the unit refused with an error line of the caller's.
  void Refuse() { ok_ = false; }
  bool ok() const { return ok_; }
  const Json::Value& object() const { return object_; }

 private:
  bool Convertible(const Json::Value& value, Json::ValueType type, const char* member,
                   const char* expected);

  const Json::Value& object_;
  const char* log_label_;
  const char* function_;
  bool ok_ = true;
};

}  // namespace vexa

#endif  // VEXA_FORMATS_JSON_ACCESS_H_
