// Turns the bytes of string values into wide text and back, the way the drawing's version and
// code page ask: UTF-8 from the 2007 format on, the drawing's code page before it, and in both
// the \U+XXXX escapes that carry characters the bytes cannot.
#pragma once

#include <string>
#include <string_view>

namespace host::dxf {

class TextCodec {
 public:
  // From the header's $ACADVER ("AC1015" ... "AC1032") and $DWGCODEPAGE ("ANSI_1252",
  // "ANSI_932", ...). A version from AC1021 on means UTF-8 and the code page is not used; any
  // other version, or none, means the code page. A code page this system does not know or
  // cannot convert falls back to Windows-1252: see codePageFellBack().
  TextCodec(std::string_view acadVersion, std::string_view dwgCodePage);

  bool usesUtf8() const { return utf8_; }
  // The character set the bytes are read in: "UTF-8", or the converter's name ("CP1252").
  const std::string& charset() const { return charset_; }
  // Whether the code page was replaced by Windows-1252 because it is unknown or unavailable.
  bool codePageFellBack() const { return fellBack_; }

  // Bytes that are not valid in the character set become U+FFFD. "\U+XXXX" (exactly four hex
  // digits, "\u+" too) becomes that character; a high and a low surrogate escaped one after the
  // other become one character. "\M+nXXXX" escapes are left as they are.
  std::wstring decode(std::string_view bytes) const;
  // The bytes in the character set alone, escapes left as they stand.
  std::wstring decodePlain(std::string_view bytes) const;
  // Characters the code page cannot hold are written "\U+XXXX" (upper-case hex; past U+FFFF as
  // two escapes of the UTF-16 surrogates). With UTF-8 only lone surrogates need escapes.
  std::string encode(std::wstring_view text) const;

 private:
  std::string charset_;
  bool utf8_ = false;
  bool fellBack_ = false;
};

}  // namespace host::dxf
