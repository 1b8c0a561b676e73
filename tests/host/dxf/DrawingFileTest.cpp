// Whole drawing files: what is read comes back out unchanged, Object Data
// survives exactly, and malformed files are refused with their line.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>

#include "TestText.h"
#include "host/db/PortDrawing.h"
#include "host/db/PortObjectData.h"
#include "host/dxf/DrawingReader.h"
#include "host/dxf/DrawingWriter.h"
#include "host/dxf/ParseError.h"
#include "host/dxf/Template.h"
#include "platform/Text.h"

namespace host::dxf {
namespace {

using platform::OdRecord;
using platform::OdType;
using platform::OdValue;

LoadedDrawing load(const std::string& text) {
  return readDrawing(std::make_shared<const std::string>(text));
}

std::string save(LoadedDrawing& d) {
  return writeDrawing(*d.db, *d.image);
}

std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  return text.replace(at, from.size(), to);
}

// The 1-based line of the text where the needle starts, plus lines into it.
std::size_t lineOf(const std::string& text, const std::string& needle, std::size_t into = 0) {
  const std::size_t at = text.find(needle);
  EXPECT_NE(at, std::string::npos) << needle;
  return static_cast<std::size_t>(std::count(text.begin(), text.begin() + at, '\n')) + 1 + into;
}

std::string handleOf(const Database& db, ObjectId id) {
  return platform::toUtf8(handleToText(db.object(id)->handle));
}

// The line and message a malformed text is refused with.
std::pair<std::size_t, std::string> refusal(const std::string& text) {
  try {
    load(text);
  } catch (const ParseError& e) {
    return {e.line(), e.what()};
  }
  return {0, "accepted"};
}

ObjectId addLine(Database& db, double y) {
  auto line = std::make_unique<LineEntity>();
  line->start = {0, y, 0};
  line->end = {10, y, 0};
  return db.addEntity(std::move(line), db.modelSpace());
}

// Tables of every type, and entities carrying records of them, repeats included.
void addObjectData(Database& db) {
  platform::OdTableDef roads;
  roads.columns = {{L"ID", OdType::Integer, L"the id", OdValue(-1)},
                   {L"NAME", OdType::Character, L"", OdValue(L"Zürich 東京")},
                   {L"LENGTH", OdType::Real, L"metres", OdValue(0.1)},
                   {L"AT", OdType::Point, L"", OdValue(platform::Point3d{1, 2, 3})}};
  platform::OdTableDef nodes;
  nodes.columns = {{L"NODE", OdType::Integer, L"", OdValue(0)}};
  db.createOdTable(L"Roads", roads);
  db.createOdTable(L"TPMID_x", nodes);
  DbOdContainer container(db);
  const ObjectId a = addLine(db, 0);
  const ObjectId b = addLine(db, 1);
  addLine(db, 2);
  auto table = container.getTable(L"Roads");
  const auto attach = [](platform::OdTable& t, OdRecord record, ObjectId to) {
    EXPECT_EQ(t.addRecord(record, to), platform::Status::Ok);
  };
  attach(*table,
         OdRecord(L"Roads", {OdValue(2147483647), OdValue(L""), OdValue(1.0 / 3),
                             OdValue(platform::Point3d{-1e-9, 1e20, 0})}),
         a);
  attach(*container.getTable(L"TPMID_x"), OdRecord(L"TPMID_x", {OdValue(7)}), a);
  attach(*table, OdRecord(L"Roads", {OdValue(-5), OdValue(L"  padded, \"quoted\"  ")}), a);
  attach(*table, OdRecord(L"Roads", {}), b);
}

std::vector<std::pair<std::wstring, std::vector<OdValue>>> recordsOf(Database& db) {
  std::vector<std::pair<std::wstring, std::vector<OdValue>>> all;
  DbOdContainer container(db);
  auto it = container.newIterator();
  OdRecord r;
  for (ObjectId id : db.blockEntities(db.modelSpace())) {
    EXPECT_EQ(it->init(id, platform::OpenMode::Read, true), platform::Status::Ok);
    for (; !it->isDone(); it->next()) {
      EXPECT_EQ(it->getRecord(r), platform::Status::Ok);
      all.emplace_back(r.tableName(), r.values());
    }
    all.emplace_back(L"--", std::vector<OdValue>());
  }
  return all;
}

TEST(DrawingFile, ObjectDataSurvivesSaveAndOpenExactly) {
  for (const char* version : {"AC1032", "AC1015"}) {
    SCOPED_TRACE(version);
    LoadedDrawing d = load(replaced(newDrawingText(), "AC1032", version));
    addObjectData(*d.db);
    const std::string text = save(d);
    if (std::string(version) == "AC1015") {
      // Old files hold text in their code page, with escapes for what it lacks.
      EXPECT_NE(text.find("Z\xFCrich \\U+6771\\U+4EAC"), std::string::npos);
    } else {
      EXPECT_NE(text.find("Zürich 東京"), std::string::npos);
    }
    LoadedDrawing again = load(text);
    EXPECT_EQ(recordsOf(*again.db), recordsOf(*d.db));
    ASSERT_EQ(again.db->odTableIds().size(), 2u);
    for (std::size_t i = 0; i < 2; ++i) {
      const OdTableObject* a = d.db->odTable(d.db->odTableIds()[i]);
      const OdTableObject* b = again.db->odTable(again.db->odTableIds()[i]);
      EXPECT_EQ(a->name, b->name);
      EXPECT_EQ(a->definition, b->definition);
    }
    // Saved again without change, it is the same file.
    EXPECT_EQ(save(again), text);
    // An erased entity takes its records along.
    const ObjectId first = again.db->blockEntities(again.db->modelSpace()).front();
    const Handle xdict = again.db->object(again.db->entity(first)->xdict)->handle;
    again.db->eraseEntity(first);
    LoadedDrawing after = load(save(again));
    EXPECT_EQ(after.db->blockEntities(after.db->modelSpace()).size(), 2u);
    EXPECT_TRUE(after.db->idOfHandle(xdict).isNull());
  }
}

// The new drawing saves as it was read. The dictionary of tables is made when the first table is
// saved; with every table undone, the drawing saves as it was read again, but for the handle
// seed, which undo never takes back.
TEST(DrawingFile, TablesAllUndoneSaveAsTheDrawingWasRead) {
  LoadedDrawing d = load(newDrawingText());
  EXPECT_EQ(save(d), newDrawingText());
  Database& db = *d.db;
  db.undo().begin(L"-ODDEFINE");
  platform::OdTableDef definition;
  definition.columns = {{L"ID", OdType::Integer, L"", OdValue(0)}};
  db.createOdTable(L"Roads", definition);
  db.undo().end();
  EXPECT_NE(save(d).find("ZARVEL_OD_TABLES"), std::string::npos);
  db.undoSteps(1);
  const std::string seed = "$HANDSEED\n  5\n";
  EXPECT_EQ(replaced(save(d), seed + platform::toUtf8(handleToText(db.nextHandle())), seed + "30"),
            newDrawingText());
}

TEST(DrawingFile, LayerStatesAreWrittenAndTheHandleSeedAdvances) {
  LoadedDrawing d = load(newDrawingText());
  const ObjectId roads = d.db->addLayer(L"Roads");
  Layer& layer0 = *d.db->modify<Layer>(d.db->findLayer(L"0"));
  layer0.off = true;
  layer0.locked = true;
  d.db->modify<Layer>(roads)->hidden = true;
  d.db->modify<Layer>(roads)->frozen = true;
  const std::string text = save(d);
  LoadedDrawing again = load(text);
  const Layer* zero = again.db->get<Layer>(again.db->findLayer(L"0"));
  const Layer* back = again.db->get<Layer>(again.db->findLayer(L"Roads"));
  ASSERT_NE(back, nullptr);
  EXPECT_TRUE(zero->off && zero->locked && !zero->frozen && !zero->hidden);
  EXPECT_TRUE(back->hidden && back->frozen && !back->off);
  // New objects never take a handle the file already used.
  const Handle seed = again.db->nextHandle();
  EXPECT_GT(seed, again.db->object(again.db->findLayer(L"Roads"))->handle);
  EXPECT_NE(text.find("ZARVEL"), std::string::npos);
}

// A database broken by a fault elsewhere is refused before the writer changes anything, with
// the entity named, rather than crashing it or writing a file that loses the entity.
TEST(DrawingFile, AnInconsistentDrawingIsRefusedNamingTheEntity) {
  const ObjectId missing(1000000);
  struct Case {
    const char* name;
    std::function<void(Database&, ObjectId)> spoil;  // breaks a block reference
    const char* problem;
  };
  const std::vector<Case> cases = {
      {"owner", [&](Database& db, ObjectId id) { db.modify<Entity>(id)->owner = missing; },
       "belongs to no block"},
      {"layer", [&](Database& db, ObjectId id) { db.modify<Entity>(id)->layer = missing; },
       "is on a layer that does not exist"},
      {"linetype", [&](Database& db, ObjectId id) { db.modify<Entity>(id)->setLinetype(missing); },
       "has a linetype that does not exist"},
      {"block",
       [&](Database& db, ObjectId id) { db.modify<BlockReferenceEntity>(id)->block = missing; },
       "refers to a block that does not exist"},
      {"dictionary", [&](Database& db, ObjectId id) { db.modify<Entity>(id)->xdict = missing; },
       "has an extension dictionary that does not exist"},
      {"table", [&](Database& db, ObjectId id) { db.modifyOdRecords(id)->append(7, {OdValue(1)}); },
       "carries Object Data of a table that does not exist"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    LoadedDrawing d = load(newDrawingText());
    addObjectData(*d.db);
    auto insert = std::make_unique<BlockReferenceEntity>();
    insert->block = d.db->addBlock(L"B", {});
    const ObjectId broken = d.db->addEntity(std::move(insert), d.db->modelSpace());
    c.spoil(*d.db, broken);
    const Entity& e = *d.db->entity(broken);
    const std::string named = "the " + platform::toUtf8(typeName(e)) + " " +
                              platform::toUtf8(handleToText(e.handle)) + " " + c.problem;
    const Handle seed = d.db->nextHandle();
    const std::uint64_t objects = d.db->idCount();
    try {
      save(d);
      ADD_FAILURE() << "saved";
    } catch (const InconsistentDrawing& error) {
      EXPECT_NE(std::string(error.what()).find(named), std::string::npos) << error.what();
    }
    EXPECT_EQ(d.db->nextHandle(), seed);
    EXPECT_EQ(d.db->idCount(), objects);
  }
}

TEST(DrawingFile, AnEntityReadFromTheEntitiesSectionGoesWithTheBlockItIsMovedTo) {
  LoadedDrawing d = load(newDrawingText());
  addLine(*d.db, 0);
  LoadedDrawing read = load(save(d));
  Database& db = *read.db;
  const ObjectId line = db.blockEntities(db.modelSpace()).front();
  db.moveToBlock(line, db.addBlock(L"B", {}));
  const std::string text = save(read);
  // Inside the block's definition, which comes before the entities.
  EXPECT_LT(text.find("AcDbLine"), text.find("\nENTITIES\n"));
  LoadedDrawing again = load(text);
  EXPECT_TRUE(again.db->blockEntities(again.db->modelSpace()).empty());
  EXPECT_EQ(again.db->blockEntities(again.db->findBlock(L"B")).size(), 1u);
}

// New objects take handles above every handle in the file, whatever its seed says, counting
// those the database keeps only as text (a block's end here). A file whose handles leave too
// few above them is refused at the line of the highest.
TEST(DrawingFile, NewHandlesLieAboveEveryHandleInUse) {
  const std::string drawing =
      replaced(newDrawingText(), "ENDBLK\n  5\n21\n", "ENDBLK\n  5\n7000\n");
  const std::string seed = "$HANDSEED\n  5\n30\n";
  for (const char* value : {"1", "7000", "FFFFFFFFFFFFFFFF", "FFFFFFFFFFFFFF00"}) {
    SCOPED_TRACE(value);
    LoadedDrawing d = load(replaced(drawing, seed, "$HANDSEED\n  5\n" + std::string(value) + "\n"));
    const ObjectId a = addLine(*d.db, 0);
    const ObjectId b = addLine(*d.db, 1);
    const Handle first = d.db->entity(a)->handle;
    EXPECT_EQ(first, 0x7001u);
    EXPECT_EQ(d.db->entity(b)->handle, first + 1);
    LoadedDrawing again = load(save(d));
    EXPECT_EQ(again.db->nextHandle(), first + 2);
  }
  // A seed above the highest handle, with room, is the file's to keep.
  LoadedDrawing kept = load(replaced(drawing, seed, "$HANDSEED\n  5\n9000\n"));
  EXPECT_EQ(kept.db->nextHandle(), 0x9000u);

  for (const char* highest : {"FFFFFFFFFFFFFFFF", "FFFFFFFF00000000"}) {
    SCOPED_TRACE(highest);
    const std::string text =
        replaced(drawing, "  5\n7000\n", "  5\n" + std::string(highest) + "\n");
    const auto refused = refusal(text);
    EXPECT_EQ(refused.first, lineOf(text, "  5\n" + std::string(highest) + "\n"));
    EXPECT_NE(refused.second.find(std::string("the handle ") + highest), std::string::npos)
        << refused.second;
  }
}

// Whatever is wrong, the refusal names a line: for a file that ends too early, the line where
// the unended section began, and its last line; for one that ends after its last section, that
// last line.
TEST(DrawingFile, MalformedFilesAreRefusedWithALine) {
  const std::string good = newDrawingText();
  const auto upTo = [&](const std::string& bytes) {
    return good.substr(0, good.find(bytes) + bytes.size());
  };
  const auto lastLine = [](const std::string& text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
  };
  const auto unended = [&](const std::string& section, const std::string& text) {
    return "the " + section + " section that begins here has no ENDSEC: the file ends at line " +
           std::to_string(lastLine(text));
  };
  const std::string noEof = replaced(good, "  0\nEOF\n", "");
  const std::string inHeader = upTo("$ACADVER\n  1\nAC1032\n");
  const std::string inTable = upTo("  0\nTABLE\n  2\nLAYER\n");
  const std::string inEntities = upTo("  2\nENTITIES\n");
  const std::string old = replaced(good, "AC1032", "AC1009");
  const std::string badSeed = replaced(good, "$HANDSEED\n  5\n30", "$HANDSEED\n  5\nxyz");
  // Found by fuzzing: a LAYER record inside the VPORT table, and no layer table (read as a
  // layer, it would be lost on saving, and the saved file refused); every section after the
  // header twice over.
  const std::string layerInVport = fixture("fuzz_layer_in_vport.dxf");
  const std::string sectionsTwice = fixture("fuzz_sections_twice.dxf");
  ASSERT_FALSE(layerInVport.empty() || sectionsTwice.empty());
  // Found by fuzzing too: a part that stands twice, which the writer would
  // write twice over, handles and all. The copy follows the original.
  const auto twice = [&good](const std::string& from, const std::string& to) {
    const std::size_t at = good.find(from);
    const std::size_t end = good.find(to, at) + to.size();
    std::string copy = good.substr(at, end - at);
    if (const std::size_t handle = copy.find("  5\n20\n"); handle != std::string::npos) {
      copy.replace(handle, 7, "  5\n7F\n");
    }
    const auto line = static_cast<std::size_t>(std::count(good.begin(), good.begin() + end, '\n'));
    return std::make_pair(good.substr(0, end) + copy + good.substr(end), line + 1);
  };
  const auto tableTwice = twice("  0\nTABLE\n  2\nLAYER\n", "  0\nENDTAB\n");
  const auto blockTwice = twice("  0\nBLOCK\n  5\n20\n", "100\nAcDbBlockEnd\n");
  // What the database cannot hold, in a drawing with Object Data.
  LoadedDrawing d = load(good);
  addObjectData(*d.db);
  const std::vector<ObjectId> lines = d.db->blockEntities(d.db->modelSpace());
  const std::string data = save(d);
  const std::string entity = "  0\nLINE\n  5\n";
  const std::string lineA = entity + handleOf(*d.db, lines[0]) + "\n";
  const std::string lineB = entity + handleOf(*d.db, lines[1]) + "\n";
  const std::string lineC = entity + handleOf(*d.db, lines[2]) + "\n";
  const std::string xdict = "{ACAD_XDICTIONARY\n360\n";
  const std::string xdictOfA = xdict + handleOf(*d.db, d.db->entity(lines[0])->xdict) + "\n";
  const std::string xdictOfB = xdict + handleOf(*d.db, d.db->entity(lines[1])->xdict) + "\n";
  struct Case {
    const char* name;
    std::string text;
    std::size_t line;
    std::string message;
  };
  const Case cases[] = {
      {"a group code that is none", "  0\nSECTION\nxyz\nHEADER\n", 3, "found 'xyz'"},
      {"an old version", old, lineOf(old, "AC1009") - 1,
       "drawing files of version AC1009 are not supported; versions AC1015 (2000) to AC1032 "
       "(2018) are"},
      {"a handle that is none", badSeed, lineOf(badSeed, "$HANDSEED", 1),
       "a handle is expected for group 5, not 'xyz'"},
      {"empty", "", 1, "the file is empty"},
      {"no EOF", noEof, lastLine(noEof), "the file ends here without its end of file marker (EOF)"},
      {"in a section's name", "  0\nSECTION\n", 1,
       "the section that begins here has no ENDSEC: the file ends at line 2, inside its name"},
      {"in the header", inHeader, lineOf(good, "  0\nSECTION\n  2\nHEADER\n"),
       unended("HEADER", inHeader) + ", inside the header"},
      {"in a table", inTable, lineOf(good, "  0\nSECTION\n  2\nTABLES\n"),
       unended("TABLES", inTable)},
      {"in the entities", inEntities, lineOf(good, "  0\nSECTION\n  2\nENTITIES\n"),
       unended("ENTITIES", inEntities) + ", inside the entities"},
      {"a layer in the viewport table", layerInVport, lineOf(layerInVport, "  0\nEOF"),
       "the drawing ends here and has no layers"},
      // Its tables section already holds the UCS table twice.
      {"sections twice", sectionsTwice, 509, "a second UCS table begins here"},
      {"a table twice", tableTwice.first, tableTwice.second, "a second LAYER table begins here"},
      {"a block twice", blockTwice.first, blockTwice.second,
       "a second definition of the block of '*Model_Space' begins here"},
      {"two columns of a name", replaced(data, "  2\nLENGTH\n 70\n", "  2\nNAME\n 70\n"),
       lineOf(data, "  2\nLENGTH\n 70\n"), "two columns named 'NAME'"},
      {"a handle twice", replaced(data, lineB, lineA), lineOf(data, lineB),
       "already the handle of the object on line " + std::to_string(lineOf(data, lineA))},
      {"no handle", replaced(data, lineC, entity + "0\n"), lineOf(data, lineC), "no handle"},
      {"an undefined table", replaced(data, "  2\nTPMID_x\n 90\n7\n", "  2\nNOPE\n 90\n7\n"),
       lineOf(data, "  2\nTPMID_x\n 90\n7\n"), "NOPE"},
      {"a dictionary twice", replaced(data, xdictOfB, xdictOfA), lineOf(data, xdictOfB, 1),
       "already the one of the entity on line " + std::to_string(lineOf(data, xdictOfA, 1))},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    const auto refused = refusal(c.text);
    EXPECT_EQ(refused.first, c.line);
    EXPECT_NE(refused.second.find(c.message), std::string::npos) << refused.second;
  }
}

TEST(DrawingFile, RecordsThatDoNotMatchTheirTableAreKeptAsReadUntilChanged) {
  LoadedDrawing d = load(newDrawingText());
  platform::OdTableDef two;
  two.columns = {{L"ID", OdType::Integer, L"", OdValue(0)},
                 {L"NAME", OdType::Character, L"", OdValue(L"")}};
  d.db->createOdTable(L"T", two);
  d.db->createOdTable(L"E", platform::OdTableDef());
  DbOdContainer container(*d.db);
  std::vector<ObjectId> lines;
  for (int i = 1; i <= 5; ++i) {
    lines.push_back(addLine(*d.db, i));
    EXPECT_EQ(container.getTable(L"T")->addRecord(OdRecord(L"T", {OdValue(i), OdValue(L"n")}),
                                                  lines.back()),
              platform::Status::Ok);
  }
  EXPECT_EQ(container.getTable(L"E")->addRecord(OdRecord(L"E", {}), lines[4]),
            platform::Status::Ok);
  std::string text = save(d);
  const std::string tooMany = "  2\nT\n 90\n1\n  1\nn\n  1\nextra\n";
  struct Case {
    std::string from;
    std::string to;
    std::size_t into;  // lines into `to` where the warning points
    std::string what;
  };
  const Case cases[] = {
      {"  2\nT\n 90\n1\n  1\nn\n", tooMany, 6, "'T' has 3 values for 2 columns"},
      {"  2\nT\n 90\n2\n", "  2\nT\n 40\n2.5\n", 2,
       "column 'ID' in a record of the Object Data "
       "table 'T' is a real, not an integer"},
      {"  2\nT\n 90\n3\n", "  2\nT\n  1\n7x\n", 2, "is a character value, not an integer"},
      {"  2\nT\n 90\n4\n  1\nn\n", "  2\nT\n 90\n4\n", 0, "'T' has 1 value for 2 columns"},
      {"  2\nE\n", "  2\nE\n 90\n5\n", 2, "'E' has 1 value for 0 columns"},
  };
  for (const Case& c : cases) text = replaced(text, c.from, c.to);
  LoadedDrawing read = load(text);
  ASSERT_EQ(read.warnings.size(), std::size(cases));
  for (std::size_t i = 0; i < std::size(cases); ++i) {
    SCOPED_TRACE(cases[i].what);
    EXPECT_EQ(read.warnings[i].line, lineOf(text, cases[i].to, cases[i].into));
    EXPECT_NE(read.warnings[i].message.find(cases[i].what), std::string::npos)
        << read.warnings[i].message;
  }
  // The module sees each record conformed to its table.
  const auto records = recordsOf(*read.db);
  EXPECT_EQ(records[0].second, (std::vector<OdValue>{OdValue(1), OdValue(L"n")}));
  EXPECT_EQ(records[2].second, (std::vector<OdValue>{OdValue(2), OdValue(L"n")}));
  EXPECT_EQ(records[4].second, (std::vector<OdValue>{OdValue(7), OdValue(L"n")}));
  EXPECT_EQ(save(read), text);

  // Another record of the entity changes, the table is renamed: the record
  // keeps its values as they were read.
  const std::vector<ObjectId> readLines = read.db->blockEntities(read.db->modelSpace());
  DbOdContainer readContainer(*read.db);
  EXPECT_EQ(readContainer.getTable(L"T")->addRecord(OdRecord(L"T", {OdValue(9)}), readLines[0]),
            platform::Status::Ok);
  ASSERT_TRUE(read.db->renameOdTable(read.db->findOdTable(L"T"), L"U"));
  std::string renamed = save(read);
  EXPECT_NE(renamed.find("  2\nU\n 90\n1\n  1\nn\n  1\nextra\n  2\nU\n 90\n9\n"),
            std::string::npos);
  EXPECT_TRUE(load(renamed).warnings.size() == std::size(cases));

  // Changed, a record is conformed to its table.
  auto it = readContainer.newIterator();
  OdRecord record;
  for (ObjectId id : {readLines[0], readLines[1]}) {
    ASSERT_EQ(it->init(id, platform::OpenMode::Write, true), platform::Status::Ok);
    ASSERT_EQ(it->getRecord(record), platform::Status::Ok);
    ASSERT_EQ(it->updateRecord(record), platform::Status::Ok);
  }
  const std::string changed = save(read);
  EXPECT_NE(changed.find("  2\nU\n 90\n1\n  1\nn\n  2\nU\n 90\n9\n"), std::string::npos);
  EXPECT_NE(changed.find("  2\nU\n 90\n2\n  1\nn\n"), std::string::npos);
  EXPECT_EQ(load(changed).warnings.size(), std::size(cases) - 2);
}

TEST(DrawingFile, ACopySharesNoObjectWithItsOriginal) {
  // A polyface mesh, whose vertices are entities of their own, and an image
  // owning its reactor object and reacting to a group.
  const std::string entities =
      "  0\nPOLYLINE\n  5\nA0\n100\nAcDbEntity\n  8\n0\n100\nAcDbPolyFaceMesh\n 66\n1\n"
      " 10\n0.0\n 20\n0.0\n 30\n0.0\n 70\n64\n 71\n1\n 72\n0\n"
      "  0\nVERTEX\n  5\nA1\n330\nA0\n100\nAcDbEntity\n  8\n0\n100\nAcDbVertex\n"
      "100\nAcDbPolyFaceMeshVertex\n 10\n0.0\n 20\n0.0\n 30\n0.0\n 70\n192\n"
      "  0\nSEQEND\n  5\nA2\n330\nA0\n100\nAcDbEntity\n  8\n0\n"
      "  0\nIMAGE\n  5\nB0\n102\n{ACAD_REACTORS\n330\nB9\n102\n}\n100\nAcDbEntity\n"
      "  8\n0\n100\nAcDbRasterImage\n 10\n0.0\n 20\n0.0\n 30\n0.0\n340\nB1\n360\nB2\n";
  LoadedDrawing d = load(replaced(newDrawingText(), "ENTITIES\n", "ENTITIES\n" + entities));
  for (ObjectId id : d.db->blockEntities(d.db->modelSpace())) {
    d.db->copyEntity(id, d.db->modelSpace());
  }
  const std::string text = save(d);
  // Read again, no handle is there twice.
  EXPECT_EQ(load(text).db->blockEntities(load(text).db->modelSpace()).size(), 4u);
  const auto count = [&](const std::string& what) {
    std::size_t n = 0;
    for (std::size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + 1)) {
      ++n;
    }
    return n;
  };
  EXPECT_EQ(count("\nVERTEX\n"), 2u);
  EXPECT_EQ(count("340\nB1\n"), 2u);  // the image definition is shared
  EXPECT_EQ(count("360\nB2\n"), 1u);  // the reactor object is the original's
  EXPECT_EQ(count("330\nB9\n"), 1u);
}

// Entries copied out of one entity's extension dictionary and put on another:
// records, and another application's object under a handle of its own, which
// the saved file names as owned by the new dictionary.
TEST(DrawingFileTest, CopiedExtensionEntriesSaveUnderHandlesOfTheirOwn) {
  LoadedDrawing d = load(fixture("od_r2000.dxf"));
  Database& db = *d.db;
  DbDrawing drawing(db);
  ObjectId road;
  for (ObjectId id : db.blockEntities(db.modelSpace())) {
    const auto* dict = db.get<ExtDictionary>(db.entity(id)->xdict);
    if (dict != nullptr && dict->extras) road = id;
  }
  ASSERT_FALSE(road.isNull());
  const std::vector<platform::ExtensionEntryCopy> copies = drawing.copyExtensionEntries(road);
  std::vector<std::wstring> names;
  for (const auto& c : copies) names.push_back(c.name);
  EXPECT_EQ(names, (std::vector<std::wstring>{L"ACME_XREC", L"ZARVEL_OD"}));
  const ObjectId piece = db.addEntity(std::make_unique<LineEntity>(), db.modelSpace());
  for (const auto& c : copies) {
    EXPECT_EQ(drawing.putExtensionEntry(piece, c.name, c.copy), platform::Status::Ok);
    drawing.releaseExtensionEntry(c.copy);
  }
  EXPECT_EQ(drawing.putExtensionEntry(piece, L"ZARVEL_OD", copies.back().copy),
            platform::Status::Failed)
      << "a released copy is gone";

  LoadedDrawing back = load(save(d));
  const ObjectId pieceBack = back.db->idOfHandle(db.object(piece)->handle);
  const auto* dict = back.db->get<ExtDictionary>(back.db->entity(pieceBack)->xdict);
  ASSERT_TRUE(dict != nullptr && dict->extras);
  ASSERT_EQ(dict->extras->entries.size(), 1u);
  const ObjectId xrecord = back.db->idOfHandle(dict->extras->entries[0].handle);
  const auto* object = back.db->get<TaggedObject>(xrecord);
  ASSERT_NE(object, nullptr);
  EXPECT_EQ(object->owner, back.db->entity(pieceBack)->xdict);
  EXPECT_NE(back.db->sourceText(*object).find("not ours"), std::string_view::npos);
  const auto* roadDict = back.db->get<ExtDictionary>(
      back.db->entity(back.db->idOfHandle(db.object(road)->handle))->xdict);
  EXPECT_NE(roadDict->extras->entries[0].handle, dict->extras->entries[0].handle);
  EXPECT_EQ(dict->od, roadDict->od);
}

}  // namespace
}  // namespace host::dxf
