// Logging to the Android log under the tag "VKR".
//
// Every line reads "<class label>::<function>():<line> <message>". Errors always print;
// information lines print only when the library's log level reaches the line's threshold.
// A source file defines `kLogLabel` (for example "VexaJsonModeParser::Utils") and uses
// VKR_LOGE / VKR_LOGI; VKR_LOGE_AT / VKR_LOGI_AT name the label, function and line explicitly
// (shared templates, and messages whose line number is part of the format).
#ifndef VEXA_PLATFORM_LOG_H_
#define VEXA_PLATFORM_LOG_H_

#include <cstdint>
#include <optional>

#include <android/log.h>  // on Linux from Debian's android-liblog-dev

namespace vexa {

// Library-wide log level: 0 errors only, 1 a few start-up lines, 2 everything.
uint32_t LogLevel();
// Sets the level (tests and host tools; the library reads the property once at load).
void SetLogLevel(uint32_t level);
// Reads "vendor.display.kivloglevel": a decimal 0, 1 or 2 gives that level (leading zeros allowed,
// so "01" is 1); anything else (unset, empty, "3", blanks, signs, trailing text) gives 1.
uint32_t ReadLogLevelProperty();

constexpr char kLogTag[] = "VKR";

}  // namespace vexa

#define VKR_LOG_PRINT(prio, label, func, line, fmt, ...) \
  __android_log_print((prio), ::vexa::kLogTag, "%s::%s():%d " fmt, (label), (func), (line), ##__VA_ARGS__)

#define VKR_LOGE_AT(label, func, line, fmt, ...) \
  VKR_LOG_PRINT(ANDROID_LOG_ERROR, label, func, line, fmt, ##__VA_ARGS__)

#define VKR_LOGI_AT(level, label, func, line, fmt, ...)                       \
  do {                                                                        \
    if (::vexa::LogLevel() >= (level)) {                                      \
      VKR_LOG_PRINT(ANDROID_LOG_INFO, label, func, line, fmt, ##__VA_ARGS__); \
    }                                                                         \
  } while (0)

#define VKR_LOGE(fmt, ...) VKR_LOGE_AT(kLogLabel, __func__, __LINE__, fmt, ##__VA_ARGS__)
#define VKR_LOGI(level, fmt, ...) VKR_LOGI_AT(level, kLogLabel, __func__, __LINE__, fmt, ##__VA_ARGS__)

#endif  // VEXA_PLATFORM_LOG_H_
