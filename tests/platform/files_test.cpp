#include "platform/files.h"
#include "support/desktop.h"

using Files = FilesTest;

// Who reads or writes must be allowed to by all others that do so, and allow them what they do. Who does neither is in
// nobody's way. A file can be deleted when all who have it open allow that.
TEST_F(Files, ShareAsTheirOpenersAllow) {
  for (DWORD both = 0; both < 32; ++both) {
    const DWORD access = both / 8, share = both % 8;
    writeFile(folder_.file("a"), "text");
    open(at("a"), access, share, OPEN_EXISTING);
    const HANDLE first = file_;
    for (DWORD other = 0; other < 32; ++other) {
      const DWORD need = other / 8;
      const bool agree = (share & need) == need && (other & access) == access;
      const std::string opened = "open a " + std::to_string(need) + ' ' + std::to_string(other % 8);
      run(opened + (agree || access == 0 || need == 0 ? " ok; close ok" : " 32"));
    }
    if (access != 0) run("create a 2 32"); // and cuts nothing
    file_ = first;
    run(access == 0 || (share & FILE_SHARE_DELETE) ? "size 4; erase a ok; close ok; attr a 2"
                                                   : "size 4; erase a 32; close ok; attr a 0");
  }
}

// To cut a file is to write it, whatever the access that comes of it.
TEST_F(Files, AreCutWithoutBeingWritten) {
  for (DWORD access = 0; access < 4; ++access) {
    writeFile(folder_.file("a"), "text");
    EXPECT_EQ(open(at("a"), access, 7, CREATE_ALWAYS), "ok") << access;
    EXPECT_EQ(GetLastError(), DWORD{ERROR_ALREADY_EXISTS}) << access;
    EXPECT_EQ(GetFileSize(file_, nullptr), 0u) << access;
    const HANDLE first = file_;
    run(std::string("open a 3 0 ") + (access == 0 ? "ok; close ok" : "32")); // no more is claimed than was asked for
    run(std::string("open a 1 ") + (access & 2 ? "3" : "1") + " ok; close ok");
    file_ = first;
    run(std::string("write x ") + (access & 2 ? "ok" : "5") + "; close ok; erase a ok");
  }
  if (onWine()) return; // which cuts read-only files, and those whose openers forbid that
  run("put a text ok; set a 1 ok");
  for (DWORD access = 0; access < 2; ++access) EXPECT_EQ(open(at("a"), access, 7, CREATE_ALWAYS), "5") << access;
  run("set a 128 ok; open a 1 1 ok");
  const HANDLE reader = file_;
  for (DWORD access = 0; access < 2; ++access) {
    EXPECT_EQ(open(at("a"), access, 7, CREATE_ALWAYS), "32") << access;
    EXPECT_EQ(open(at("a"), access, 7, TRUNCATE_EXISTING), "87") << access;
  }
  file_ = reader;
  run("size 4; close ok");
}

// A stream lets others read and write, forbids them to delete, and is refused what they forbid.
TEST_F(Files, AreSharedWithStreams) {
  const std::pair<const char *, DWORD> modes[] = {{"rb", 1}, {"r+b", 3}, {"wb", 2}, {"w+b", 3}, {"ab", 2}, {"a+b", 3}};
  for (const auto &[mode, need] : modes)
    for (DWORD both = 0; both < 32; ++both) {
      SCOPED_TRACE(std::string(mode) + ' ' + std::to_string(both));
      const DWORD access = both / 8, share = both % 8;
      writeFile(folder_.file("a"), "text");
      open(at("a"), access, share, OPEN_EXISTING);
      FILE *stream = platformOpenStream(at("a").c_str(), mode);
      EXPECT_EQ(stream != nullptr, access == 0 || (share & need) == need);
      if (!stream) run("size 4; close ok");
      if (!stream) continue;
      run("close ok");
      EXPECT_EQ(open(at("a"), access, share, OPEN_EXISTING), access == 0 || (share & need) == need ? "ok" : "32");
      run("close ok; erase a 32; move a b 32");
      std::fclose(stream);
      run("erase a ok");
    }

  run("put a text ok; open a 1 7 ok; map 2 0 ok; view 4 0 0 ok; unmap ok; close ok");
  for (const char *cutting : {"wb", "w+b"}) EXPECT_EQ(platformOpenStream(at("a").c_str(), cutting), nullptr) << cutting;
  EXPECT_EQ(std::string(view_, 4), "text");
  run("unview ok");
}

TEST_F(Files, AreOpenedReadAndWritten) {
  run("make d ok; put a hello ok; put b hello ok; create a 1 80; create a 3 0; create a 4 183; create a 0 87; "
      "create a 6 87; open a 1 0 ok; size 5; close ok; create a 5 0; create b 2 183; open a 1 0 ok; size 0; close ok; "
      "open b 1 0 ok; size 0; close ok; create n 3 2; create n 5 2; create n1 1 0; create n2 2 0; create n3 4 0; "
      "create no\\x 2 3; create no\\x 3 3; create a\\x 1 3; create d 3 5; create d 2 5; create d\\. 3 5; "
      "create x*y 2 123; create x?y 3 123; create x|y 2 123; create x<y 1 123; create x>y 4 123; create x\"y 2 123; "
      "create d*\\y 2 123; find * ./../a/b/d/n1/n2/n3");
  EXPECT_EQ(create("", OPEN_EXISTING), "3");

  run("put a hello ok; open a 2 0 ok; read 5 5; write HE ok; write ok; close ok; open a 1 0 ok; read 3 =HEl; "
      "read 5 =lo; read 5 =; write x 5; size 5; close ok; read 5 6; write x 6; size 6; close 6; open a 3 0 ok; "
      "read 2 =HE; cut ok; write y ok; close ok; open a 1 0 ok; read 9 =HEy; close ok");
}

TEST_F(Files, KeepTheirAttributes) {
  for (const char *bits : {"1", "2", "4", "6", "7"})
    run("new a # ok; write abc ok; close ok; attr a #; copy a b ok; attr b #; set b 128 ok; attr b 0; set b # ok; "
        "attr b #; set a 128 ok; set b 128 ok; erase a ok; erase b ok",
        bits);
  run("make a ok; attr a 16; attr n 2; set n 2 2; attr n\\n 3; set n\\n 2 3");
}

TEST_F(Files, AreDeletedMovedAndCopied) {
  run("make d ok; make d 183; make n\\d 3; put a 1 ok; make a 183; make a\\d 3; make d\\.. 183; make d? 123; "
      "make d\\e\\ ok; remove n 2; remove a 267; remove d 145; remove d\\e\\ ok; put b 2 ok; put c 3 ok; "
      "put d/x 4 ok; erase n 2; erase n\\n 3; erase d 5; move n m 2; move a b 183; move a d 183; move a n\\a 3; "
      "move a a ok; move a A ok; move A a ok; move a d\\a ok; move d e ok; copy e\\a f ok; copy b f 80; "
      "copyover b f ok; copyover b b 32; copy n m 2; copy b n\\b 3; copy e m 5; open c 2 1 ok; copy c g ok; "
      "move c h 32; close ok; open c 1 4 ok; copy c h 32; move c h ok; close ok; open f 1 0 ok; read 9 =2; close ok; "
      "open e\\a 1 0 ok; read 9 =1; close ok; open g 1 0 ok; read 9 =3; close ok; find * ./../b/e/f/g/h");
}

// Pages are 2 for reading and 4 for both, views 4 for reading and 2 for writing.
TEST_F(Files, AreMapped) {
  run("put e x ok; create e 5 0; open e 1 0 ok; map 2 0 1006; close ok; view 4 0 0 6; unview 487; put a hello ok; "
      "open a 2 0 ok; map 2 0 5; map 4 0 5; close ok; open a 1 0 ok; map 4 0 5; map 2 6 8; map 2 0 ok; view 2 0 0 5; "
      "view 4 1 0 1132; view 4 0 70000 5; view 4 0 3 ok; unview ok; view 4 0 0 ok; unmap ok; close ok; create a 3 0; "
      "create a 2 1224");
  EXPECT_EQ(std::string(view_, 5), "hello"); // the view stays
  run("unview ok; unview 487; open a 3 0 ok; map 4 8 ok; view 2 0 0 ok");
  view_[6] = '!';
  run("flush 1 7 ok; unview ok; unmap ok; size 8; close ok");
  EXPECT_EQ(readFile(folder_.file("a")), std::string("hello\0!\0", 8));
  run("open a 3 0 ok; map 4 70000 ok; view 4 65536 4465 5; view 4 65536 4464 ok; unview ok; unmap ok; close ok");
}

TEST_F(Files, AreFoundAndSearchedFor) {
  run("make sub ok; put b.txt 12 ok; put A.TXT 1 ok; put noext 1 ok; put x.y.z 1 ok; new \x83\x5C.txt 2 ok; close ok");
  for (const char *all : {"*", "*.*"}) run("find # ./../A.TXT/b.txt/noext/sub/x.y.z/\x83\x5C.txt", all);
  for (const char *texts : {"*.txt", "?.txt"}) run("find # A.TXT/b.txt/\x83\x5C.txt", texts);
  run("find 2; find \x83\x5C* \x83\x5C.txt; find ??b sub; find *o*t noext; find x*.z x.y.z; find *.t 2; find ? .; "
      "find sub\\ 2; find sub\\. sub; find sub\\* ./..; find sub\\..\\b.txt b.txt; find n 2; find n\\* 3");

  WIN32_FIND_DATAA entry;
  const HANDLE find = FindFirstFileA(at("b*").c_str(), &entry);
  EXPECT_EQ(entry.dwFileAttributes, DWORD{FILE_ATTRIBUTE_ARCHIVE});
  EXPECT_EQ(entry.nFileSizeLow, 2u);
  EXPECT_EQ(entry.nFileSizeHigh, 0u);
  EXPECT_FALSE(CloseHandle(find)) << "it is closed by a function of its own";
  EXPECT_TRUE(FindClose(find));
  EXPECT_FALSE(FindClose(nullptr));
  EXPECT_EQ(answer(FindNextFileA(INVALID_HANDLE_VALUE, &entry)), "6");

  run("make one ok; make two ok; make two\\sub ok; put one/a.txt 1 ok; put two/a.txt 1 ok; put two/b.txt 1 ok; "
      "put two/n 1 ok; put two/x.y 1 ok; search a.txt .x one\\a.txt; search b.txt .x two\\b.txt; search b txt 2; "
      "search b .txt two\\b.txt; search n .txt 2; search x.y .z two\\x.y; search two .x 2; search *.txt .x 2");
  EXPECT_EQ(search("", nullptr) + search("sub", nullptr) + search("b", nullptr), "87two\\sub2");
}

// Halves of characters that look like separators, single bytes that are no characters, and private characters.
TEST_F(Files, AreNamedInCodePage932) {
  run("make \x95\x5C ok");
  for (const char *name : {"\x83\x5C", "\x81\x5C\x81\x5C", "\x80", "\xA0\xFD\xFE\xFF", "\xE0\x5C_", "\xF9\xFCx",
                           "x\xF8\xE8y", "x\xF8\xB9y"})
    run("create \x95\x5C\\# 1 0; create \x95\x5C\\# 1 80; find \x95\x5C\\* ./../#; find \x95\x5C\\# #; "
        "erase \x95\x5C\\# ok; erase \x95\x5C\\# 2",
        name);

  const std::string inner(100, 'a');
  run("make " + inner + " ok");
  const auto name = [&](size_t length) { return inner + '\\' + std::string(length - at(inner).size() - 1, 'b'); };
  run("new # 0 ok; close ok; set # 128 ok; move # # ok; copy # c ok; erase # ok; make # ok; remove # ok", name(259));
  run("new # 0 206; set # 0 206; move # # 206; copy # c 206; erase # 206; make # 206; remove # 206", name(300));
}
