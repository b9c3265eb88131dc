#include "support/process_runner.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>

extern char** environ;

namespace vexa::testing {
namespace {

// A temporary file that receives one output stream of the child.
class CaptureFile {
 public:
  CaptureFile() {
    const char* dir = std::getenv("TMPDIR");
    path_ = std::string(dir != nullptr && *dir != '\0' ? dir : "/tmp") + "/vexa_capture_XXXXXX";
    fd_ = mkstemp(path_.data());
  }
  ~CaptureFile() {
    if (fd_ >= 0) {
      close(fd_);
      unlink(path_.c_str());
    }
  }
  CaptureFile(const CaptureFile&) = delete;
  CaptureFile& operator=(const CaptureFile&) = delete;

  int fd() const { return fd_; }
  std::string Contents() const {
    std::ifstream file(path_, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
  }

 private:
  std::string path_;
  int fd_ = -1;
};

}  // namespace

ProcessResult RunProcess(const std::vector<std::string>& argv) {
  ProcessResult result;
  CaptureFile out;
  CaptureFile err;
  if (argv.empty() || out.fd() < 0 || err.fd() < 0) return result;
  std::vector<char*> args;
  for (const std::string& arg : argv) args.push_back(const_cast<char*>(arg.c_str()));
  args.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, out.fd(), STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, err.fd(), STDERR_FILENO);
  pid_t pid = 0;
  const int spawned = posix_spawn(&pid, args[0], &actions, nullptr, args.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (spawned != 0) return result;

  int status = 0;
  if (waitpid(pid, &status, 0) == pid && WIFEXITED(status)) result.exit_code = WEXITSTATUS(status);
  result.out = out.Contents();
  result.err = err.Contents();
  return result;
}

}  // namespace vexa::testing
