// The text codec: ASCII passes straight through; UTF-8 is decoded by the platform's conversion
// and code pages go through iconv, whose converters are kept per thread because a converter
// carries state and may not be shared.
#include "TextCodec.h"

#include "FileImage.h"
#include "host/dxf/CodePage.h"

#include <iconv.h>

#include <cerrno>
#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/Text.h"

namespace host::dxf {
namespace {

static_assert(sizeof(wchar_t) == 4, "the codec hands iconv whole code points as wchar_t");

constexpr wchar_t kReplacement = 0xFFFD;
constexpr char kFallbackCharset[] = "CP1252";
// iconv_open's failure value.
const iconv_t kNoConverter = reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr)

// One direction pair of iconv converters for a character set.
struct Converter {
  iconv_t toWide = kNoConverter;
  iconv_t fromWide = kNoConverter;

  Converter() = default;
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() {
    if (toWide != kNoConverter) iconv_close(toWide);
    if (fromWide != kNoConverter) iconv_close(fromWide);
  }
};

// The converters this thread has opened, by character set; a failed open is remembered too so
// that it is not retried for every string.
Converter* converterFor(const std::string& charset) {
  thread_local std::vector<std::pair<std::string, std::unique_ptr<Converter>>> cache;
  for (auto& [name, converter] : cache) {
    if (name == charset) return converter.get();
  }
  auto converter = std::make_unique<Converter>();
  converter->toWide = iconv_open("WCHAR_T", charset.c_str());
  converter->fromWide = iconv_open(charset.c_str(), "WCHAR_T");
  if (converter->toWide == kNoConverter || converter->fromWide == kNoConverter) {
    converter.reset();
  }
  cache.emplace_back(charset, std::move(converter));
  return cache.back().second.get();
}

std::string upperAscii(std::string_view text) {
  std::string out(text);
  for (char& c : out) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
  }
  return out;
}

std::string_view trimBlanks(std::string_view text) {
  while (!text.empty() && (text.front() == ' ' || text.front() == '\t')) text.remove_prefix(1);
  while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) text.remove_suffix(1);
  return text;
}

bool startsWith(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

bool allDigits(std::string_view text) {
  if (text.empty()) return false;
  for (char c : text) {
    if (c < '0' || c > '9') return false;
  }
  return true;
}

// The iconv name of a $DWGCODEPAGE value, or "" when it names nothing this codec knows.
std::string charsetOf(std::string_view codePage) {
  const std::string name = upperAscii(trimBlanks(codePage));
  std::string_view number;
  if (startsWith(name, "ANSI_")) {
    number = std::string_view(name).substr(5);
  } else if (startsWith(name, "DOS")) {
    number = std::string_view(name).substr(3);
  }
  if (allDigits(number)) return "CP" + std::string(number);
  if (name == "UTF8" || name == "UTF-8") return "UTF-8";
  if (startsWith(name, "ISO8859-") && allDigits(std::string_view(name).substr(8))) {
    return "ISO-8859-" + name.substr(8);
  }
  if (name == "BIG5") return "CP950";
  if (name == "GB2312") return "CP936";
  if (name == "KSC5601") return "CP949";
  if (name == "JOHAB") return "JOHAB";
  return "";
}

// "AC1021" and later (the 2007 format on) store text as UTF-8.
bool versionUsesUtf8(std::string_view acadVersion) {
  const std::string version = upperAscii(trimBlanks(acadVersion));
  if (!startsWith(version, "AC") || !allDigits(std::string_view(version).substr(2))) return false;
  const std::string_view digits = std::string_view(version).substr(2);
  if (digits.size() > 6) return true;
  return std::stoi(std::string(digits)) >= 1021;
}

int hexDigit(wchar_t c) {
  if (c >= L'0' && c <= L'9') return c - L'0';
  if (c >= L'A' && c <= L'F') return c - L'A' + 10;
  if (c >= L'a' && c <= L'f') return c - L'a' + 10;
  return -1;
}

// Reads "\U+XXXX" at text[at]; the code unit it stands for, or -1.
long escapeAt(const std::wstring& text, std::size_t at) {
  if (text.size() - at < 7 || text[at] != L'\\' || (text[at + 1] != L'U' && text[at + 1] != L'u') ||
      text[at + 2] != L'+') {
    return -1;
  }
  long value = 0;
  for (std::size_t i = at + 3; i < at + 7; ++i) {
    const int digit = hexDigit(text[i]);
    if (digit < 0) return -1;
    value = value * 16 + digit;
  }
  return value;
}

std::uint32_t codePoint(wchar_t c) {
  return static_cast<std::uint32_t>(static_cast<std::make_unsigned_t<wchar_t>>(c));
}

bool isHighSurrogate(long unit) {
  return unit >= 0xD800 && unit <= 0xDBFF;
}
bool isLowSurrogate(long unit) {
  return unit >= 0xDC00 && unit <= 0xDFFF;
}

void resolveEscapes(std::wstring& text) {
  std::size_t in = text.find(L'\\');
  if (in == std::wstring::npos) return;
  std::size_t out = in;
  while (in < text.size()) {
    long unit = text[in] == L'\\' ? escapeAt(text, in) : -1;
    if (unit < 0) {
      text[out++] = text[in++];
      continue;
    }
    in += 7;
    if (isHighSurrogate(unit) && in < text.size()) {
      const long low = escapeAt(text, in);
      if (isLowSurrogate(low)) {
        unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
        in += 7;
      }
    }
    text[out++] = static_cast<wchar_t>(unit);
  }
  text.resize(out);
}

void appendEscape(std::string& out, std::uint32_t unit) {
  static constexpr char kDigits[] = "0123456789ABCDEF";
  const char text[7] = {'\\',
                        'U',
                        '+',
                        kDigits[(unit >> 12) & 0xF],
                        kDigits[(unit >> 8) & 0xF],
                        kDigits[(unit >> 4) & 0xF],
                        kDigits[unit & 0xF]};
  out.append(text, sizeof text);
}

// The escapes of a character the target cannot hold.
void appendEscaped(std::string& out, wchar_t c) {
  std::uint32_t cp = codePoint(c);
  if (cp > 0x10FFFF) {
    appendEscape(out, kReplacement);
  } else if (cp > 0xFFFF) {
    cp -= 0x10000;
    appendEscape(out, 0xD800 + (cp >> 10));
    appendEscape(out, 0xDC00 + (cp & 0x3FF));
  } else {
    appendEscape(out, cp);
  }
}

bool isAscii(std::string_view bytes) {
  unsigned char any = 0;
  for (char c : bytes) any |= static_cast<unsigned char>(c);
  return any < 0x80;
}

bool isAscii(std::wstring_view text) {
  std::uint32_t any = 0;
  for (wchar_t c : text) any |= codePoint(c);
  return any < 0x80;
}

std::wstring decodeWithIconv(iconv_t cd, std::string_view bytes) {
  iconv(cd, nullptr, nullptr, nullptr, nullptr);
  // No code page makes more than one character of a byte, but a stateful one may hold a
  // character back until the flush at the end, so room is checked anyway.
  std::wstring out(bytes.size() + 4, L'\0');
  auto* in = const_cast<char*>(bytes.data());
  std::size_t inLeft = bytes.size();
  std::size_t used = 0;
  for (;;) {
    const bool flushing = inLeft == 0;
    auto* outPtr = reinterpret_cast<char*>(out.data() + used);
    std::size_t outLeft = (out.size() - used) * sizeof(wchar_t);
    const std::size_t result = flushing ? iconv(cd, nullptr, nullptr, &outPtr, &outLeft)
                                        : iconv(cd, &in, &inLeft, &outPtr, &outLeft);
    const int error = errno;
    used = out.size() - outLeft / sizeof(wchar_t);
    if (result != static_cast<std::size_t>(-1)) {
      if (flushing) break;
    } else if (error == E2BIG) {
      out.resize(out.size() * 2);
    } else if (!flushing) {
      // EILSEQ or EINVAL: a byte that starts no character of the set.
      if (used == out.size()) out.resize(out.size() * 2);
      out[used++] = kReplacement;
      ++in;
      --inLeft;
    } else {
      break;
    }
  }
  out.resize(used);
  return out;
}

std::string encodeWithIconv(iconv_t cd, std::wstring_view text) {
  iconv(cd, nullptr, nullptr, nullptr, nullptr);
  std::string out(text.size() * 2 + 16, '\0');
  auto* in = reinterpret_cast<char*>(const_cast<wchar_t*>(text.data()));
  std::size_t inLeft = text.size() * sizeof(wchar_t);
  std::size_t used = 0;
  for (;;) {
    const bool flushing = inLeft == 0;
    char* outPtr = out.data() + used;
    std::size_t outLeft = out.size() - used;
    const std::size_t result = flushing ? iconv(cd, nullptr, nullptr, &outPtr, &outLeft)
                                        : iconv(cd, &in, &inLeft, &outPtr, &outLeft);
    const int error = errno;
    used = out.size() - outLeft;
    if (result != static_cast<std::size_t>(-1)) {
      if (flushing) break;
    } else if (error == E2BIG) {
      out.resize(out.size() * 2);
    } else if (!flushing) {
      // A character the code page has no bytes for.
      out.resize(used);
      appendEscaped(out, *reinterpret_cast<const wchar_t*>(in));
      used = out.size();
      out.resize(used + inLeft / sizeof(wchar_t) * 2 + 16);
      in += sizeof(wchar_t);
      inLeft -= sizeof(wchar_t);
    } else {
      break;
    }
  }
  out.resize(used);
  return out;
}

std::string encodeUtf8(std::wstring_view text) {
  std::string out;
  out.reserve(text.size() + text.size() / 2);
  for (wchar_t c : text) {
    const std::uint32_t cp = codePoint(c);
    if ((cp >= 0xD800 && cp <= 0xDFFF) || cp > 0x10FFFF) {
      // UTF-8 has no form for these; the escape keeps them for the next reader.
      appendEscaped(out, c);
    } else {
      platform::appendUtf8(out, cp);
    }
  }
  return out;
}

}  // namespace

TextCodec::TextCodec(std::string_view acadVersion, std::string_view dwgCodePage) {
  utf8_ = versionUsesUtf8(acadVersion);
  if (utf8_) {
    charset_ = "UTF-8";
    return;
  }
  charset_ = charsetOf(dwgCodePage);
  if (charset_ == "UTF-8") {
    utf8_ = true;
    return;
  }
  if (charset_.empty() || !converterFor(charset_)) {
    charset_ = kFallbackCharset;
    fellBack_ = true;
  }
}

std::wstring TextCodec::decode(std::string_view bytes) const {
  std::wstring text = decodePlain(bytes);
  resolveEscapes(text);
  return text;
}

std::wstring TextCodec::decodePlain(std::string_view bytes) const {
  std::wstring text;
  if (isAscii(bytes)) {
    text.assign(bytes.begin(), bytes.end());
  } else if (utf8_) {
    text = platform::fromUtf8(bytes);
  } else if (Converter* converter = converterFor(charset_)) {
    text = decodeWithIconv(converter->toWide, bytes);
  } else {
    // Only when the fallback set itself cannot be opened: read the bytes as Latin-1.
    for (char c : bytes) text.push_back(static_cast<wchar_t>(static_cast<unsigned char>(c)));
  }
  return text;
}

std::wstring decodeInDrawingCodePage(const FileImage* image, std::string_view bytes) {
  // A version before the 2007 format makes the codec go by the code page.
  return TextCodec("AC1018", image ? image->codePage : "").decodePlain(bytes);
}

std::string TextCodec::encode(std::wstring_view text) const {
  if (isAscii(text)) {
    std::string out(text.size(), '\0');
    for (std::size_t i = 0; i < text.size(); ++i) out[i] = static_cast<char>(text[i]);
    return out;
  }
  if (utf8_) return encodeUtf8(text);
  if (Converter* converter = converterFor(charset_)) {
    return encodeWithIconv(converter->fromWide, text);
  }
  std::string out;
  for (wchar_t c : text) {
    if (static_cast<std::uint32_t>(c) < 0x100) {
      out.push_back(static_cast<char>(c));
    } else {
      appendEscaped(out, c);
    }
  }
  return out;
}

}  // namespace host::dxf
