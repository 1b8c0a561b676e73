// Reading SAT text: its header and its records.
#include "Acis.h"

#include <cctype>

#include "platform/Text.h"

namespace host::geometry {
namespace {

struct Token {
  std::string_view text;
  bool counted = false;  // a string given with its length: "@7 unknown"
  bool mark = false;     // the "#" that ends a record
};

class Tokenizer {
 public:
  explicit Tokenizer(std::string_view text) : text_(text) {}

  // The next token; nothing at the end of the text or for a string whose
  // length runs past it.
  std::optional<Token> next() {
    while (pos_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[pos_]))) ++pos_;
    if (pos_ >= text_.size()) return std::nullopt;
    if (text_[pos_] == '#') {
      ++pos_;
      return Token{text_.substr(pos_ - 1, 1), false, true};
    }
    const std::size_t start = pos_;
    while (pos_ < text_.size() && text_[pos_] != '#' &&
           !std::isspace(static_cast<unsigned char>(text_[pos_]))) {
      ++pos_;
    }
    const std::string_view word = text_.substr(start, pos_ - start);
    if (word.size() > 1 && word[0] == '@') {
      const auto length = platform::parseInt(word.substr(1));
      if (length && *length >= 0) {
        const std::size_t from = pos_ + 1;  // past the one blank after the length
        if (from + static_cast<std::size_t>(*length) > text_.size()) return std::nullopt;
        pos_ = from + static_cast<std::size_t>(*length);
        return Token{text_.substr(from, static_cast<std::size_t>(*length)), true, false};
      }
    }
    return Token{word, false, false};
  }

 private:
  std::string_view text_;
  std::size_t pos_ = 0;
};

std::optional<long> pointerOf(const Token& token) {
  if (token.counted || token.text.size() < 2 || token.text[0] != '$') return std::nullopt;
  const auto value = platform::parseInt(token.text.substr(1));
  if (!value) return std::nullopt;
  return static_cast<long>(*value);
}

bool isInteger(const Token& token) {
  return !token.counted && platform::parseInt(token.text);
}

bool startsWith(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

// Versions from this one on write a history number after each record's
// attribute, and topology and geometry (not transforms) one more pointer.
constexpr long kHistoryVersion = 700;

// The fields every record starts with, which no reading here needs.
std::size_t commonFields(const std::vector<Token>& tokens, long version) {
  if (tokens.empty() || !pointerOf(tokens[0])) return 0;
  if (version < kHistoryVersion || tokens.size() < 2 || !isInteger(tokens[1])) return 1;
  return tokens.size() >= 3 && pointerOf(tokens[2]) ? 3 : 2;
}

AcisRecord recordOf(std::string_view type, const std::vector<Token>& tokens, long version) {
  AcisRecord record;
  record.type = std::string(type);
  for (std::size_t i = commonFields(tokens, version); i < tokens.size(); ++i) {
    const Token& t = tokens[i];
    if (auto pointer = pointerOf(t)) {
      record.pointers.push_back(*pointer);
    } else if (auto number = t.counted ? std::nullopt : platform::parseDouble(t.text)) {
      record.numbers.push_back(*number);
    } else {
      record.words.emplace_back(t.text);
    }
  }
  return record;
}

}  // namespace

bool AcisRecord::is(std::string_view kind) const {
  const std::size_t dash = type.rfind('-');
  return std::string_view(type).substr(dash == std::string::npos ? 0 : dash + 1) == kind;
}

std::string_view AcisRecord::subtype() const {
  return std::string_view(type).substr(0, type.find('-'));
}

bool AcisRecord::reversed() const {
  for (const std::string& w : words) {
    if (w == "forward") return false;
    if (w == "reversed") return true;
  }
  return false;
}

std::optional<AcisModel> AcisModel::read(std::string_view text) {
  Tokenizer tokens(text);
  AcisModel model;
  // The header: version, record count, body count, flags; the product's
  // strings; the unit and the two resolutions.
  long header[4] = {0, 0, 0, 0};
  for (long& value : header) {
    const auto t = tokens.next();
    if (!t || !isInteger(*t)) return std::nullopt;
    value = static_cast<long>(*platform::parseInt(t->text));
  }
  model.version_ = header[0];
  if (model.version_ < 100) return std::nullopt;
  auto t = tokens.next();
  while (t && t->counted) t = tokens.next();
  for (int i = 0; i < 3; ++i) {
    if (!t || t->counted || !platform::parseDouble(t->text)) return std::nullopt;
    t = tokens.next();
  }
  std::vector<Token> fields;
  while (t) {
    if (t->mark) {  // an empty record has no place in the numbering
      t = tokens.next();
      continue;
    }
    std::string_view type = t->text;
    if (startsWith(type, "End-of-") || startsWith(type, "Begin-of-")) return model;
    if (type.size() > 1 && type[0] == '-' && isInteger(*t)) {  // a record's own number
      t = tokens.next();
      if (!t || t->mark) return std::nullopt;
      type = t->text;
    }
    if (t->counted) return std::nullopt;
    fields.clear();
    for (t = tokens.next(); t && !t->mark; t = tokens.next()) fields.push_back(*t);
    if (!t) return std::nullopt;  // cut short
    model.records_.push_back(recordOf(type, fields, model.version_));
    t = tokens.next();
  }
  // Text that stops at a record's end without the closing word still holds
  // whole records.
  return model;
}

std::optional<long> AcisModel::link(const AcisRecord& record, std::size_t position,
                                    std::string_view kind) const {
  if (position >= record.pointers.size()) return std::nullopt;
  const long index = record.pointers[position];
  if (index == -1) return -1;
  const AcisRecord* target = at(index);
  if (target == nullptr || !target->is(kind)) return std::nullopt;
  return index;
}

}  // namespace host::geometry
