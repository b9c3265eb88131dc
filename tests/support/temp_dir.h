// A fresh directory under the build tree for one test, removed with everything in it afterwards.
#ifndef VEXA_TESTS_SUPPORT_TEMP_DIR_H_
#define VEXA_TESTS_SUPPORT_TEMP_DIR_H_

#include <string>
#include <vector>

namespace vexa::testing {

class TempDir {
 public:
  TempDir();
  ~TempDir();
  TempDir(const TempDir&) = delete;
  TempDir& operator=(const TempDir&) = delete;

  const std::string& path() const { return path_; }
  // path() + "/" + relative.
  std::string File(const std::string& relative) const;
  // Writes `bytes` to the file (parent directories created); fails the test on error.
  void Put(const std::string& relative, const std::string& bytes) const;
  // The file's bytes, or "<missing>".
  std::string Get(const std::string& relative) const;
  // Names of the directory's entries (not recursive), sorted.
  std::vector<std::string> Entries(const std::string& relative = "") const;

 private:
  std::string path_;
};

// Sets (or, with a null value, unsets) an environment variable for the life of the object.
class ScopedEnv {
 public:
  ScopedEnv(const char* name, const char* value);
  ~ScopedEnv();
  ScopedEnv(const ScopedEnv&) = delete;
  ScopedEnv& operator=(const ScopedEnv&) = delete;

 private:
  std::string name_;
  bool had_value_;
  std::string old_value_;
};

}  // namespace vexa::testing

#endif  // VEXA_TESTS_SUPPORT_TEMP_DIR_H_
