#include "support/files.h"

#include "platform/platform.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <thread>
#include <vector>

namespace {

class Profile : public testing::Test {
 protected:
  // What a read hands out into a room of a size, up to the result; the byte behind the room stays as it is.
  std::string get(const char *section, const char *key, DWORD size = 200, const char *otherwise = "D") const {
    std::vector<char> text(size + 1, '~');
    const DWORD length = GetPrivateProfileStringA(section, key, otherwise, text.data(), size, name_.c_str());
    EXPECT_TRUE(text[size] == '~' && (size == 0 || (length < size && text[length] == '\0')));
    return {text.data(), size == 0 ? 0 : length};
  }
  bool put(const char *section, const char *key, const char *value) const {
    return WritePrivateProfileStringA(section, key, value, name_.c_str());
  }
  std::string content() const { return readFile(folder_.file("a.ini")); }
  void write(const std::string &content) const { writeFile(folder_.file("a.ini"), content); }

  const TempFolder folder_;
  std::string name_ = ".\\" + folder_.path() + "\\a.ini";
};

} // namespace

TEST_F(Profile, TextsAndNumbersAreFoundByName) {
  EXPECT_EQ(get("s", "k", 20, "  padded  ") + get("s", "k", 20, "\"quoted\"") + get("s", "k", 20, nullptr),
            "  paddedquoted");
  write("k=outside\r\n; comment\r\n[One]\r\nkey=value\r\n  spaced  =   some text   \r\nquoted=\" in quotes \"\r\n"
        "single='x y'\r\nhalf=\"open\r\nq2=\"a\" b\r\nqq=\"\"\"a\"\"\"\r\nempty=\r\nnoeq\r\n=noname\r\nKEY=second\r\n"
        ";c=d\r\ntab=\tx\t\r\ntail=v ; kept\r\neq=a=b\r\n[two] trailing\na=1\n[ Three ]\ra=3\r[one]\r\nnew=n\r\n"
        "[broken\r\na=9\r\n[\x83\x5C] \x83\x5D\r\n\x95\x5C=\x83\x5C\r\n\x83\x41=a\r\n\x83\x61=b\r\n[x\x83\x5D\r\n"
        "z=1\r\n[a]b]\r\nlast=end");
  std::istringstream rows(
      "One|key|value|oNE|KEY|value| one | key |value|One|spaced|some text|One|quoted| in quotes |One|single|x y|"
      "One|half|\"open|One|q2|\"a\" b|One|qq|\"\"a\"\"|One|empty||One|noeq|D|One||noname|One|c|D|One|tab|x|"
      "One|tail|v ; kept|One|eq|a=b|One|new|D|two|a|1|Three|a|3|broken|a|D||k|outside|n|k|D|"
      "\x83\x5C|\x95\x5C|\x83\x5C|\x83\x5C|\x83\x61|b|\x83\x5C|z|1|a]b|last|end|");
  std::string section, key, value;
  while (std::getline(std::getline(std::getline(rows, section, '|'), key, '|'), value, '|'))
    EXPECT_EQ(get(section.c_str(), key.c_str()), value) << section << ' ' << key;

  const char *const texts[] = {"12",  "-12",  "+12",        "0x1F",        "-0xa",  "12abc", "abc",
                               "",    "  7 ", "4294967295", "99999999999", "\"8\"", "-",     "--5",
                               "1 2", "010",  "- 5",        "-2147483648", "1.9"};
  const int64_t values[] = {12, -12, 12, 31, -10, 12, 0, 99, 7, -1, 1215752191, 8, 0, 0, 1, 10, 0, -2147483648, 1};
  for (size_t i = 0; i < std::size(texts); ++i) {
    write(std::string("[n]\r\nk=") + texts[i]);
    EXPECT_EQ(static_cast<INT>(GetPrivateProfileIntA("N", "K", 99, name_.c_str())), values[i]) << texts[i];
  }
}

TEST_F(Profile, LongResultsAreCut) {
  write("[One]\r\nkey=value\r\nsecond=2\r\n[two]\r\n[Three]\r\n");
  for (DWORD size = 0; size < 8; ++size) {
    EXPECT_EQ(get("One", "key", size), std::string("value").substr(0, size ? size - 1 : 0));
    EXPECT_EQ(get("One", "n", size, "default"), std::string("default").substr(0, size ? size - 1 : 0));
  }
  const std::string keys("key\0second\0", 11), sections("One\0two\0Three\0", 14);
  EXPECT_EQ(get("One", nullptr), keys);
  EXPECT_EQ(get(nullptr, "key"), sections);
  EXPECT_EQ(get("n", nullptr) + get(nullptr, nullptr, 1) + get("One", nullptr, 1), "D");
  for (DWORD size = 3; size <= keys.size(); ++size) { // ends with two NULs, of which one is counted
    EXPECT_EQ(get("One", nullptr, size), keys.substr(0, size - 2));
    EXPECT_EQ(get(nullptr, nullptr, size), sections.substr(0, size - 2));
  }
}

TEST_F(Profile, WritingKeepsTheRest) {
  EXPECT_TRUE(put("s", "k", "v") && put("s", "k2", "\"q\"") && put("t", "k", "") && put(" S ", " K ", "  a=b;c"));
  EXPECT_EQ(content(), "[s]\r\nk=a=b;c\r\nk2=\"q\"\r\n[t]\r\nk=\r\n");
  EXPECT_TRUE(put("s", "k2", nullptr) && put("s", "none", nullptr) && put("none", nullptr, "v") && put("", "o", "1"));
  EXPECT_EQ(content(), "o=1\r\n[s]\r\nk=a=b;c\r\n[t]\r\nk=\r\n");
  EXPECT_TRUE(put("s", nullptr, nullptr) && put("\x83\x5C", "\x95\x5C", "\x83\x5C"));
  EXPECT_EQ(content(), "o=1\r\n[t]\r\nk=\r\n[\x83\x5C]\r\n\x95\x5C=\x83\x5C\r\n");
  EXPECT_EQ(put(nullptr, "k", "v") ? 0 : GetLastError(), DWORD{ERROR_FILE_NOT_FOUND});

  write("; t\r\nx=0\r\n[a]\r\n; in a\r\nx=1\r\nx=2\r\njunk\r\n[a]\r\nx=3\r\nv=4\r\n[b]\r\n;e");
  EXPECT_TRUE(put("a", "X", "9") && put("a", "v", "8") && put("b", "n", "5") && put("c", "n", "1"));
  const std::string rest = "[a]\r\nx=3\r\nv=4\r\n[b]\r\n;e\r\nn=5\r\n[c]\r\nn=1\r\n";
  EXPECT_EQ(content(), "; t\r\nx=0\r\n[a]\r\n; in a\r\nx=9\r\nx=2\r\njunk\r\nv=8\r\n" + rest);
  EXPECT_TRUE(put("a", "x", nullptr));
  EXPECT_EQ(get("a", "x"), "2");
  EXPECT_TRUE(put("a", nullptr, nullptr));
  EXPECT_EQ(content(), "; t\r\nx=0\r\n" + rest); // with the next section of that name
}

TEST_F(Profile, OtherWritersAreSeenAndKept) {
  for (const char *text : {"1", "2", "3", "4", "5"}) { // the same size in the same second
    write(std::string("[s]\r\nk=") + text);
    EXPECT_EQ(get("s", "k"), text);
  }
  const auto writer = [&](const std::string &prefix) {
    for (int i = 0; i < 40; ++i) EXPECT_TRUE(put("s", (prefix + std::to_string(i)).c_str(), prefix.c_str()));
  };
  std::thread other(writer, "a");
  writer("b");
  other.join();
  for (const std::string prefix : {"a", "b"})
    for (int i = 0; i < 40; ++i) EXPECT_EQ(get("s", (prefix + std::to_string(i)).c_str()), prefix);
  EXPECT_EQ(get("s", "k"), "5");

  // files that can't be used are left as they are
  const HANDLE file = CreateFileA(name_.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr);
  EXPECT_EQ(get("s", "k"), "D");
  EXPECT_EQ(put("s", "k", "2") ? 0 : GetLastError(), DWORD{ERROR_SHARING_VIOLATION});
  EXPECT_TRUE(CloseHandle(file));
  EXPECT_EQ(get("s", "k"), "5");
  for (const auto &[name, error] :
       {std::pair<const char *, DWORD>{"\\n\\a", ERROR_PATH_NOT_FOUND}, {"\\.", ERROR_ACCESS_DENIED}}) {
    name_ = folder_.path() + name;
    EXPECT_EQ(put("s", "k", "v") ? 0 : GetLastError(), error);
  }
}
