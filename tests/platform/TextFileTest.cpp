// Text files as the module reads them: which encoding a file's bytes select,
// and the buffer-sized pieces lines arrive in.
#include "platform/TextFile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace platform {
namespace {

std::vector<std::wstring> pieces(const std::wstring& text, std::size_t buffer) {
  TextFileLines lines(text, buffer);
  std::vector<std::wstring> out;
  for (std::wstring piece; lines.next(piece);) out.push_back(piece);
  return out;
}

TEST(TextFileTest, BytesSelectTheEncoding) {
  const auto cp = [](std::string_view b) { return L"cp:" + latin1Text(b); };
  struct Case {
    std::string bytes;
    std::wstring text;
  } cases[] = {
      {"a\tb\r\nc\n", L"a\tb\nc\n"},  // ASCII; CR LF reads as LF
      {"x\ry", L"x\ry"},              // a lone CR stays
      {"\xEF\xBB\xBFStra\xC3\x9F"
       "e",
       L"Stra\u00DFe"},  // UTF-8 behind its mark
      {"Stra\xC3\x9F"
       "e",
       L"Stra\u00DFe"},  // valid UTF-8 without one
      {"Stra\xDF"
       "e",
       L"cp:Stra\u00DF"
       L"e"},                                      // not UTF-8: the code page
      {"\xC0\xAF", L"cp:\u00C0\u00AF"},            // overlong form is no UTF-8
      {"\xED\xA0\x80", L"cp:\u00ED\u00A0\u0080"},  // nor is an encoded surrogate
      {std::string("\xFF\xFE"
                   "A\0\r\0\n\0\x3D\xD8\x00\xDE",
                   12),
       L"A\n\U0001F600"},
      {std::string("\xFE\xFF\0B\xD8\x3D", 6), L"B\uFFFD"},  // big endian, lone surrogate
      {std::string("\xFF\xFE"
                   "C\0D",
                   5),
       L"C"},  // odd last byte dropped
  };
  for (const Case& c : cases) {
    EXPECT_EQ(decodeTextFile(c.bytes, cp), c.text) << c.bytes;
  }
}

TEST(TextFileTest, LongLinesArriveAsBufferSizedPieces) {
  // A buffer of 5 holds 4 characters: a line of 4 and its line feed come apart.
  EXPECT_EQ(pieces(L"abc\nabcd\nabcdefghij\nz", 5),
            (std::vector<std::wstring>{L"abc\n", L"abcd", L"\n", L"abcd", L"efgh", L"ij\n", L"z"}));
  EXPECT_TRUE(pieces(L"", 5).empty());
  EXPECT_EQ(pieces(std::wstring(TextFileLines::kBufferSize + 5, L'x'), TextFileLines::kBufferSize)
                .front()
                .size(),
            TextFileLines::kBufferSize - 1);
}

}  // namespace
}  // namespace platform
