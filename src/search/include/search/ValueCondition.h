// The condition language of the value search: how a field's value is tested
// against the text a user typed for its column.
//
// Plain mode: the text is looked for anywhere in the value's text, ignoring
// case. Extended mode, in this order: "<>x" differs from x (ignoring case for
// characters), ">x" and "<x" compare (characters by code unit), a text without
// a star equals the value exactly, and a text with stars is a pattern in which
// a star at either end stands for at least one character and one in the
// middle for any run, ignoring case. Numbers read as _wtoi and _wtof read
// them: what doesn't parse is 0.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "platform/OdValue.h"

namespace zarvel {

// A field name and the text typed for it.
using Condition = std::pair<std::wstring, std::wstring>;

// The text without any of the characters at either end.
std::wstring trimmedOf(const std::wstring& text, const wchar_t* characters);

// A star pattern, read once and matched against many texts.
class WildcardPattern {
 public:
  explicit WildcardPattern(const std::wstring& pattern);
  bool matches(const std::wstring& text) const;

 private:
  std::vector<std::wstring> tokens_;  // in lower case, runs of stars dropped
  bool leadingStar_ = false;
  bool trailingStar_ = false;
};

// One condition's text, read once for the test of many values.
class ValueTest {
 public:
  enum class Op { Contains, NotEqual, Greater, Less, Equal, Pattern };

  ValueTest(const std::wstring& text, bool extended);

  // The text "*", which every record passes without a look at its values.
  bool acceptsAll() const { return acceptsAll_; }
  bool matches(const platform::OdValue& value) const;

 private:
  bool compare(const platform::OdValue& value) const;

  Op op_ = Op::Contains;
  bool acceptsAll_ = false;
  std::wstring operand_;      // as typed, or lower-cased where case is ignored
  std::int32_t integer_ = 0;  // the operand as _wtoi reads it
  double real_ = 0.0;         // the operand as _wtof reads it
  WildcardPattern pattern_{std::wstring()};
};

}  // namespace zarvel
