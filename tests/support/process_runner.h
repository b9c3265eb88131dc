// Runs a program to completion and captures its exit status, standard output and standard error
// (for end-to-end tests of the command-line tools).
#ifndef VEXA_TESTS_SUPPORT_PROCESS_RUNNER_H_
#define VEXA_TESTS_SUPPORT_PROCESS_RUNNER_H_

#include <string>
#include <vector>

namespace vexa::testing {

struct ProcessResult {
  int exit_code = -1;  // -1 when the program could not be started or did not exit normally
  std::string out;
  std::string err;
};

// argv[0] is the program's path; the environment is the test's own.
ProcessResult RunProcess(const std::vector<std::string>& argv);

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_PROCESS_RUNNER_H_
