// Collecting characters, and writing their outlines and meanings.

#include "platform/desktop/printing/pdffonts.h"

#include FT_OUTLINE_H

#include <algorithm>

namespace platform {

namespace {

constexpr size_t kCodes = 256; // of a font

// Writes an outline as a path. The form has no curves of second degree, so those become such of third.
struct PathWriter {
  PdfText path;
  double x = 0, y = 0;
  bool open = false;

  void to(double toX, double toY) {
    x = toX;
    y = toY;
    point(x, y);
  }
  void point(double atX, double atY) { path.number(atX, 2).number(atY, 2); }
  void close() {
    if (open) path.word("h");
  }
};

double coordinate(FT_Pos position) { return static_cast<double>(position); }

FT_Outline_Funcs pathFunctions() {
  FT_Outline_Funcs functions{};
  functions.move_to = [](const FT_Vector *to, void *user) {
    auto &writer = *static_cast<PathWriter *>(user);
    writer.close();
    writer.open = true;
    writer.to(coordinate(to->x), coordinate(to->y));
    writer.path.word("m");
    return 0;
  };
  functions.line_to = [](const FT_Vector *to, void *user) {
    auto &writer = *static_cast<PathWriter *>(user);
    writer.to(coordinate(to->x), coordinate(to->y));
    writer.path.word("l");
    return 0;
  };
  functions.conic_to = [](const FT_Vector *control, const FT_Vector *to, void *user) {
    auto &writer = *static_cast<PathWriter *>(user);
    const double x = coordinate(control->x), y = coordinate(control->y);
    writer.point(writer.x + (x - writer.x) * 2 / 3, writer.y + (y - writer.y) * 2 / 3);
    writer.point(coordinate(to->x) + (x - coordinate(to->x)) * 2 / 3,
                 coordinate(to->y) + (y - coordinate(to->y)) * 2 / 3);
    writer.to(coordinate(to->x), coordinate(to->y));
    writer.path.word("c");
    return 0;
  };
  functions.cubic_to = [](const FT_Vector *a, const FT_Vector *b, const FT_Vector *to, void *user) {
    auto &writer = *static_cast<PathWriter *>(user);
    writer.point(coordinate(a->x), coordinate(a->y));
    writer.point(coordinate(b->x), coordinate(b->y));
    writer.to(coordinate(to->x), coordinate(to->y));
    writer.path.word("c");
    return 0;
  };
  return functions;
}

void appendHex(std::string &text, unsigned value, int digits) {
  for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4) text += "0123456789ABCDEF"[value >> shift & 15];
}

bool loaded(FT_Face file, FT_UInt glyph) {
  return FT_Load_Glyph(file, glyph, FT_LOAD_NO_SCALE | FT_LOAD_NO_BITMAP) == 0;
}

} // namespace

const PdfFonts::Place &PdfFonts::place(const Face &face, FT_UInt glyph, char16_t character) {
  Family &family = families_[{face.file, face.addBold}];
  if (family.places.empty()) family.places.resize(size_t{1} << 16);
  Place &place = family.places[character];
  if (place.font >= 0) return place;
  const int advance = loaded(face.file, glyph) ? static_cast<int>(face.file->glyph->metrics.horiAdvance) : 0;
  if (family.newest < 0 || fonts_[static_cast<size_t>(family.newest)].shapes.size() == kCodes) {
    fonts_.push_back({face.file, face.addBold, {}});
    family.newest = static_cast<int>(fonts_.size()) - 1;
  }
  std::vector<Shape> &shapes = fonts_[static_cast<size_t>(family.newest)].shapes;
  shapes.push_back({glyph, character, advance});
  place = {family.newest, static_cast<uint8_t>(shapes.size() - 1),
           1.0 * advance / std::max<int>(1, face.file->units_per_EM)};
  return place;
}

std::string PdfFonts::outlineOf(const Font &font, const Shape &shape) {
  static const FT_Outline_Funcs functions = pathFunctions();
  PathWriter writer;
  const bool drawn = loaded(font.file, shape.glyph) && font.file->glyph->format == FT_GLYPH_FORMAT_OUTLINE;
  FT_BBox box{};
  if (drawn) {
    FT_Outline &outline = font.file->glyph->outline;
    if (font.bold) FT_Outline_Embolden(&outline, font.file->units_per_EM / 24);
    FT_Outline_Get_CBox(&outline, &box);
    FT_Outline_Decompose(&outline, &functions, &writer);
    writer.close();
    if (!writer.path.empty()) writer.path.word("f");
  }
  PdfText metrics; // the shape alone counts, in the colour of the text
  metrics.number(int64_t{shape.advance}).raw(" 0");
  metrics.number(int64_t{box.xMin}).number(int64_t{box.yMin}).number(int64_t{box.xMax}).number(int64_t{box.yMax});
  return metrics.raw(" d1").str() + writer.path.str();
}

// The table from codes to characters.
std::string PdfFonts::meaningsOf(const Font &font) {
  constexpr size_t kAtOnce = 100; // the most that may follow one another
  std::string text = "/CIDInit /ProcSet findresource begin\n12 dict begin\nbegincmap\n/CMapName /Meanings def\n"
                     "/CMapType 2 def\n1 begincodespacerange\n<00> <FF>\nendcodespacerange\n";
  for (size_t first = 0; first < font.shapes.size(); first += kAtOnce) {
    const size_t end = std::min(font.shapes.size(), first + kAtOnce);
    text += std::to_string(end - first) + " beginbfchar\n";
    for (size_t code = first; code < end; ++code) {
      text += '<';
      appendHex(text, static_cast<unsigned>(code), 2);
      text += "> <";
      appendHex(text, font.shapes[code].character, 4);
      text += ">\n";
    }
    text += "endbfchar\n";
  }
  return text + "endcmap\nCMapName currentdict /CMap defineresource pop\nend\nend\n";
}

int PdfFonts::writeFont(PdfFile &file, const Font &font) {
  const FT_BBox &box = font.file->bbox;
  const double unit = 1.0 / std::max<int>(1, font.file->units_per_EM);
  PdfText shapes, names, widths;
  for (size_t code = 0; code < font.shapes.size(); ++code) {
    const int shape = file.reserve();
    file.stream(shape, "", outlineOf(font, font.shapes[code]));
    const std::string name = "/c" + std::to_string(code);
    shapes.word(name).object(shape);
    names.word(name);
    widths.number(int64_t{font.shapes[code].advance});
  }
  const int meanings = file.reserve();
  file.stream(meanings, "", meaningsOf(font));
  PdfText body;
  body.raw("<< /Type /Font /Subtype /Type3 /FontMatrix [").number(unit, 9).raw(" 0 0").number(unit, 9).raw(" 0 0 ]");
  body.raw(" /FontBBox [").number(int64_t{box.xMin}).number(int64_t{box.yMin}).number(int64_t{box.xMax});
  body.number(int64_t{box.yMax}).raw(" ] /Resources << >> /FirstChar 0 /LastChar");
  body.number(static_cast<int64_t>(font.shapes.size()) - 1).raw(" /Widths [").raw(widths.str());
  body.raw(" ] /Encoding << /Type /Encoding /Differences [ 0").raw(names.str()).raw(" ] >> /CharProcs <<");
  body.raw(shapes.str()).raw(" >> /ToUnicode").object(meanings).raw(" >>");
  return file.object(body.str());
}

void PdfFonts::write(PdfFile &file, int resources) const {
  PdfText all;
  all.raw("<<");
  for (size_t i = 0; i < fonts_.size(); ++i) all.word("/F" + std::to_string(i)).object(writeFont(file, fonts_[i]));
  file.object(resources, all.raw(" >>").str());
}

} // namespace platform
