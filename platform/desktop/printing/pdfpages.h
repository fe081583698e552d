// The pages of a document in the PDF form. A page is written when it ends.
#pragma once

#include "platform/desktop/drawing/paper.h"
#include "platform/desktop/printing/pdffonts.h"

#include <optional>

namespace platform {

// A page's measures, in device pixels.
struct PageForm {
  QSize sheet;
  QRect inner; // what of the sheet can be printed on; device coordinates begin there
  int dpiX = 0, dpiY = 0;
};

class PdfPages {
 public:
  // title: of the document.
  PdfPages(Descriptor file, std::u16string title);

  void begin(const PageForm &form);
  bool within() const { return form_.has_value(); }
  // Both: an errno, 0 for none.
  int end();
  // Writes what belongs to all pages. Nothing can follow.
  int finish();
  int count() const { return static_cast<int>(pages_.size()); }

  // As those of Paper, within a page.
  void fill(const QRegion &clip, const QRect &rect, const Ink &ink);
  void draw(const QRegion &clip, const PaperPath &path, int mode, const Ink *ink, const Pencil *pencil);
  void text(const QRegion &clip, const PaperText &text);
  void picture(const QRegion &clip, const QRectF &rect, const QImage &image);

 private:
  // What is set on the page already.
  struct State {
    std::optional<QRgb> fill, stroke; // none for a pattern too
    int width = -1;                   // of lines
    std::string dashes = "[]";
  };

  void clipTo(const QRegion &clip);
  // Result: false for an ink that leaves paper as it is.
  bool fillWith(const Ink &ink);
  bool strokeWith(const Ink &ink);
  void strokeLike(const Pencil &pencil, bool dashed);
  void pathOf(const PaperPath &path);
  double screenPixel() const;
  std::string patternOf(const Ink &ink);
  int imageOf(const QImage &image);

  PdfFile file_;
  PdfFonts fonts_;
  const std::u16string title_;
  const int fontNames_, tree_;
  std::vector<int> pages_;
  std::map<std::string, int> patterns_; // by what they are like

  std::optional<PageForm> form_;
  PdfText content_;
  State state_;
  std::optional<QRegion> clip_;     // none for the whole page
  std::map<std::string, int> used_; // patterns of the page, by name
  std::vector<int> images_;         // of the page
};

} // namespace platform
