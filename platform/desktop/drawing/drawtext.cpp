// Text laid out in a rectangle: cut into lines, shortened where it is asked for, and placed. All is measured in device
// pixels and compared in logical units, so that a rectangle computed before holds the text that it was computed for.

#include "platform/desktop/drawing/text.h"
#include "platform/desktop/lock.h"
#include "platform/kernel/codepage.h"

#include <QTextBoundaryFinder>

#include <algorithm>
#include <climits>
#include <cstring>
#include <utility>

namespace platform {

namespace {

constexpr uint16_t kDots[] = {'.', '.', '.'};
constexpr UINT kTabStopBits = 0xFF00;
constexpr UINT kEllipses = DT_PATH_ELLIPSIS | DT_END_ELLIPSIS | DT_WORD_ELLIPSIS;
constexpr int64_t kUsualTab = 8; // characters

// What is left between two line ends, without the marks of prefixes.
struct Paragraph {
  Codes codes;
  QVarLengthArray<qsizetype, 4> prefixed; // characters that had one
  bool ended = false;                     // by a line end, not by the end of the text
};

// A line as it is drawn.
struct Line {
  Codes codes;
  qsizetype prefixed = -1; // the character to underline
  int64_t width = 0;       // in device pixels
  bool broken = false;     // it ends where a piece of text had no room
};

bool isLineEnd(uint16_t code) { return code == '\r' || code == '\n'; }

int inInt(int64_t value) { return static_cast<int>(std::clamp<int64_t>(value, INT_MIN, INT_MAX)); }

class Layout {
 public:
  Layout(Dc &dc, const RECT &rect, UINT format);

  // Draws a text, or only measures it. Result: how far down from the rectangle's top it reaches, in logical units.
  int run(Run text);
  bool measuring() const { return is(DT_CALCRECT); }
  // The rectangle that the text takes.
  RECT taken() const;
  // The last line that was shortened.
  const std::optional<Codes> &shortened() const { return shortened_; }

 private:
  // How many characters of a piece stand in a line, and how many are done with then.
  struct Cut {
    qsizetype end, next;
    bool atSpace = false; // the line may end in a space, which is not placed with it
  };
  // What follows a line, or a piece of it.
  struct Rest {
    bool hidden; // lines below this one are not drawn
    bool more;   // there is more text
    bool ended;  // the paragraph has a line end
  };

  bool is(UINT flag) const { return (format_ & flag) != 0; }
  bool reaches(int64_t pixels) const { return logicalWidth(dc_, pixels) > room_; }
  // Whether a piece of text that begins after some pixels has room. One that begins beyond the room isn't asked.
  bool fits(int64_t before, int64_t width) const { return reaches(before) || !reaches(before + width); }
  bool beyond(int64_t y) const;

  Paragraph nextParagraph(Run &text) const;
  qsizetype fitting(Run run, int64_t besides) const;
  Run pieceAt(const Paragraph &paragraph, qsizetype from) const;
  Cut cut(Run piece, int64_t before) const;
  Line lineOf(const Paragraph &paragraph, qsizetype from, Cut cut) const;
  Line takeLine(const Paragraph &paragraph, qsizetype &from, Rest rest);
  bool shorten(Line &piece, int64_t before, Rest rest) const;
  void replace(Line &piece, qsizetype front, qsizetype tail) const;
  void drawLine(const Line &line, int64_t y);
  int64_t afterTab(int64_t x) const { return (x / tab_ + 1) * tab_; }
  int64_t widthAfter(int64_t x, uint16_t code) const;
  int64_t measured(Run run) const;

  Dc &dc_;
  mutable TextPen pen_;
  UINT format_;
  RECT rect_;
  int64_t room_, bottom_;
  int64_t lineHeight_; // negative where logical coordinates grow upwards
  int64_t tab_;
  int widest_ = 0;
  int64_t end_ = 0; // of the lowest line, from the rectangle's top
  std::optional<Codes> shortened_;
};

Layout::Layout(Dc &dc, const RECT &rect, UINT format) : dc_(dc), pen_(dc), format_(format), rect_(rect) {
  const TextMetrics &metrics = pen_.font().metrics();
  int64_t tab = kUsualTab;
  if (is(DT_TABSTOP)) { // the bits of its number mean nothing else then
    if (const UINT characters = (format & kTabStopBits) >> 8) tab = characters;
    format_ &= ~kTabStopBits;
  }
  tab_ = std::max<int64_t>(1, tab * metrics.average);
  room_ = int64_t{rect.right} - rect.left;
  if (is(DT_SINGLELINE) || room_ < 0) format_ &= ~DT_WORDBREAK;
  if (room_ < 0) format_ &= ~kEllipses;
  bottom_ = int64_t{rect.bottom} - rect.top;
  lineHeight_ = logicalHeight(dc, pen_.font().height() + (is(DT_EXTERNALLEADING) ? metrics.externalLeading : 0));
  if ((dc.windowExtent.cy < 0) != (dc.viewportExtent.cy < 0)) lineHeight_ = -lineHeight_;
  if (!is(DT_NOCLIP) && !measuring()) pen_.limit(dc.toDevice(rect));
}

// Whether no line is drawn any more at a distance from the rectangle's top. A line that only begins at its bottom is,
// but an edit control shows no part of one.
bool Layout::beyond(int64_t y) const {
  if (measuring() || is(DT_NOCLIP)) return false;
  if (lineHeight_ < 0) return y < bottom_;
  return y + (is(DT_EDITCONTROL) ? lineHeight_ - 1 : 0) > bottom_;
}

Paragraph Layout::nextParagraph(Run &text) const {
  Paragraph paragraph;
  size_t at = 0;
  const auto isEnd = [&](size_t place) { return !is(DT_SINGLELINE) && isLineEnd(text[place]); };
  for (; at < text.size() && !isEnd(at); ++at) {
    const bool prefix = text[at] == '&' && !is(DT_NOPREFIX) && at + 1 < text.size();
    if (prefix && text[at + 1] == '&')
      ++at;
    else if (prefix) {
      if (!isEnd(at + 1)) paragraph.prefixed.append(paragraph.codes.size());
      continue;
    }
    paragraph.codes.append(text[at]);
  }
  paragraph.ended = at < text.size();
  // \r\n is one end, and so is \n\r
  if (at < text.size()) at += at + 1 < text.size() && isEnd(at + 1) && text[at] != text[at + 1] ? 2 : 1;
  text = text.subspan(at);
  return paragraph;
}

int64_t Layout::widthAfter(int64_t x, uint16_t code) const {
  return code == '\t' && is(DT_EXPANDTABS) ? afterTab(x) : x + pen_.font().advance(code);
}

int64_t Layout::measured(Run run) const {
  int64_t x = 0;
  for (const uint16_t code : run) x = widthAfter(x, code);
  return x;
}

// How many characters have room, with so many pixels more.
qsizetype Layout::fitting(Run run, int64_t besides) const {
  int64_t x = 0;
  qsizetype count = 0;
  for (const uint16_t code : run) {
    x = widthAfter(x, code);
    if (reaches(x + besides)) break;
    ++count;
  }
  return count;
}

// The last place up to one where a line may end; 0 where there is none.
qsizetype lastBreak(Run run, qsizetype place) {
  QVarLengthArray<QChar, 256> characters;
  for (const uint16_t code : run.first(static_cast<size_t>(place) + 1)) characters.append(characterOf(code));
  QTextBoundaryFinder finder(QTextBoundaryFinder::Line, characters.constData(), characters.size());
  finder.setPosition(place);
  const qsizetype usual = finder.isAtBoundary() ? place : std::max<qsizetype>(0, finder.toPreviousBoundary());
  // the platform also breaks after a letter before these, which cuts paths between folders
  const auto isSign = [](QChar c) { return c == u'\\' || c == u'+' || c == u'$'; };
  for (; place > usual; --place)
    if (isSign(characters[place]) && characters[place - 1].isLetter()) return place;
  return usual;
}

// The text from a place up to the next tab that is expanded.
Run Layout::pieceAt(const Paragraph &paragraph, qsizetype from) const {
  const Run rest = Run(paragraph.codes).subspan(static_cast<size_t>(from));
  const auto end = is(DT_EXPANDTABS) ? std::find(rest.begin(), rest.end(), '\t') : rest.end();
  return rest.first(static_cast<size_t>(end - rest.begin()));
}

// Where the line ends in a piece that has no room in it. A word that has no room reaches to the next space, which is
// not drawn.
Layout::Cut Layout::cut(Run piece, int64_t before) const {
  const qsizetype room = fitting(piece, before);
  if (const qsizetype end = lastBreak(piece, room)) return {end, end, true};
  if (is(DT_EDITCONTROL) && !is(DT_PATH_ELLIPSIS | DT_WORD_ELLIPSIS)) // those have dots for such a word
    return {std::max<qsizetype>(1, room), std::max<qsizetype>(1, room)};
  const auto space = std::find(piece.begin() + room, piece.end(), ' ');
  return {space - piece.begin(), std::min(space + 1, piece.end()) - piece.begin()};
}

Line Layout::lineOf(const Paragraph &paragraph, qsizetype from, Cut cut) const {
  Line line;
  qsizetype to = from + cut.end;
  if (cut.atSpace && is(DT_CENTER | DT_RIGHT) && paragraph.codes[to - 1] == ' ') --to;
  line.codes.append(paragraph.codes.constData() + from, to - from);
  line.width = measured(line.codes);
  for (const qsizetype prefixed : paragraph.prefixed)
    if (prefixed >= from && prefixed < to) line.prefixed = prefixed - from;
  return line;
}

// Puts dots between the first characters of a piece and those from a place on.
void Layout::replace(Line &piece, qsizetype front, qsizetype tail) const {
  Codes codes(piece.codes.begin(), piece.codes.begin() + front);
  codes.append(std::begin(kDots), std::size(kDots));
  codes.append(piece.codes.constData() + tail, piece.codes.size() - tail);
  if (piece.prefixed >= tail)
    piece.prefixed += codes.size() - piece.codes.size();
  else if (piece.prefixed >= front)
    piece.prefixed = -1;
  piece.codes = std::move(codes);
  piece.width = measured(piece.codes);
}

// Puts dots into a piece where the format asks for them. Result: whether it did.
bool Layout::shorten(Line &piece, int64_t before, Rest rest) const {
  const int64_t dots = measured(kDots);
  const Run codes = piece.codes;
  bool done = false;
  if (is(DT_PATH_ELLIPSIS) && !fits(before, piece.width)) {
    const auto name =
        std::find_if(codes.rbegin(), codes.rend(), [](uint16_t code) { return code == '\\' || code == '/'; });
    const size_t tail = name == codes.rend() ? 0 : static_cast<size_t>(codes.rend() - name) - 1;
    const int64_t besides = before + dots + measured(codes.subspan(tail));
    replace(piece, fitting(codes.first(tail), besides), static_cast<qsizetype>(tail));
    done = true;
  }
  const bool wide = !fits(before, piece.width);
  const bool cut = (rest.hidden && (rest.more || rest.ended)) || (!rest.more && wide);
  if ((is(DT_WORD_ELLIPSIS) && wide) || (is(DT_END_ELLIPSIS) && cut)) {
    replace(piece, fitting(piece.codes, before + dots), piece.codes.size());
    done = true;
  }
  return done;
}

// Takes the next line off a paragraph. from: where it begins, and then where the one after it does. The text between
// two tabs is a piece that is broken and shortened for itself, in the room that is left for it. A line ends where a
// piece was broken; dots take the place of all that follows in the paragraph, if tabs are expanded.
Line Layout::takeLine(const Paragraph &paragraph, qsizetype &from, Rest rest) {
  const Codes &codes = paragraph.codes;
  Line line;
  do {
    for (; is(DT_EXPANDTABS) && from < codes.size() && codes[from] == '\t'; ++from) {
      line.codes.append('\t');
      line.width = afterTab(line.width);
    }
    const Run run = pieceAt(paragraph, from);
    const auto all = static_cast<qsizetype>(run.size());
    line.broken = is(DT_WORDBREAK) && !fits(line.width, measured(run));
    const Cut end = line.broken ? cut(run, line.width) : Cut{all, all};
    Line piece = lineOf(paragraph, from, end);
    from += end.next;
    const Rest behind{rest.hidden, rest.more || from < codes.size(), rest.ended};
    const bool dotted = is(kEllipses) && shorten(piece, line.width, behind);
    if (dotted && is(DT_EXPANDTABS)) from = codes.size();
    if (piece.prefixed >= 0) line.prefixed = line.codes.size() + piece.prefixed;
    line.codes.append(piece.codes.constData(), piece.codes.size());
    line.width += piece.width;
    if (dotted) shortened_ = line.codes;
  } while (!line.broken && from < codes.size());
  return line;
}

// y: from the rectangle's top.
void Layout::drawLine(const Line &line, int64_t y) {
  const int64_t right = int64_t{rect_.right} - logicalWidth(dc_, line.width); // where it begins to end at the right
  const int64_t left = is(DT_CENTER) ? (rect_.left + right) / 2 : is(DT_RIGHT) ? right : rect_.left;
  const auto at = [&](int64_t x) { return POINT{inInt(left + logicalWidth(dc_, x)), inInt(rect_.top + y)}; };
  const Run codes = line.codes;
  int64_t x = 0, begin = 0; // begin: of the characters from first on
  size_t first = 0;
  for (size_t i = 0; i < codes.size(); ++i) {
    const int64_t next = widthAfter(x, codes[i]);
    const bool tab = codes[i] == '\t' && is(DT_EXPANDTABS);
    if (std::cmp_equal(i, line.prefixed) && !tab && !is(DT_HIDEPREFIX)) pen_.underline(at(0), x, next - x);
    if (tab) {
      if (!is(DT_PREFIXONLY)) pen_.draw(at(begin), codes.subspan(first, i - first));
      first = i + 1;
      begin = next;
    }
    x = next;
  }
  if (!is(DT_PREFIXONLY)) pen_.draw(at(begin), codes.subspan(first));
}

int Layout::run(Run text) {
  if (text.empty()) { // it has the height of a line, but takes that room only where there is just one
    end_ = is(DT_SINGLELINE) ? lineHeight_ : 0;
    return inInt(lineHeight_);
  }
  int64_t y = 0;
  if (is(DT_SINGLELINE) && is(DT_VCENTER))
    y = bottom_ / 2 - lineHeight_ / 2;
  else if (is(DT_SINGLELINE) && is(DT_BOTTOM))
    y = bottom_ - lineHeight_;
  bool last = false;
  do {
    const Paragraph paragraph = nextParagraph(text);
    qsizetype from = 0;
    bool rest = true; // of the paragraph
    while (!last && rest) {
      const Rest below{beyond(y + lineHeight_), !text.empty(), paragraph.ended};
      const Line line = takeLine(paragraph, from, below);
      // a line end behind a word without room ends a line of its own, as on the platform
      rest = from < paragraph.codes.size() || (line.broken && paragraph.ended);
      last = below.hidden || (!rest && !below.more);
      widest_ = std::max(widest_, logicalWidth(dc_, line.width));
      if (!measuring()) drawLine(line, y);
      y += lineHeight_;
    }
  } while (!last);
  end_ = y;
  return inInt(y);
}

RECT Layout::taken() const {
  return {rect_.left, rect_.top, inInt(int64_t{rect_.left} + widest_), inInt(rect_.top + end_)};
}

// Writes a shortened line in place of the text. It has at most three bytes more, and a zero follows.
void writeBack(const Codes &codes, char *text, size_t size) {
  size_t at = 0;
  for (const uint16_t code : codes) {
    const size_t bytes = code > 0xFF ? 2 : 1;
    if (at + bytes > size + std::size(kDots)) break; // a lone lead byte has become a whole character
    if (bytes == 2) text[at++] = static_cast<char>(code >> 8);
    text[at++] = static_cast<char>(code);
  }
  text[at] = 0;
}

} // namespace

} // namespace platform

using namespace platform;

int DrawTextA(HDC dc, LPCSTR text, int length, RECT *rect, UINT format) {
  return locked<int>(0, [&]() -> int {
    const auto context = dcOf(dc);
    if (!context || !rect || length == 0 || (!text && length > 0)) return 0;
    const size_t size = length > 0 ? static_cast<size_t>(length) : text ? std::strlen(text) : 0;
    Layout layout(*context, *rect, format);
    const int height = layout.run(codesOf({text, size}));
    if (layout.measuring()) *rect = layout.taken();
    if (format & DT_MODIFYSTRING && layout.shortened())
      writeBack(*layout.shortened(), const_cast<char *>(text), size); // the flag says that it may be written to
    return height != 0 ? height : 1;
  });
}
