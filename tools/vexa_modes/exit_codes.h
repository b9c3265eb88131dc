// Exit statuses of vexa-modes, one per kind of failure so that scripts can tell them apart.
#ifndef VEXA_TOOLS_VEXA_MODES_EXIT_CODES_H_
#define VEXA_TOOLS_VEXA_MODES_EXIT_CODES_H_

namespace vexa::tools {

constexpr int kExitOk = 0;
constexpr int kExitFailure = 1;             // the library refused a call it should serve
constexpr int kExitBadArguments = 2;        // command line not understood
constexpr int kExitNoSuchMode = 3;          // no published mode has that gamut, gamma and intent
constexpr int kExitLibraryNotLoadable = 4;  // dlopen, dlsym or the factory failed
constexpr int kExitFileRefused = 5;         // a file unreadable, not JSON, refused, or not writable

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_VEXA_MODES_EXIT_CODES_H_
