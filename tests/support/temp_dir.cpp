#include "support/temp_dir.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace vexa::testing {

namespace fs = std::filesystem;

TempDir::TempDir() {
  std::string pattern = (fs::path(VEXA_BINARY_DIR) / "test-tmp-XXXXXX").string();
  fs::create_directories(VEXA_BINARY_DIR);
  const char* made = mkdtemp(pattern.data());
  EXPECT_NE(made, nullptr) << "cannot create " << pattern;
  path_ = pattern;
}

TempDir::~TempDir() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

std::string TempDir::File(const std::string& relative) const { return path_ + "/" + relative; }

void TempDir::Put(const std::string& relative, const std::string& bytes) const {
  const fs::path file = File(relative);
  fs::create_directories(file.parent_path());
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  EXPECT_TRUE(out.good()) << "cannot write " << file;
}

std::string TempDir::Get(const std::string& relative) const {
  std::ifstream in(File(relative), std::ios::binary);
  if (!in) return "<missing>";
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

std::vector<std::string> TempDir::Entries(const std::string& relative) const {
  std::vector<std::string> names;
  for (const auto& entry : fs::directory_iterator(File(relative))) {
    names.push_back(entry.path().filename().string());
  }
  std::sort(names.begin(), names.end());
  return names;
}

ScopedEnv::ScopedEnv(const char* name, const char* value) : name_(name) {
  const char* old = std::getenv(name);
  had_value_ = old != nullptr;
  if (had_value_) old_value_ = old;
  if (value == nullptr) {
    unsetenv(name);
  } else {
    setenv(name, value, 1);
  }
}

ScopedEnv::~ScopedEnv() {
  if (had_value_) {
    setenv(name_.c_str(), old_value_.c_str(), 1);
  } else {
    unsetenv(name_.c_str());
  }
}

}  // namespace vexa::testing
