// The characters of a document as shapes of its own: fonts of up to 256 characters each, whose shapes are the outlines
// of the font files. So whatever form a file has is embedded in the same way, and with a made bold face too, and every
// character tells what it means, so that readers find and copy it.
#pragma once

#include "platform/desktop/drawing/faces.h"
#include "platform/desktop/printing/pdf.h"

#include <map>

namespace platform {

class PdfFonts {
 public:
  // Where a character is.
  struct Place {
    int font = -1;      // by its number among the fonts
    uint8_t code = 0;   // in that font
    double advance = 0; // in ems
  };

  // glyph: in the face's file. character: what it means.
  const Place &place(const Face &face, FT_UInt glyph, char16_t character);
  // Writes the fonts, and with the number reserved for it the object that names them all: /F0, /F1, ...
  void write(PdfFile &file, int resources) const;

 private:
  struct Shape {
    FT_UInt glyph;
    char16_t character;
    int advance; // in units of the file
  };
  struct Font {
    FT_Face file;
    bool bold;
    std::vector<Shape> shapes;
  };
  // A file's characters, which may need several fonts.
  struct Family {
    std::vector<Place> places; // by character
    int newest = -1;           // of its fonts
  };

  static int writeFont(PdfFile &file, const Font &font);
  static std::string outlineOf(const Font &font, const Shape &shape);
  static std::string meaningsOf(const Font &font);

  std::map<std::pair<FT_Face, bool>, Family> families_;
  std::vector<Font> fonts_;
};

} // namespace platform
