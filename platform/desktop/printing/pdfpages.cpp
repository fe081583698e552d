// What is drawn, as operators of a page. A page's own coordinates are device pixels, so that most numbers are whole
// ones.

#include "platform/desktop/printing/pdfpages.h"

#include "platform/desktop/drawing/lines.h"
#include "platform/desktop/drawing/text.h"
#include "platform/kernel/codepage.h"

#include <algorithm>
#include <cmath>
#include <ctime>

namespace platform {

namespace {

constexpr double kPoints = 72; // in an inch
constexpr int kScreenDpi = 96;
constexpr QRgb kColorBits = 0xFFFFFFu, kWhite = 0xFFFFFFFFu;
constexpr double kSlant = 0.2126; // 12 degrees

// The colour that an ink leaves on white paper.
std::optional<QRgb> onPaper(int rop2, QRgb color) {
  const Effect effect = effectOf(rop2, color);
  if ((effect.keep & kColorBits) == kColorBits && (effect.turn & kColorBits) == 0) return std::nullopt;
  return effect.on(kWhite) & kColorBits;
}

void putColor(PdfText &content, QRgb color, const char *operation) {
  for (const int part : {qRed(color), qGreen(color), qBlue(color)}) content.number(part / 255.0, 3);
  content.word(operation).raw("\n");
}

// One of the slanted lines of a hatch, over the corners of its square too.
void putDiagonal(PdfText &content, bool falling) {
  for (const int shift : {-8, 0, 8}) {
    content.number(int64_t{-1}).number(int64_t{falling ? shift - 1 : 9 + shift}).word("m");
    content.number(int64_t{9}).number(int64_t{falling ? shift + 9 : shift - 1}).word("l");
  }
  content.raw(" S\n");
}

// The marks of a hatch in its square of 8 by 8, downwards: slanted lines as such, others as rectangles.
void putMarks(PdfText &content, const uint8_t *rows) {
  bool falling = true, rising = true, more = false;
  for (int y = 0; y < 8; ++y) {
    const int down = 0x80 >> y, up = 0x01 << y;
    falling = falling && rows[y] & down;
    rising = rising && rows[y] & up;
  }
  for (int y = 0; y < 8; ++y) more = more || rows[y] & ~((falling ? 0x80 >> y : 0) | (rising ? 0x01 << y : 0));
  if (!more && (falling || rising)) {
    content.raw(" 0.7 w"); // as much ink as its pixels have
    if (falling) putDiagonal(content, true);
    if (rising) putDiagonal(content, false);
    return;
  }
  for (int y = 0; y < 8; ++y)
    for (int x = 0, end = 0; x < 8; x = end + 1) {
      const auto marked = [&](int at) { return at < 8 && rows[y] & 0x80 >> at; };
      for (end = x; marked(end);) ++end;
      if (end > x) content.number(int64_t{x}).number(int64_t{y}).number(int64_t{end - x}).raw(" 1 re");
    }
  content.raw(" f\n");
}

std::string dateNow() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char date[32], zone[8];
  std::strftime(date, sizeof date, "D:%Y%m%d%H%M%S", &local);
  std::strftime(zone, sizeof zone, "%z", &local); // hours and minutes, without the marks that follow each here
  return std::string(date) + std::string(zone, 3) + "'" + std::string(zone + 3, 2) + "'";
}

} // namespace

PdfPages::PdfPages(Descriptor file, std::u16string title)
    : file_(std::move(file)), title_(std::move(title)), fontNames_(file_.reserve()), tree_(file_.reserve()) {}

void PdfPages::begin(const PageForm &form) {
  form_ = form;
  content_.clear();
  state_ = {};
  clip_.reset();
  used_.clear();
  images_.clear();
  const double x = kPoints / form.dpiX, y = kPoints / form.dpiY;
  content_.number(x, 6).raw(" 0 0").number(-y, 6).number(form.inner.x() * x, 4);
  content_.number((form.sheet.height() - form.inner.y()) * y, 4).raw(" cm 1 J 1 j q\n");
}

int PdfPages::end() {
  content_.raw(" Q\n");
  const int content = file_.reserve();
  file_.stream(content, "", content_.str());
  const double width = form_->sheet.width() * kPoints / form_->dpiX,
               height = form_->sheet.height() * kPoints / form_->dpiY;
  PdfText page;
  page.raw("<< /Type /Page /Parent").object(tree_).raw(" /MediaBox [ 0 0").number(width, 2).number(height, 2);
  page.raw(" ] /Contents").object(content).raw(" /Resources << /Font").object(fontNames_);
  if (!images_.empty()) page.raw(" /XObject <<");
  for (const int image : images_) page.word("/I" + std::to_string(image)).object(image);
  if (!images_.empty()) page.raw(" >>");
  if (!used_.empty()) page.raw(" /Pattern <<");
  for (const auto &[name, number] : used_) page.word(name).object(number);
  if (!used_.empty()) page.raw(" >>");
  const int number = file_.object(page.raw(" >> >>").str());
  pages_.push_back(number);
  form_.reset();
  content_.clear();
  return file_.error();
}

int PdfPages::finish() {
  fonts_.write(file_, fontNames_);
  PdfText tree;
  tree.raw("<< /Type /Pages /Count").number(static_cast<int64_t>(pages_.size())).raw(" /Kids [");
  for (const int page : pages_) tree.object(page);
  file_.object(tree_, tree.raw(" ] >>").str());
  PdfText catalog, info;
  const int root = file_.object(catalog.raw("<< /Type /Catalog /Pages").object(tree_).raw(" >>").str());
  info.raw("<< /Title ").text(title_).raw(" /Producer (Wq) /CreationDate ").string(dateNow()).raw(" >>");
  file_.finish(root, file_.object(info.str()));
  return file_.error();
}

// A clip can only be narrowed, so that another one begins with what stood before the first. Colours go with it.
void PdfPages::clipTo(const QRegion &clip) {
  const bool all = clip.rectCount() == 1 && clip.boundingRect() == QRect(QPoint(), form_->inner.size());
  if (all ? !clip_ : clip_ && *clip_ == clip) return;
  content_.raw(" Q q\n");
  state_ = {};
  clip_ = all ? std::nullopt : std::optional(clip);
  if (all) return;
  for (const QRect &rect : clip) {
    content_.number(int64_t{rect.left()}).number(int64_t{rect.top()});
    content_.number(int64_t{rect.width()}).number(int64_t{rect.height()}).word("re");
  }
  content_.raw(" W n\n");
}

double PdfPages::screenPixel() const { return std::max(1.0, 1.0 * form_->dpiY / kScreenDpi); }

// The name of an ink's hatch among the patterns.
std::string PdfPages::patternOf(const Ink &ink) {
  const double pixel = screenPixel();
  const double x = kPoints / form_->dpiX, y = kPoints / form_->dpiY;
  const std::optional<QRgb> color = onPaper(ink.rop2, ink.color);
  const std::optional<QRgb> ground = ink.transparent ? std::nullopt : onPaper(ink.rop2, ink.background);
  PdfText content, head;
  if (ground) putColor(content, *ground, "rg");
  if (ground) content.raw(" 0 0 8 8 re f\n");
  if (color) {
    putColor(content, *color, "rg");
    putColor(content, *color, "RG");
    putMarks(content, ink.hatch);
  }
  head.raw(" /Type /Pattern /PatternType 1 /PaintType 1 /TilingType 1 /BBox [ 0 0 8 8 ] /XStep 8 /YStep 8");
  head.raw(" /Resources << >> /Matrix [").number(x * pixel, 6).raw(" 0 0").number(-y * pixel, 6);
  head.number((form_->inner.x() + ink.hatchOrigin.x() * pixel) * x, 4);
  head.number((form_->sheet.height() - form_->inner.y() - ink.hatchOrigin.y() * pixel) * y, 4).raw(" ]");
  const auto [known, fresh] = patterns_.try_emplace(head.str() + content.str());
  if (fresh) {
    known->second = file_.reserve();
    file_.stream(known->second, head.str(), content.str());
  }
  std::string name = "/P" + std::to_string(known->second);
  used_[name] = known->second;
  return name;
}

bool PdfPages::fillWith(const Ink &ink) {
  if (ink.hatch) {
    content_.raw(" /Pattern cs").word(patternOf(ink)).raw(" scn\n");
    state_.fill.reset();
    return true;
  }
  const std::optional<QRgb> color = onPaper(ink.rop2, ink.color);
  if (color && state_.fill != color) putColor(content_, *color, "rg");
  if (color) state_.fill = color;
  return color.has_value();
}

bool PdfPages::strokeWith(const Ink &ink) {
  const std::optional<QRgb> color = onPaper(ink.rop2, ink.color);
  if (color && state_.stroke != color) putColor(content_, *color, "RG");
  if (color) state_.stroke = color;
  return color.has_value();
}

void PdfPages::strokeLike(const Pencil &pencil, bool dashed) {
  if (state_.width != pencil.width) content_.number(int64_t{pencil.width}).word("w");
  state_.width = pencil.width;
  PdfText lengths;
  lengths.raw("[");
  if (dashed)
    for (const uint8_t length : pencil.dashes) lengths.number(length * screenPixel(), 2);
  lengths.raw("]");
  if (lengths.str() == state_.dashes) return;
  state_.dashes = lengths.str();
  content_.word(state_.dashes).raw(" 0 d").raw(dashed ? " 0 J" : " 1 J");
}

void PdfPages::fill(const QRegion &clip, const QRect &rect, const Ink &ink) {
  if (rect.isEmpty()) return;
  clipTo(clip);
  if (!fillWith(ink)) return;
  content_.number(int64_t{rect.left()}).number(int64_t{rect.top()});
  content_.number(int64_t{rect.width()}).number(int64_t{rect.height()}).raw(" re f\n");
}

void PdfPages::pathOf(const PaperPath &path) {
  const PaperPath::Point *at = path.points.data();
  const auto put = [&](int count) {
    for (; count > 0; --count, ++at) content_.number(at->x, 2).number(at->y, 2);
  };
  for (const PaperPath::Step step : path.steps) switch (step) {
    case PaperPath::Step::move:
      put(1);
      content_.word("m");
      break;
    case PaperPath::Step::line:
      put(1);
      content_.word("l");
      break;
    case PaperPath::Step::curve:
      put(3);
      content_.word("c");
      break;
    case PaperPath::Step::close: content_.word("h"); break;
    }
}

void PdfPages::draw(const QRegion &clip, const PaperPath &path, int mode, const Ink *ink, const Pencil *pencil) {
  if (path.steps.empty()) return;
  clipTo(clip);
  if (ink && fillWith(*ink)) {
    pathOf(path);
    content_.raw(mode == WINDING ? " f\n" : " f*\n");
  }
  if (!pencil) return;
  const bool dashed = !pencil->dashes.empty();
  if (dashed && !pencil->gap.transparent && strokeWith(pencil->gap)) {
    strokeLike(*pencil, false);
    pathOf(path);
    content_.raw(" S\n");
  }
  if (!strokeWith(pencil->ink)) return;
  strokeLike(*pencil, dashed);
  pathOf(path);
  content_.raw(" S\n");
}

// Characters stand where the layer's own widths put them. Those of the outlines are a little different, which is made
// up for as soon as it comes to half a pixel.
void PdfPages::text(const QRegion &clip, const PaperText &text) {
  clipTo(clip);
  Ink ink;
  ink.color = text.color;
  fillWith(ink);
  TextFont &font = text.font;
  const double height = font.em(), width = height * font.wider();
  content_.raw(" BT");
  std::string codes;
  int set = -1;
  bool slanted = false;
  double drift = 0, x = text.x, y = text.y; // drift: how far shapes are ahead, in pixels
  const auto flush = [&] {
    if (codes.empty()) return;
    content_.string(codes);
    codes.clear();
  };
  for (const uint16_t code : text.codes) {
    const auto [face, glyph] = font.source(code);
    const int advance = font.advance(code);
    if (face) {
      const PdfFonts::Place &place = fonts_.place(*face, glyph, characterOf(code));
      if (place.font != set || face->addSlant != slanted) {
        flush();
        if (set >= 0) content_.raw("] TJ");
        set = place.font;
        slanted = face->addSlant;
        drift = 0;
        const double slant = slanted ? kSlant : 0;
        content_.word("/F" + std::to_string(set)).raw(" 1 Tf");
        content_.number(width * text.cosine, 3).number(-width * text.sine, 3);
        content_.number(-height * text.sine + slant * width * text.cosine, 3);
        content_.number(-height * text.cosine - slant * width * text.sine, 3);
        content_.number(x, 2).number(y, 2).raw(" Tm [");
      } else if (std::abs(drift) >= 0.5) {
        const double thousandths = std::round(drift / width * 1000);
        flush();
        content_.number(static_cast<int64_t>(thousandths));
        drift -= thousandths * width / 1000;
      }
      codes += static_cast<char>(place.code);
      drift += place.advance * width - advance;
    } else {
      drift -= advance;
    }
    x += advance * text.cosine;
    y -= advance * text.sine;
  }
  flush();
  content_.raw(set >= 0 ? "] TJ ET\n" : " ET\n");
}

// Writes a picture. Its alpha, if it has any, is one of its own.
int PdfPages::imageOf(const QImage &image) {
  const auto width = static_cast<size_t>(image.width()), height = static_cast<size_t>(image.height());
  std::string colors, alpha;
  colors.reserve(3 * width * height);
  alpha.reserve(width * height);
  bool opaque = true;
  for (int y = 0; y < image.height(); ++y) {
    const auto *row = reinterpret_cast<const QRgb *>(image.constScanLine(y));
    for (size_t x = 0; x < width; ++x) {
      for (const int part : {qRed(row[x]), qGreen(row[x]), qBlue(row[x])}) colors += static_cast<char>(part);
      alpha += static_cast<char>(qAlpha(row[x]));
      opaque = opaque && qAlpha(row[x]) == 255;
    }
  }
  PdfText form;
  form.raw(" /Type /XObject /Subtype /Image /BitsPerComponent 8 /Width").number(int64_t{image.width()});
  form.raw(" /Height").number(int64_t{image.height()});
  const int mask = opaque ? 0 : file_.reserve();
  if (!opaque) file_.stream(mask, form.str() + " /ColorSpace /DeviceGray", alpha);
  form.raw(" /ColorSpace /DeviceRGB");
  if (!opaque) form.raw(" /SMask").object(mask);
  const int number = file_.reserve();
  file_.stream(number, form.str(), colors);
  return number;
}

void PdfPages::picture(const QRegion &clip, const QRectF &rect, const QImage &image) {
  if (rect.isEmpty() || image.isNull()) return;
  clipTo(clip);
  const int number = imageOf(image);
  images_.push_back(number);
  content_.raw(" q").number(rect.width(), 2).raw(" 0 0").number(-rect.height(), 2).number(rect.left(), 2);
  content_.number(rect.bottom(), 2).raw(" cm").word("/I" + std::to_string(number)).raw(" Do Q\n");
}

} // namespace platform
