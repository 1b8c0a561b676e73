// The test of one value against a condition's text.
#include "search/ValueCondition.h"

#include "oddata/ValueText.h"
#include "platform/Text.h"

namespace zarvel {

using platform::OdType;
using platform::OdValue;

namespace {

// The operand of an operator: what follows it, without blanks, tabs and line
// feeds at either end.
std::wstring operandAfter(const std::wstring& text, std::size_t length) {
  return trimmedOf(text.substr(length), L" \t\n");
}

bool startsWith(const std::wstring& text, const wchar_t* prefix) {
  return text.rfind(prefix, 0) == 0;
}

// Each operator by the type's own operators, so that a real that is not a
// number differs from everything and equals nothing.
template <typename T>
bool compareNumbers(T value, T operand, ValueTest::Op op) {
  switch (op) {
    case ValueTest::Op::NotEqual:
      return value != operand;
    case ValueTest::Op::Greater:
      return value > operand;
    case ValueTest::Op::Less:
      return value < operand;
    default:
      return value == operand;
  }
}

}  // namespace

std::wstring trimmedOf(const std::wstring& text, const wchar_t* characters) {
  const std::size_t first = text.find_first_not_of(characters);
  if (first == std::wstring::npos) return std::wstring();
  return text.substr(first, text.find_last_not_of(characters) - first + 1);
}

WildcardPattern::WildcardPattern(const std::wstring& pattern) {
  const std::wstring lower = platform::lowerCase(pattern);
  splitText(lower, L"*", tokens_);
  leadingStar_ = !lower.empty() && lower.front() == L'*';
  trailingStar_ = !lower.empty() && lower.back() == L'*';
}

bool WildcardPattern::matches(const std::wstring& text) const {
  const std::wstring value = platform::lowerCase(text);
  // Anchored ends first: a pattern that doesn't begin (or end) with a star
  // must share the value's first (or last) characters.
  if (!tokens_.empty() && !leadingStar_ &&
      value.compare(0, tokens_.front().size(), tokens_.front()) != 0) {
    return false;
  }
  if (!trailingStar_ && !tokens_.empty()) {
    const std::wstring& last = tokens_.back();
    if (value.size() < last.size() ||
        value.compare(value.size() - last.size(), last.size(), last) != 0) {
      return false;
    }
  }
  std::size_t from = 0;
  for (std::size_t i = 0; i < tokens_.size(); ++i) {
    const std::wstring& token = tokens_[i];
    std::size_t found = value.find(token, from);
    if (found == std::wstring::npos) return false;
    if (found == 0 && leadingStar_) {
      // A leading star stands for at least one character; the find that moves
      // past it is taken without the test of a trailing star.
      found = value.find(token, token.size());
      if (found == std::wstring::npos) return false;
      from = found + token.size();
      continue;
    }
    // A trailing star, likewise, needs a character after the last token.
    if (i + 1 == tokens_.size() && trailingStar_ && found + token.size() >= value.size()) {
      return false;
    }
    from = found + token.size();
  }
  return true;
}

ValueTest::ValueTest(const std::wstring& text, bool extended) {
  acceptsAll_ = text == L"*";
  if (!extended) {
    op_ = Op::Contains;
    operand_ = platform::lowerCase(text);
    return;
  }
  if (startsWith(text, L"<>")) {
    op_ = Op::NotEqual;
    operand_ = operandAfter(text, 2);
  } else if (startsWith(text, L">")) {
    op_ = Op::Greater;
    operand_ = operandAfter(text, 1);
  } else if (startsWith(text, L"<")) {
    op_ = Op::Less;
    operand_ = operandAfter(text, 1);
  } else if (text.find(L'*') == std::wstring::npos) {
    op_ = Op::Equal;
    operand_ = text;
  } else {
    op_ = Op::Pattern;
    pattern_ = WildcardPattern(text);
    return;
  }
  integer_ = platform::wtoi(operand_);
  real_ = platform::wtof(operand_);
  // Only a difference of characters ignores case.
  if (op_ == Op::NotEqual) operand_ = platform::lowerCase(operand_);
}

bool ValueTest::matches(const OdValue& value) const {
  switch (op_) {
    case Op::Contains:
      return platform::lowerCase(valueToText(value)).find(operand_) != std::wstring::npos;
    case Op::Pattern:
      return pattern_.matches(valueToText(value));
    case Op::NotEqual:
    case Op::Greater:
    case Op::Less:
    case Op::Equal:
      return compare(value);
  }
  return false;
}

// The comparisons know numbers and characters only; a point never passes one.
bool ValueTest::compare(const OdValue& value) const {
  switch (value.type()) {
    case OdType::Integer:
      return compareNumbers(value.asInt(), integer_, op_);
    case OdType::Real:
      // Exactly, as typed: no tolerance.
      return compareNumbers(value.asReal(), real_, op_);
    case OdType::Character: {
      const std::wstring& v = value.asText();
      switch (op_) {
        case Op::NotEqual:
          return platform::lowerCase(v) != operand_;
        case Op::Greater:
          return v.compare(operand_) > 0;
        case Op::Less:
          return v.compare(operand_) < 0;
        default:
          return v == operand_;
      }
    }
    case OdType::Point:
    case OdType::Unknown:
      break;
  }
  return false;
}

}  // namespace zarvel
