#include "support/process_runner.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <memory>

extern char** environ;

namespace vexa::testing {
namespace {

using File = std::unique_ptr<FILE, int (*)(FILE*)>;

std::string ReadAll(FILE* file) {
  std::string text;
  std::rewind(file);
  char buffer[4096];
  for (size_t n; (n = std::fread(buffer, 1, sizeof(buffer), file)) > 0;) text.append(buffer, n);
  return text;
}

}  // namespace

ProcessResult RunProcess(const std::vector<std::string>& argv) {
  ProcessResult result;
  // Anonymous temporary files take the child's output: no pipe to drain while it runs.
  File out(std::tmpfile(), std::fclose);
  File err(std::tmpfile(), std::fclose);
  if (argv.empty() || !out || !err) return result;
  std::vector<char*> args;
  for (const std::string& arg : argv) args.push_back(const_cast<char*>(arg.c_str()));
  args.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, fileno(out.get()), STDOUT_FILENO);
  posix_spawn_file_actions_adddup2(&actions, fileno(err.get()), STDERR_FILENO);
  pid_t pid = 0;
  const int spawned = posix_spawn(&pid, args[0], &actions, nullptr, args.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (spawned != 0) return result;

  int status = 0;
  if (waitpid(pid, &status, 0) == pid && WIFEXITED(status)) result.exit_code = WEXITSTATUS(status);
  result.out = ReadAll(out.get());
  result.err = ReadAll(err.get());
  return result;
}

}  // namespace vexa::testing
