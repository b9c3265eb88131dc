// System properties. On Android they come from the property service; on Linux a property is
// the environment variable named by the key upper-cased with every '.' made '_'
// ("vendor.display.kivloglevel" is VENDOR_DISPLAY_KIVLOGLEVEL).
#ifndef VEXA_PLATFORM_PROPERTIES_H_
#define VEXA_PLATFORM_PROPERTIES_H_

#include <optional>
#include <string>

namespace vexa {

// The property's value, or nothing when it is not set.
std::optional<std::string> GetSystemProperty(const std::string& key);

// The environment variable that stands for a property on Linux.
std::string PropertyEnvironmentName(const std::string& key);

}  // namespace vexa

#endif  // VEXA_PLATFORM_PROPERTIES_H_
