// A session of our host with the module loaded, as the command benchmarks
// run it: commands with their answers, output dropped, and the drawing of a
// million lines with records that most of them search or fill.
#pragma once

#include <malloc.h>

#include <functional>
#include <memory>
#include <sstream>
#include <string>

#include "frame/CzarvelApp.h"
#include "host/editor/Console.h"
#include "host/editor/HostCommands.h"
#include "host/editor/Session.h"

namespace zarvel_bench {

using platform::OdType;
using platform::OdValue;

constexpr int kEntities = 1000000;

class NullBuffer : public std::streambuf {
 protected:
  int overflow(int c) override { return c; }
  std::streamsize xsputn(const char*, std::streamsize n) override { return n; }
};

// A session with the module loaded and a drawing that a builder fills.
struct Fixture {
  NullBuffer nullBuffer;
  std::ostream out{&nullBuffer};
  std::istringstream in;
  host::ScriptConsole console{in, out};
  host::Session session{console};
  double bytesPerEntity = 0;

  // The builder returns the number of entities it made.
  explicit Fixture(const std::function<int(host::Database&)>& build) {
    host::registerHostCommands(session);
    // Heap in use, including the blocks large arrays are mapped in.
    auto inUse = [] {
      const struct mallinfo2 info = mallinfo2();
      return info.uordblks + info.hblkhd;
    };
    const std::size_t before = inUse();
    const int entities = build(session.db());
    bytesPerEntity = static_cast<double>(inUse() - before) / entities;
  }
  ~Fixture() {
    if (bound() != this) return;
    zarvel::entryPoint(platform::AppMsg::kUnloadApp, nullptr);
    bound() = nullptr;
  }

  // The module serves one host at a time: a fixture takes it over from
  // another before its commands run, or they would search that one's drawing.
  static Fixture*& bound() {
    static Fixture* fixture = nullptr;
    return fixture;
  }
  void bind() {
    if (bound() == this) return;
    if (bound() != nullptr) zarvel::entryPoint(platform::AppMsg::kUnloadApp, nullptr);
    platform::AppPacket packet{&session.host(), nullptr};
    zarvel::entryPoint(platform::AppMsg::kInitApp, &packet);
    bound() = this;
  }

  // Runs a command with its answers; Enter at "Select objects: " takes all
  // of model space.
  void run(const wchar_t* command, const char* answers) {
    bind();
    session.document().pickFirst.clear();
    in.clear();
    in.str(answers);
    session.runCommand(command);
  }
};

// Keeps what the fixture's commands print while it lives, for a benchmark to
// check that they did their work; the output is dropped again after.
class Shown {
 public:
  explicit Shown(Fixture& f) : out_(f.out), dropped_(f.out.rdbuf(text_.rdbuf())) {}
  ~Shown() { out_.rdbuf(dropped_); }
  Shown(const Shown&) = delete;
  Shown& operator=(const Shown&) = delete;

  bool contains(const std::string& text) const {
    return text_.str().find(text) != std::string::npos;
  }
  void clear() { text_.str(""); }

 private:
  std::ostringstream text_;
  std::ostream& out_;
  std::streambuf* dropped_;
};

// One to three records of two tables on each line.
inline int buildRecords(host::Database& db) {
  platform::OdTableDef roads;
  roads.columns = {{L"ID", OdType::Integer, L"", OdValue(0)},
                   {L"NAME", OdType::Character, L"", OdValue(L"")},
                   {L"LENGTH", OdType::Real, L"", OdValue(0.0)}};
  platform::OdTableDef parcels;
  parcels.columns = {{L"ID", OdType::Integer, L"", OdValue(0)},
                     {L"AREA", OdType::Real, L"", OdValue(0.0)}};
  const std::uint32_t roadsIndex = db.odTable(db.createOdTable(L"Roads", roads))->index;
  const std::uint32_t parcelsIndex = db.odTable(db.createOdTable(L"Parcels", parcels))->index;
  for (int i = 0; i < kEntities; ++i) {
    auto line = std::make_unique<host::LineEntity>();
    line->start = {i * 1.0, 0.0, 0.0};
    line->end = {i * 1.0 + 1.0, 1.0, 0.0};
    const platform::ObjectId id = db.addEntity(std::move(line), db.modelSpace());
    host::OdRecordList& od = *db.modifyOdRecords(id);
    const std::wstring name = L"Road " + std::to_wstring(i % 1000);
    od.append(roadsIndex, {OdValue(i), OdValue(name), OdValue(i * 0.5)});
    if (i % 3 >= 1) od.append(parcelsIndex, {OdValue(i), OdValue(i * 2.0)});
    if (i % 3 == 2) od.append(roadsIndex, {OdValue(i + 1), OdValue(name), OdValue(1.0)});
  }
  return kEntities;
}

inline Fixture& fixture() {
  static Fixture f(buildRecords);
  return f;
}

}  // namespace zarvel_bench
