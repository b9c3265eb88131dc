// Where the report's findings section comes from: anything that checks a panel's files and
// returns diagnostics. The report does not know the checks themselves; main() hands it a source.
#ifndef VEXA_TOOLS_VEXA_MODES_FINDINGS_SOURCE_H_
#define VEXA_TOOLS_VEXA_MODES_FINDINGS_SOURCE_H_

#include <string>
#include <vector>

namespace vexa::tools {

struct Finding {
  std::string severity;  // "error", "warning", "note"
  std::string location;  // file and unit, e.g. "vexa_calib_data_p.json: mode \"srgb\""
  std::string message;
};

class FindingsSource {
 public:
  virtual ~FindingsSource() = default;
  // The findings for the panel's files below the device tree `root` (empty: the real paths).
  virtual std::vector<Finding> Collect(const std::string& root, const std::string& panel) = 0;
};

}  // namespace vexa::tools

#endif  // VEXA_TOOLS_VEXA_MODES_FINDINGS_SOURCE_H_
