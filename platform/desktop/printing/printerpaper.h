// A printer's paper, and the document that is being printed on it.
#pragma once

#include "platform/desktop/printing/output.h"
#include "platform/desktop/printing/printers.h"

namespace platform {

class PrinterPaper final : public Paper {
 public:
  PrinterPaper(Printer printer, const DEVMODEA *mode);

  int caps(int index) const override;
  QSize size() const override { return form_.inner.size(); }
  bool hasPage() const override { return pages_ && pages_->within(); }
  void fill(const QRegion &clip, const QRect &rect, const Ink &ink) override;
  void draw(const QRegion &clip, const PaperPath &path, int mode, const Ink *ink, const Pencil *pencil) override;
  void text(const QRegion &clip, const PaperText &text) override;
  void picture(const QRegion &clip, const QRectF &rect, const QImage &image) override;

  // What the functions of the API do with a document; results as theirs.
  int startDocument(const DOCINFOA &info);
  int startPage();
  int endPage();
  int endDocument();
  int abortDocument();
  bool reset(const DEVMODEA *mode);

  bool printing() const { return pages_ != nullptr; }
  ABORTPROC abortProcedure = nullptr;
  bool onlyTells = false; // its numbers are all that is to be had
  std::string file;       // where the user wants the next document, code page 932; empty for the printer's own way

 private:
  // Draws; a page that is no longer whole makes its document fail.
  template <typename Draw> void onPage(Draw draw);
  // Hands a file to the spooler. Result: an errno, 0 for none.
  int spool(const std::string &path) const;

  const Printer printer_;
  DEVMODEA settings_;
  PageForm form_;
  std::string title_; // UTF-8
  std::unique_ptr<OutputFile> output_;
  std::unique_ptr<PdfPages> pages_;
  bool spools_ = false; // the file goes to the spooler at last
  int error_ = 0;       // an errno
};

// The paper of a context; null for one of another kind.
std::shared_ptr<PrinterPaper> printerPaperOf(HDC dc);

} // namespace platform
