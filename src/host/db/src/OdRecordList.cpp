// Encoding of a record: u32 table index, u32 byte length of the rest, then per
// value a type byte and its payload (i32; f64; three f64; u32 count and UTF-16
// code units). Integers are stored in the machine's byte order. The top bit of
// the table index says that the record's text as read comes first, as a u32
// byte count and the bytes.
#include "host/db/OdRecordList.h"

#include <cassert>
#include <cstring>
#include <string>

namespace host {
namespace {

using platform::OdType;
using platform::OdValue;

constexpr std::uint32_t kHeaderSize = 8;
constexpr std::uint32_t kHasText = 0x80000000u;

template <typename T>
T readAt(const std::uint8_t* p) {
  T v;
  std::memcpy(&v, p, sizeof v);
  return v;
}

// UTF-16 units of a text: characters beyond the basic plane take two.
std::uint32_t utf16Units(const std::wstring& text) {
  std::uint32_t units = 0;
  for (wchar_t wc : text) units += static_cast<std::uint32_t>(wc) >= 0x10000 ? 2 : 1;
  return units;
}

// The bytes a value takes after its type.
std::size_t encodedSize(const OdValue& v) {
  switch (v.type()) {
    case OdType::Integer: return sizeof(std::int32_t);
    case OdType::Real: return sizeof(double);
    case OdType::Point: return 3 * sizeof(double);
    case OdType::Character: return sizeof(std::uint32_t) + 2 * utf16Units(v.asText());
    case OdType::Unknown: break;
  }
  return 0;
}

// Writes into a buffer sized beforehand, so that a record is encoded with one
// allocation and no growing.
class Writer {
 public:
  explicit Writer(std::uint8_t* at) : at_(at) {}
  template <typename T>
  void put(T v) {
    std::memcpy(at_, &v, sizeof v);
    at_ += sizeof v;
  }
  void putBytes(std::string_view bytes) {
    std::memcpy(at_, bytes.data(), bytes.size());
    at_ += bytes.size();
  }
  void putText(const std::wstring& text) {
    put(utf16Units(text));
    for (wchar_t wc : text) {
      auto c = static_cast<std::uint32_t>(wc);
      if (c >= 0x10000) {
        c -= 0x10000;
        put(static_cast<char16_t>(0xD800 + (c >> 10)));
        put(static_cast<char16_t>(0xDC00 + (c & 0x3FF)));
      } else {
        put(static_cast<char16_t>(c));
      }
    }
  }

 private:
  std::uint8_t* at_;
};

std::wstring readText(const std::uint8_t* p, std::uint32_t units) {
  std::wstring text;
  text.reserve(units);
  for (std::uint32_t i = 0; i < units; ++i) {
    std::uint32_t c = readAt<char16_t>(p + 2 * i);
    if (c >= 0xD800 && c < 0xDC00 && i + 1 < units) {
      std::uint32_t low = readAt<char16_t>(p + 2 * (i + 1));
      if (low >= 0xDC00 && low < 0xE000) {
        c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
        ++i;
      }
    }
    text.push_back(static_cast<wchar_t>(c));
  }
  return text;
}

// Encodes into out, sized beforehand and kept from one record to the next,
// so that a run over many records allocates next to nothing.
const std::vector<std::uint8_t>& encode(std::vector<std::uint8_t>& out, std::uint32_t table,
                                        const std::vector<OdValue>& values, std::string_view text) {
  std::size_t size = kHeaderSize + (text.empty() ? 0 : sizeof(std::uint32_t) + text.size());
  for (const OdValue& v : values) size += 1 + encodedSize(v);
  out.resize(size);
  Writer w(out.data());
  w.put(text.empty() ? table : table | kHasText);
  w.put(static_cast<std::uint32_t>(size - kHeaderSize));
  if (!text.empty()) {
    w.put(static_cast<std::uint32_t>(text.size()));
    w.putBytes(text);
  }
  for (const OdValue& v : values) {
    w.put(static_cast<std::uint8_t>(v.type()));
    switch (v.type()) {
      case OdType::Integer: w.put(v.asInt()); break;
      case OdType::Real: w.put(v.asReal()); break;
      case OdType::Point: {
        const platform::Point3d p = v.asPoint();
        w.put(p.x);
        w.put(p.y);
        w.put(p.z);
        break;
      }
      case OdType::Character: w.putText(v.asText()); break;
      case OdType::Unknown: break;
    }
  }
  return out;
}

}  // namespace

OdRecordList::OdRecordList(const OdRecordList& other) : size_(other.size_) {
  if (size_ > 0) {
    data_.reset(new std::uint8_t[size_]);
    std::memcpy(data_.get(), other.data_.get(), size_);
  }
}

OdRecordList& OdRecordList::operator=(const OdRecordList& other) {
  if (this != &other) *this = OdRecordList(other);
  return *this;
}

int OdRecordList::count() const {
  int n = 0;
  for (Pos p = begin(); p < end(); p = next(p)) ++n;
  return n;
}

OdRecordList::Pos OdRecordList::next(Pos pos) const {
  return pos + kHeaderSize + readAt<std::uint32_t>(data_.get() + pos + 4);
}

std::uint32_t OdRecordList::tableAt(Pos pos) const {
  return readAt<std::uint32_t>(data_.get() + pos) & ~kHasText;
}

std::string_view OdRecordList::textAt(Pos pos) const {
  if ((readAt<std::uint32_t>(data_.get() + pos) & kHasText) == 0) return {};
  const std::uint8_t* p = data_.get() + pos + kHeaderSize;
  return {reinterpret_cast<const char*>(p + 4), readAt<std::uint32_t>(p)};
}

int OdRecordList::valueCountAt(Pos pos) const {
  std::vector<OdValue> values;
  valuesAt(pos, values);
  return static_cast<int>(values.size());
}

namespace {

// Reads the value that begins at p into out, when there is one to fill, and
// gives where the next value begins.
const std::uint8_t* decodeValue(const std::uint8_t* p, OdValue* out) {
  const auto type = static_cast<OdType>(*p++);
  switch (type) {
    case OdType::Integer:
      if (out != nullptr) *out = readAt<std::int32_t>(p);
      return p + 4;
    case OdType::Real:
      if (out != nullptr) *out = readAt<double>(p);
      return p + 8;
    case OdType::Point:
      if (out != nullptr) {
        *out = platform::Point3d{readAt<double>(p), readAt<double>(p + 8), readAt<double>(p + 16)};
      }
      return p + 24;
    case OdType::Character: {
      const auto units = readAt<std::uint32_t>(p);
      if (out != nullptr) *out = readText(p + 4, units);
      return p + 4 + 2 * units;
    }
    case OdType::Unknown:
      if (out != nullptr) *out = OdValue();
      break;
  }
  return p;
}

}  // namespace

const std::uint8_t* OdRecordList::firstValue(Pos pos) const {
  const std::uint8_t* p = data_.get() + pos + kHeaderSize;
  if (const std::string_view text = textAt(pos); !text.empty()) p += 4 + text.size();
  return p;
}

void OdRecordList::valuesAt(Pos pos, std::vector<OdValue>& out) const {
  out.clear();
  const std::uint8_t* last = data_.get() + next(pos);
  for (const std::uint8_t* p = firstValue(pos); p < last;) p = decodeValue(p, &out.emplace_back());
}

bool OdRecordList::valueAt(Pos pos, int index, OdValue& out) const {
  const std::uint8_t* last = data_.get() + next(pos);
  const std::uint8_t* p = firstValue(pos);
  for (int i = 0; i < index && p < last; ++i) p = decodeValue(p, nullptr);
  if (index < 0 || p >= last) return false;
  decodeValue(p, &out);
  return true;
}

void OdRecordList::splice(Pos pos, std::uint32_t removed,
                          const std::vector<std::uint8_t>& inserted) {
  assert(pos + removed <= size_);
  // A record rewritten at its own length, as most updates are, needs no new
  // buffer: the list owns its bytes alone.
  if (removed > 0 && inserted.size() == removed) {
    std::memcpy(data_.get() + pos, inserted.data(), removed);
    return;
  }
  const auto newSize = static_cast<std::uint32_t>(size_ - removed + inserted.size());
  std::unique_ptr<std::uint8_t[]> data;
  if (newSize > 0) {
    data.reset(new std::uint8_t[newSize]);
    if (pos > 0) std::memcpy(data.get(), data_.get(), pos);
    if (!inserted.empty()) std::memcpy(data.get() + pos, inserted.data(), inserted.size());
    const std::uint32_t tail = size_ - pos - removed;
    if (tail > 0) {
      std::memcpy(data.get() + pos + inserted.size(), data_.get() + pos + removed, tail);
    }
  }
  data_ = std::move(data);
  size_ = newSize;
}

void OdRecordList::append(std::uint32_t table, const std::vector<OdValue>& values,
                          std::string_view text) {
  // One buffer for every record added: a run over many entities allocates none.
  thread_local std::vector<std::uint8_t> buffer;
  splice(size_, 0, encode(buffer, table, values, text));
}

void OdRecordList::replace(Pos pos, std::uint32_t table, const std::vector<OdValue>& values) {
  // One buffer for every rewrite: a run over many records allocates none.
  thread_local std::vector<std::uint8_t> buffer;
  const std::vector<std::uint8_t>& record = encode(buffer, table, values, {});
  const std::uint32_t length = next(pos) - pos;
  // A record rewritten at its own length, as most value changes leave it,
  // keeps the list's buffer.
  if (record.size() == length) {
    std::memcpy(data_.get() + pos, record.data(), length);
    return;
  }
  splice(pos, length, record);
}

void OdRecordList::remove(Pos pos) { splice(pos, next(pos) - pos, {}); }

void OdRecordList::clear() {
  data_.reset();
  size_ = 0;
}

bool operator==(const OdRecordList& a, const OdRecordList& b) {
  return a.size_ == b.size_ && (a.size_ == 0 || std::memcmp(a.data_.get(), b.data_.get(), a.size_) == 0);
}

}  // namespace host
