// Finding font files. An installed face is taken as it is; for others a table tells what kind of face the name means.

#include "platform/desktop/drawing/faces.h"

#include "platform/kernel/codepage.h"

#include <algorithm>
#include <map>
#include <string_view>

namespace platform {

namespace {

constexpr FcChar32 kHiragana = 0x3042, kIdeograph = 0x4E9C; // a face that has both has Japanese

struct Known {
  std::string_view name;
  bool japanese, fixed, serif;
};

// Faces that applications for the platform ask for.
constexpr Known kKnown[] = {
    {"", true, false, false},
    {"ＭＳ ゴシック", true, true, false},
    {"MS Gothic", true, true, false},
    {"ＭＳ 明朝", true, true, true},
    {"MS Mincho", true, true, true},
    {"Terminal", true, true, false},
    {"FixedSys", true, true, false},
    {"ＭＳ Ｐゴシック", true, false, false},
    {"MS PGothic", true, false, false},
    {"MS UI Gothic", true, false, false},
    {"ＭＳ Ｐ明朝", true, false, true},
    {"MS PMincho", true, false, true},
    {"メイリオ", true, false, false},
    {"Meiryo", true, false, false},
    {"Meiryo UI", true, false, false},
    {"游ゴシック", true, false, false},
    {"Yu Gothic", true, false, false},
    {"Yu Gothic UI", true, false, false},
    {"游明朝", true, false, true},
    {"Yu Mincho", true, false, true},
    {"System", true, false, false},
    {"MS Shell Dlg", true, false, false},
    {"MS Shell Dlg 2", true, false, false},
    {"Courier", false, true, false},
    {"Courier New", false, true, false},
    {"Consolas", false, true, false},
    {"Lucida Console", false, true, false},
    {"Times", false, false, true},
    {"Times New Roman", false, false, true},
    {"MS Serif", false, false, true},
    {"Roman", false, false, true},
    {"Georgia", false, false, true},
    {"Arial", false, false, false},
    {"Helvetica", false, false, false},
    {"MS Sans Serif", false, false, false},
    {"Tahoma", false, false, false},
    {"Verdana", false, false, false},
};

constexpr BYTE kPitchBits = 3, kFamilyBits = 0xF0, kRoman = 0x10, kModern = 0x30;
constexpr LONG kHeaviestNormal = 550; // from here on the bold face is the nearer one

const FcChar8 *bytes(const char *text) { return reinterpret_cast<const FcChar8 *>(text); }

bool sameName(const char *a, const char *b) { return FcStrCmpIgnoreCase(bytes(a), bytes(b)) == 0; }

const Known *known(const std::string &name) {
  const auto *found = std::find_if(std::begin(kKnown), std::end(kKnown),
                                   [&](const Known &entry) { return sameName(entry.name.data(), name.c_str()); });
  return found == std::end(kKnown) ? nullptr : found;
}

bool isNamed(FcPattern *pattern, const std::string &name) {
  FcChar8 *family = nullptr;
  for (int i = 0; FcPatternGetString(pattern, FC_FAMILY, i, &family) == FcResultMatch; ++i)
    if (sameName(reinterpret_cast<const char *>(family), name.c_str())) return true;
  return false;
}

int number(FcPattern *pattern, const char *property, int missing) {
  int value = missing;
  return FcPatternGetInteger(pattern, property, 0, &value) == FcResultMatch ? value : missing;
}

bool isTrue(FcPattern *pattern, const char *property) {
  FcBool value = FcFalse;
  return FcPatternGetBool(pattern, property, 0, &value) == FcResultMatch && value == FcTrue;
}

bool has(FcPattern *pattern, FcChar32 character) {
  FcCharSet *set = nullptr;
  return FcPatternGetCharSet(pattern, FC_CHARSET, 0, &set) == FcResultMatch && FcCharSetHasChar(set, character);
}

// An open file stays open: few of them are ever needed.
FT_Face fileOf(FcPattern *pattern) {
  static auto *files = new std::map<std::pair<std::string, int>, FT_Face>;
  FcChar8 *path = nullptr;
  if (FcPatternGetString(pattern, FC_FILE, 0, &path) != FcResultMatch) return nullptr;
  const int index = number(pattern, FC_INDEX, 0);
  const std::pair key(std::string(reinterpret_cast<const char *>(path)), index);
  if (const auto known = files->find(key); known != files->end()) return known->second;
  FT_Face &face = files->emplace(key, nullptr).first->second;
  if (!freeType() || FT_New_Face(freeType(), key.first.c_str(), index, &face) != 0) face = nullptr;
  if (face && (!FT_IS_SCALABLE(face) || FT_Select_Charmap(face, FT_ENCODING_UNICODE) != 0)) {
    FT_Done_Face(face);
    face = nullptr;
  }
  return face;
}

} // namespace

FT_Library freeType() {
  static const FT_Library library = [] {
    FT_Library made = nullptr;
    return FT_Init_FreeType(&made) == 0 ? made : nullptr;
  }();
  return library;
}

Wish::Wish(const LOGFONTA &font)
    : name(utf8FromCodePage(font.lfFaceName)), bold(font.lfWeight > kHeaviestNormal), italic(font.lfItalic != 0),
      japanese(true), fixed((font.lfPitchAndFamily & kPitchBits) == FIXED_PITCH),
      serif((font.lfPitchAndFamily & kFamilyBits) == kRoman) {
  if (const Known *entry = known(name)) {
    japanese = entry->japanese || font.lfCharSet == SHIFTJIS_CHARSET;
    fixed = entry->fixed || (name.empty() && fixed);
    serif = entry->serif || (name.empty() && serif);
  } else if ((font.lfPitchAndFamily & kFamilyBits) == kModern) {
    fixed = true;
  }
}

Typeface::Typeface(const Wish &wish) : wish_(wish) {
  search(wish.japanese ? "ja" : "en");
  rank();
  if (!wish.japanese || candidates_.empty() || candidates_.front().japanese ||
      isNamed(candidates_.front().pattern, wish.name))
    return;
  search("en"); // nothing has Japanese, and what was found for it is in no useful order
  rank();
}

void Typeface::search(const char *language) {
  const std::unique_ptr<FcPattern, void (*)(FcPattern *)> pattern(FcPatternCreate(), FcPatternDestroy);
  if (!pattern) return;
  if (!wish_.name.empty()) FcPatternAddString(pattern.get(), FC_FAMILY, bytes(wish_.name.c_str()));
  const char *generic = wish_.fixed ? "monospace" : wish_.serif ? "serif" : "sans-serif";
  FcPatternAddString(pattern.get(), FC_FAMILY, bytes(generic));
  FcPatternAddString(pattern.get(), FC_LANG, bytes(language));
  FcPatternAddInteger(pattern.get(), FC_WEIGHT, wish_.bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR);
  FcPatternAddInteger(pattern.get(), FC_SLANT, wish_.italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
  FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
  FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
  FcDefaultSubstitute(pattern.get());
  FcResult result;
  found_.reset(FcFontSort(nullptr, pattern.get(), FcFalse, nullptr, &result));
}

// Puts the best candidate to the front, and then those with Japanese, without a change of order otherwise.
void Typeface::rank() {
  candidates_.clear();
  for (int i = 0; found_ && i < found_->nfont; ++i) {
    FcPattern *pattern = found_->fonts[i];
    if (!isTrue(pattern, FC_SCALABLE) || isTrue(pattern, FC_COLOR)) continue;
    const bool japanese = has(pattern, kHiragana) && has(pattern, kIdeograph);
    Face face;
    face.fixed = number(pattern, FC_SPACING, FC_PROPORTIONAL) >= FC_DUAL;
    face.addBold = wish_.bold && number(pattern, FC_WEIGHT, FC_WEIGHT_REGULAR) < FC_WEIGHT_DEMIBOLD;
    face.addSlant = wish_.italic && number(pattern, FC_SLANT, FC_SLANT_ROMAN) == FC_SLANT_ROMAN;
    candidates_.push_back({pattern, japanese, false, face});
  }
  const auto score = [&](const Candidate &candidate) {
    if (!wish_.name.empty() && isNamed(candidate.pattern, wish_.name)) return 0;
    const bool fits = candidate.face.fixed == wish_.fixed;
    if (wish_.japanese) return candidate.japanese ? (fits ? 1 : 2) : (fits ? 3 : 4);
    return 1;
  };
  const auto better = [&](const Candidate &a, const Candidate &b) { return score(a) < score(b); };
  const auto best = std::min_element(candidates_.begin(), candidates_.end(), better);
  if (best == candidates_.end()) return;
  std::rotate(candidates_.begin(), best, best + 1);
  std::stable_sort(candidates_.begin() + 1, candidates_.end(), [&](const Candidate &a, const Candidate &b) {
    const auto rank = [&](const Candidate &c) { return c.japanese ? (c.face.fixed == wish_.fixed ? 0 : 1) : 2; };
    return rank(a) < rank(b);
  });
}

const Face *Typeface::open(Candidate &candidate) {
  if (!candidate.opened) {
    candidate.face.file = fileOf(candidate.pattern);
    candidate.opened = true;
  }
  return candidate.face.file ? &candidate.face : nullptr;
}

const Face *Typeface::main() {
  for (Candidate &candidate : candidates_)
    if (const Face *face = open(candidate)) return face;
  return nullptr;
}

const Face *Typeface::with(char16_t character) {
  for (Candidate &candidate : candidates_)
    if (has(candidate.pattern, character))
      if (const Face *face = open(candidate)) return face;
  return nullptr;
}

std::shared_ptr<Typeface> typefaceFor(const Wish &wish) {
  constexpr size_t kKept = 32;
  static auto *kept = new std::vector<std::shared_ptr<Typeface>>;
  const auto found = std::find_if(kept->begin(), kept->end(), [&](const auto &face) { return face->wish() == wish; });
  if (found != kept->end()) return *found;
  auto made = std::make_shared<Typeface>(wish);
  if (kept->size() == kKept) kept->erase(kept->begin());
  kept->push_back(made);
  return made;
}

} // namespace platform
