#include "platform/properties.h"

#include <cctype>
#include <cstdlib>

#ifdef __ANDROID__
#include <cutils/properties.h>
#endif

namespace vexa {

std::string PropertyEnvironmentName(const std::string& key) {
  std::string name = key;
  for (char& c : name) {
    c = (c == '.') ? '_' : static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  }
  return name;
}

std::optional<std::string> GetSystemProperty(const std::string& key) {
#ifdef __ANDROID__
  char value[PROPERTY_VALUE_MAX] = {};
  if (property_get(key.c_str(), value, nullptr) <= 0) return std::nullopt;
  return std::string(value);
#else
  const char* value = std::getenv(PropertyEnvironmentName(key).c_str());
  if (value == nullptr) return std::nullopt;
  return std::string(value);
#endif
}

}  // namespace vexa
