#include "platform/log.h"

#include <atomic>
#include <charconv>
#include <optional>
#include <string>

#include "platform/properties.h"

namespace vexa {
namespace {

constexpr char kLogLevelProperty[] = "vendor.display.kivloglevel";
constexpr uint32_t kDefaultLogLevel = 1;
constexpr uint32_t kMaxLogLevel = 2;

// Read when the library is loaded; written again only by SetLogLevel.
std::atomic<uint32_t> g_log_level{ReadLogLevelProperty()};

}  // namespace

uint32_t ReadLogLevelProperty() {
  std::optional<std::string> text = GetSystemProperty(kLogLevelProperty);
  if (!text) return kDefaultLogLevel;
  uint32_t value = 0;
  const char* end = text->data() + text->size();
  auto [ptr, ec] = std::from_chars(text->data(), end, value);
  if (ec != std::errc() || ptr != end || text->empty() || value > kMaxLogLevel) return kDefaultLogLevel;
  return value;
}

uint32_t LogLevel() { return g_log_level.load(std::memory_order_relaxed); }

void SetLogLevel(uint32_t level) { g_log_level.store(level, std::memory_order_relaxed); }

}  // namespace vexa
