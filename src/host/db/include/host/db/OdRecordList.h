// The Object Data records of one entity, packed into one byte buffer in
// attachment order. A drawing may carry millions of records, so each costs its
// values and eight bytes, not a heap object per value.
#pragma once

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "platform/OdValue.h"

namespace host {

class OdRecordList {
 public:
  // A record's place in the list: its byte offset; end() is past the last.
  using Pos = std::uint32_t;

  OdRecordList() = default;
  OdRecordList(const OdRecordList& other);
  OdRecordList& operator=(const OdRecordList& other);
  OdRecordList(OdRecordList&&) noexcept = default;
  OdRecordList& operator=(OdRecordList&&) noexcept = default;

  bool empty() const { return size_ == 0; }
  int count() const;
  Pos begin() const { return 0; }
  Pos end() const { return size_; }
  Pos next(Pos pos) const;

  // Index of the table of the record at pos.
  std::uint32_t tableAt(Pos pos) const;
  int valueCountAt(Pos pos) const;
  void valuesAt(Pos pos, std::vector<platform::OdValue>& out) const;
  // One value of the record at pos, by index; false past its last value.
  bool valueAt(Pos pos, int index, platform::OdValue& out) const;

  // A record that did not match its table when it was read keeps the text it
  // was read from, to be written back as it was; empty for any other. The
  // values are the record's conformed to its table.
  std::string_view textAt(Pos pos) const;

  void append(std::uint32_t table, const std::vector<platform::OdValue>& values,
              std::string_view text = {});
  // A record replaced is conformed: it keeps no text.
  void replace(Pos pos, std::uint32_t table, const std::vector<platform::OdValue>& values);
  void remove(Pos pos);
  void clear();

  // Bytes held, for memory accounting.
  std::size_t byteSize() const { return size_; }

  friend bool operator==(const OdRecordList& a, const OdRecordList& b);

 private:
  // Where the values of the record at pos begin.
  const std::uint8_t* firstValue(Pos pos) const;
  void splice(Pos pos, std::uint32_t removed, const std::vector<std::uint8_t>& inserted);

  std::unique_ptr<std::uint8_t[]> data_;
  std::uint32_t size_ = 0;
};

}  // namespace host
