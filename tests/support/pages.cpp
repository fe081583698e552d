#include "support/pages.h"

#include "support/files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <sstream>

namespace {

// What a command writes on its standard output.
std::string output(const std::string &command) {
  const std::string name = "output_of_command.txt";
  const int status = std::system((command + " >" + name + " 2>&1").c_str());
  std::string all = readFile(name);
  std::filesystem::remove(name);
  EXPECT_EQ(status, 0) << command << "\n" << all;
  return all;
}

std::string quoted(const std::string &file) { return "'" + file + "'"; }

std::string between(const std::string &text, const std::string &from, const std::string &to) {
  const size_t at = text.find(from);
  if (at == std::string::npos) return {};
  const size_t begin = at + from.size();
  return text.substr(begin, text.find(to, begin) - begin);
}

} // namespace

std::string textOf(const std::string &file) { return output("pdftotext -layout " + quoted(file) + " -"); }

std::vector<Word> wordsOf(const std::string &file, int dpi) {
  std::istringstream lines(output("pdftotext -bbox " + quoted(file) + " -"));
  std::vector<Word> words;
  for (std::string line; std::getline(lines, line);) {
    if (line.find("<word") == std::string::npos) continue;
    const auto edge = [&](const char *name) {
      return std::stod(between(line, std::string(name) + "=\"", "\"")) * dpi / 72;
    };
    words.push_back({between(line, "\">", "<"), edge("xMin"), edge("yMin"), edge("xMax"), edge("yMax")});
  }
  return words;
}

COLORREF PageImage::at(int x, int y) const {
  const auto *pixel = reinterpret_cast<const uint8_t *>(bytes.data()) + 3 * (size_t(y) * size_t(width) + size_t(x));
  return RGB(pixel[0], pixel[1], pixel[2]);
}

PageImage pageOf(const std::string &file, int page, int dpi) {
  const std::string number = std::to_string(page);
  output("pdftoppm -aa no -aaVector no -singlefile -r " + std::to_string(dpi) + " -f " + number + " " + quoted(file) +
         " page_of_document");
  const std::string all = readFile("page_of_document.ppm");
  std::filesystem::remove("page_of_document.ppm");
  std::istringstream head(all);
  std::string form;
  PageImage image;
  int most = 0;
  head >> form >> image.width >> image.height >> most;
  image.bytes = all.substr(size_t(head.tellg()) + 1);
  EXPECT_EQ(image.bytes.size(), 3 * size_t(image.width) * size_t(image.height));
  return image;
}

std::string bitmapsIn(const std::string &file) {
  std::istringstream lines(output("pdfimages -list " + quoted(file)));
  std::string line, all;
  std::getline(lines, line), std::getline(lines, line); // the head of the table
  while (std::getline(lines, line)) {
    std::istringstream columns(line);
    std::string page, number, kind, width, height;
    columns >> page >> number >> kind >> width >> height;
    all += width + "x" + height + " ";
  }
  return all;
}

int pagesIn(const std::string &file) {
  const std::string pages = between(output("pdfinfo " + quoted(file)), "Pages:", "\n");
  return pages.empty() ? -1 : std::stoi(pages);
}
