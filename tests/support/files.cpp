#include "support/files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

TempFolder::TempFolder() {
  std::random_device random;
  do path_ = "tmp_" + std::to_string(random());
  while (!std::filesystem::create_directory(path_));
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string readFile(const std::string &name) {
  std::ifstream in(name, std::ios::binary);
  EXPECT_TRUE(in.is_open()) << name;
  return {std::istreambuf_iterator<char>(in), {}};
}

void writeFile(const std::string &name, const std::string &content) {
  std::ofstream out(name, std::ios::binary);
  out << content << std::flush;
  EXPECT_TRUE(out.good()) << name;
}

bool fileExists(const std::string &name) { return std::filesystem::exists(name); }
