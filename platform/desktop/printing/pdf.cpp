// The PDF form's tokens, objects and table.

#include "platform/desktop/printing/pdf.h"

#include <QByteArray>

#include <cerrno>
#include <charconv>
#include <cmath>
#include <new>
#include <unistd.h>

namespace platform {

namespace {

constexpr size_t kBlock = size_t{64} << 10; // of bytes that are written at once
constexpr int kHeaderSize = 4;              // what Qt puts before compressed bytes

} // namespace

PdfText &PdfText::number(int64_t value) {
  char digits[24];
  const auto end = std::to_chars(std::begin(digits), std::end(digits), value).ptr;
  return word({digits, static_cast<size_t>(end - digits)});
}

PdfText &PdfText::number(double value, int places) {
  constexpr double kPowers[] = {1, 1e1, 1e2, 1e3, 1e4, 1e5, 1e6, 1e7, 1e8, 1e9}, kLargest = 1e18;
  const double power = kPowers[places];
  int64_t rest = std::llround(std::fmin(std::fmax(value * power, -kLargest), kLargest));
  const auto unit = static_cast<int64_t>(power);
  if (rest % unit == 0) return number(rest / unit);
  text_ += rest < 0 ? " -" : " ";
  if (rest < 0) rest = -rest;
  char digits[24];
  text_.append(digits, std::to_chars(std::begin(digits), std::end(digits), rest / unit).ptr);
  text_ += '.';
  rest %= unit;
  for (int64_t place = unit / 10; rest > 0; place /= 10) {
    text_ += static_cast<char>('0' + rest / place);
    rest %= place;
  }
  return *this;
}

PdfText &PdfText::string(std::string_view bytes) {
  text_ += '(';
  for (const char byte : bytes) {
    if (byte == '(' || byte == ')' || byte == '\\') text_ += '\\';
    if (byte == '\r')
      text_ += "\\r"; // readers take an end of line for another
    else
      text_ += byte;
  }
  text_ += ')';
  return *this;
}

PdfText &PdfText::text(std::u16string_view text) {
  std::string bytes("\xFE\xFF");
  for (const char16_t unit : text) {
    bytes += static_cast<char>(unit >> 8);
    bytes += static_cast<char>(unit & 0xFF);
  }
  return string(bytes);
}

PdfFile::PdfFile(Descriptor file) : file_(std::move(file)) {
  write("%PDF-1.5\n%\xE2\xE3\xCF\xD3\n"); // bytes above 127 say that the file isn't text
}

void PdfFile::write(std::string_view bytes) {
  waiting_ += bytes;
  written_ += bytes.size();
  if (waiting_.size() >= kBlock) flush();
}

void PdfFile::flush() {
  std::string_view rest = waiting_;
  while (!rest.empty() && error_ == 0) {
    const ssize_t count = ::write(file_.get(), rest.data(), rest.size());
    if (count < 0 && errno != EINTR) error_ = errno;
    if (count > 0) rest.remove_prefix(static_cast<size_t>(count));
  }
  waiting_.clear();
}

int PdfFile::reserve() {
  places_.push_back(0);
  return static_cast<int>(places_.size());
}

void PdfFile::begin(int number) {
  places_[static_cast<size_t>(number) - 1] = written_;
  write(std::to_string(number) + " 0 obj\n");
}

void PdfFile::object(int number, std::string_view body) {
  begin(number);
  write(body);
  write("\nendobj\n");
}

int PdfFile::object(std::string_view body) {
  const int number = reserve();
  object(number, body);
  return number;
}

void PdfFile::stream(int number, std::string_view dictionary, std::string_view bytes) {
  const QByteArray packed =
      qCompress(reinterpret_cast<const uchar *>(bytes.data()), static_cast<qsizetype>(bytes.size()));
  if (packed.size() < kHeaderSize) throw std::bad_alloc();
  const std::string_view body(packed.constData() + kHeaderSize, static_cast<size_t>(packed.size()) - kHeaderSize);
  begin(number);
  write("<<");
  write(dictionary);
  write(" /Filter /FlateDecode /Length " + std::to_string(body.size()) + " >>\nstream\n");
  write(body);
  write("\nendstream\nendobj\n");
}

bool PdfFile::finish(int catalog, int info) {
  const uint64_t table = written_;
  write("xref\n0 " + std::to_string(places_.size() + 1) + "\n0000000000 65535 f \n");
  for (const uint64_t place : places_) {
    std::string line = std::to_string(place);
    line.insert(0, line.size() < 10 ? 10 - line.size() : 0, '0');
    write(line + " 00000 n \n");
  }
  PdfText end;
  end.raw("trailer\n<< /Size")
      .number(int64_t(places_.size()) + 1)
      .word("/Root")
      .object(catalog)
      .word("/Info")
      .object(info);
  end.raw(" >>\nstartxref\n" + std::to_string(table) + "\n%%EOF\n");
  write(end.str());
  flush();
  return error_ == 0;
}

} // namespace platform
