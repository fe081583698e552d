// Faces: which installed font files stand for the face that a font asks for. fontconfig finds them, FreeType reads
// them. Both work without the Qt application object and on any thread, under the desktop lock.
#pragma once

#include "platform/winapi.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <memory>
#include <string>
#include <vector>

namespace platform {

FT_Library freeType();

// What of a font's description decides on its files.
struct Wish {
  explicit Wish(const LOGFONTA &font);
  bool operator==(const Wish &) const = default;

  std::string name; // UTF-8
  bool bold, italic;
  bool japanese; // the face is one for Japanese text
  bool fixed;    // all characters are one or two cells wide
  bool serif;
};

// One file that characters come from.
struct Face {
  FT_Face file = nullptr;
  bool fixed = false;                     // all its characters are one or two cells wide
  bool addBold = false, addSlant = false; // it has not got what was asked for
};

// The files for one wish: the best one, and others for the characters that it has not got.
class Typeface {
 public:
  explicit Typeface(const Wish &wish);

  const Wish &wish() const { return wish_; }
  // Null on a machine without fonts.
  const Face *main();
  // Null where no file has the character.
  const Face *with(char16_t character);

 private:
  struct Candidate {
    FcPattern *pattern;
    bool japanese;
    bool opened;
    Face face;
  };
  struct SetDeleter {
    void operator()(FcFontSet *set) const { FcFontSetDestroy(set); }
  };

  void search(const char *language);
  void rank();
  static const Face *open(Candidate &candidate);

  Wish wish_;
  std::unique_ptr<FcFontSet, SetDeleter> found_;
  std::vector<Candidate> candidates_; // the best one first
};

std::shared_ptr<Typeface> typefaceFor(const Wish &wish);

} // namespace platform
