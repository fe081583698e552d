// A file of the PDF form: numbered objects one after another, and the table of their places at the end. Objects go out
// as soon as they are complete, so that memory doesn't grow with pages. The same calls make the same bytes.
#pragma once

#include "platform/kernel/files.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

// Writes the tokens of the form, a space before each.
class PdfText {
 public:
  PdfText &raw(std::string_view text) {
    text_ += text;
    return *this;
  }
  // A word: an operator, or a name with its slash.
  PdfText &word(std::string_view text) {
    text_ += ' ';
    text_ += text;
    return *this;
  }
  PdfText &number(int64_t value);
  // With so many places behind the point, at most 9; zeros at the end are left out.
  PdfText &number(double value, int places);
  // A reference to an object.
  PdfText &object(int number) { return this->number(int64_t{number}).raw(" 0 R"); }
  // Bytes in parentheses.
  PdfText &string(std::string_view bytes);
  // Text of any characters.
  PdfText &text(std::u16string_view text);

  const std::string &str() const { return text_; }
  bool empty() const { return text_.empty(); }
  void clear() { text_.clear(); }

 private:
  std::string text_;
};

class PdfFile {
 public:
  explicit PdfFile(Descriptor file);

  // The number of an object that comes later.
  int reserve();
  void object(int number, std::string_view body);
  int object(std::string_view body);
  // An object with bytes, which it keeps compressed. dictionary: what it tells besides.
  void stream(int number, std::string_view dictionary, std::string_view bytes);
  // Writes the end, and tells whether all was written.
  bool finish(int catalog, int info);
  // An errno; 0 as long as all went well.
  int error() const { return error_; }

 private:
  void write(std::string_view bytes);
  void flush();
  void begin(int number);

  Descriptor file_;
  std::string waiting_;
  uint64_t written_ = 0;         // with what waits
  std::vector<uint64_t> places_; // of the objects, from number 1 on
  int error_ = 0;
};

} // namespace platform
