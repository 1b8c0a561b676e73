// What a drawing file held beyond the database's model: the order of its
// parts and where the text of what the host does not model stands, so that a
// save gives back the file as it was, changed only where the drawing was.
#pragma once

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "TagWriter.h"
#include "TextCodec.h"
#include "host/db/Objects.h"

namespace host::dxf {

struct FileImage {
  enum class PartKind { Verbatim, Header, Tables, Blocks, Entities, Objects };

  // A top-level part: a section, or text between sections (comments, EOF).
  // Sections the host rebuilds keep their first tags (head) and ENDSEC (tail).
  struct Part {
    PartKind kind = PartKind::Verbatim;
    SourceSpan text;  // the whole part, for Verbatim and Header
    SourceSpan head;
    SourceSpan tail;
  };

  struct Table {
    std::string name;  // LAYER, LTYPE, BLOCK_RECORD...
    SourceSpan head;   // from "0 TABLE" to the first record
    SourceSpan tail;   // "0 ENDTAB"
    Handle handle = 0;
    // The records of tables the database does not list itself, in order.
    std::vector<ObjectId> records;
  };

  // The BLOCK and ENDBLK entities that open and close a block's definition.
  struct BlockText {
    SourceSpan begin;
    SourceSpan end;
  };

  // A place in the OBJECTS section: an object of the database, or the xrecord
  // of Object Data records of an extension dictionary.
  struct ObjectSlot {
    ObjectId id;
    bool odXrecord = false;
  };

  std::shared_ptr<const std::string> text;
  std::string acadVersion = "AC1032";
  std::string codePage = "ANSI_1252";
  LineEnd lineEnd = LineEnd::Lf;
  TextCodec codec{"AC1032", "ANSI_1252"};

  std::vector<Part> parts;
  std::vector<Table> tables;
  std::vector<ObjectId> blockOrder;
  std::unordered_map<std::uint64_t, BlockText> blockTexts;
  std::vector<ObjectSlot> objects;
  ObjectId rootDictionary;
  ObjectId odTablesDictionary;
  // Objects up to this id came from the file; later ones were made since.
  std::uint64_t loadedIdCount = 0;
  // Which loaded entities the ENTITIES section held, by id; the others were in
  // block definitions.
  std::vector<bool> inEntitiesSection;
  // Where the xrecord of an extension dictionary's records stood, by the
  // dictionary's id. Kept here, not with the dictionary, so that drawings
  // that never came from a file pay nothing for it.
  std::vector<SourceSpan> odSources;
  void setOdSource(ObjectId dictionary, SourceSpan span) {
    if (odSources.size() <= dictionary.value()) odSources.resize(dictionary.value() + 1);
    odSources[dictionary.value()] = span;
  }
  SourceSpan odSource(ObjectId dictionary) const {
    return dictionary.value() < odSources.size() ? odSources[dictionary.value()] : SourceSpan{};
  }
  // Handles the writer gave to objects it had to add (the registered
  // application of the host's own XDATA), kept for the next save.
  Handle appIdHandle = 0;
};

}  // namespace host::dxf
