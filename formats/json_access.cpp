#include "formats/json_access.h"

#include <cstring>

#include <cmath>
#include <limits>

#include "platform/log.h"

namespace vexa {
namespace {

thread_local std::vector<JsonContextFrame> t_context;

const Json::Value& NullValue() {
  static const Json::Value kNull;
  return kNull;
}

}  // namespace

const Json::Value* FindMember(const Json::Value& object, const char* key) {
  if (!object.isObject()) return nullptr;
  return object.find(key, key + std::char_traits<char>::length(key));
}

bool HasMember(const Json::Value& object, const char* key) {
  const Json::Value* member = FindMember(object, key);
  return member != nullptr && !member->isNull();
}

std::vector<std::string> MemberNames(const Json::Value& value) {
  if (!value.isObject()) return {};
  return value.getMemberNames();
}

ScopedJsonContext::ScopedJsonContext(std::string what)
    : ScopedJsonContext(JsonScope::kOther, std::string(), std::move(what)) {}

ScopedJsonContext::ScopedJsonContext(JsonScope scope, std::string name, std::string text) {
  t_context.push_back(JsonContextFrame{scope, std::move(name), std::move(text)});
}

ScopedJsonContext::~ScopedJsonContext() { t_context.pop_back(); }

std::string JsonContextSuffix() {
  std::string suffix;
  for (const JsonContextFrame& frame : t_context) {
    if (frame.text.empty()) continue;
    suffix += suffix.empty() ? " in " : ", ";
    suffix += frame.text;
  }
  return suffix;
}

const std::vector<JsonContextFrame>& JsonContextFrames() { return t_context; }

const char* JsonTypeName(const Json::Value& value) {
  switch (value.type()) {
    case Json::nullValue: return "null";
    case Json::intValue: return "integer";
    case Json::uintValue: return "unsigned integer";
    case Json::realValue: return "number";
    case Json::stringValue: return "string";
    case Json::booleanValue: return "boolean";
    case Json::arrayValue: return "array";
    case Json::objectValue: return "object";
  }
  return "unknown";
}

void LogWrongType(const char* log_label, const char* member, const char* expected,
                  const Json::Value& found, const char* function) {
  std::string where = JsonContextSuffix();
  std::string found_text = JsonTypeName(found);
  // A number is refused where a number is read only when it does not fit the type.
  const bool container_expected = std::strcmp(expected, "object") == 0 || std::strcmp(expected, "array") == 0;
  if (found.isNumeric() && !container_expected) found_text += " out of range";
  VKR_LOGE_AT(log_label, function, __LINE__, "Invalid member \"%s\"%s: expected %s, found %s", member,
              where.c_str(), expected, found_text.c_str());
}

JsonFieldReader::JsonFieldReader(const Json::Value& object, const char* log_label,
                                 const char* function)
    : object_(object), log_label_(log_label), function_(function) {
  if (!object_.isObject() && !object_.isNull()) {
    LogWrongType(log_label_, "(section)", "object", object_, function_);
    ok_ = false;
  }
}

bool JsonFieldReader::Has(const char* key) const { return HasMember(object_, key); }

const Json::Value& JsonFieldReader::Raw(const char* key) const {
  const Json::Value* member = FindMember(object_, key);
  return member == nullptr ? NullValue() : *member;
}

bool JsonFieldReader::Convertible(const Json::Value& value, Json::ValueType type,
                                  const char* member, const char* expected) {
  if (value.isConvertibleTo(type)) return true;
  LogWrongType(log_label_, member, expected, value, function_);
  ok_ = false;
  return false;
}

uint32_t JsonFieldReader::Uint(const char* key) {
  const Json::Value& value = Raw(key);
  return Convertible(value, Json::uintValue, key, "unsigned integer") ? value.asUInt() : 0u;
}

int32_t JsonFieldReader::Int(const char* key) {
  const Json::Value& value = Raw(key);
  return Convertible(value, Json::intValue, key, "integer") ? value.asInt() : 0;
}

double JsonFieldReader::Double(const char* key) {
  const Json::Value& value = Raw(key);
  return Convertible(value, Json::realValue, key, "number") ? value.asDouble() : 0.0;
}

float JsonFieldReader::Float(const char* key) {
  const Json::Value& value = Raw(key);
  if (!Convertible(value, Json::realValue, key, "number")) return 0.0f;
  // A double beyond float's range has no float value (converting it is undefined).
  if (std::fabs(value.asDouble()) > std::numeric_limits<float>::max()) {
    LogWrongType(log_label_, key, "number", value);
    ok_ = false;
    return 0.0f;
  }
  return value.asFloat();
}

bool JsonFieldReader::Bool(const char* key) {
  const Json::Value& value = Raw(key);
  return Convertible(value, Json::booleanValue, key, "boolean") ? value.asBool() : false;
}

std::string JsonFieldReader::String(const char* key) {
  const Json::Value& value = Raw(key);
  return Convertible(value, Json::stringValue, key, "string") ? value.asString() : std::string();
}

const Json::Value& JsonFieldReader::Array(const char* key) {
  const Json::Value& value = Raw(key);
  if (value.isNull() || value.isArray()) return value;
  LogWrongType(log_label_, key, "array", value, function_);
  ok_ = false;
  return NullValue();
}

const Json::Value& JsonFieldReader::Object(const char* key) {
  const Json::Value& value = Raw(key);
  if (value.isNull() || value.isObject()) return value;
  LogWrongType(log_label_, key, "object", value, function_);
  ok_ = false;
  return NullValue();
}

uint32_t JsonFieldReader::ElementUint(const Json::Value& array, Json::ArrayIndex index,
                                      const char* member) {
  if (!array.isArray() || index >= array.size()) return 0;
  const Json::Value& value = array[index];
  return Convertible(value, Json::uintValue, member, "array of unsigned integers") ? value.asUInt() : 0u;
}

std::string JsonFieldReader::ElementString(const Json::Value& array, Json::ArrayIndex index,
                                           const char* member) {
  if (!array.isArray() || index >= array.size()) return std::string();
  const Json::Value& value = array[index];
  return Convertible(value, Json::stringValue, member, "array of strings") ? value.asString()
                                                                         : std::string();
}

}  // namespace vexa
