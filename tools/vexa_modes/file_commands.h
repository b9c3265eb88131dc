// `unpack` and `pack`: a panel's modes or rules file between its device form and the readable form
// that calibration engineers edit and diff (see tools/modes_files/modes_file_packer.h).
#ifndef VEXA_TOOLS_VEXA_MODES_FILE_COMMANDS_H_
#define VEXA_TOOLS_VEXA_MODES_FILE_COMMANDS_H_

#include <ostream>
#include <string>

namespace vexa::tools {

struct FileCommand {
  std::string input;   // the file to convert
  std::string output;  // where to write the result; empty: `out`
};

// Both return an exit status of exit_codes.h; failures go to `err`, naming file and unit.
int RunUnpack(const FileCommand& command, std::ostream& out, std::ostream& err);
int RunPack(const FileCommand& command, std::ostream& out, std::ostream& err);

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_VEXA_MODES_FILE_COMMANDS_H_
