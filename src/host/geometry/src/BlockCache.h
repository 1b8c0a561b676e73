// What the extents keep about blocks between questions, so that a block nested
// under many references is worked out once and not once per path to it: which
// references a block's contents show, whether a block's contents are few enough
// distinct placements to be bounded exactly under each, and the boxes already
// found. It lives beside the drawing and starts afresh whenever the drawing
// changes, undo and redo included.
#pragma once

#include <array>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "Placement.h"
#include "host/db/Database.h"
#include "platform/Geometry.h"

namespace host::geometry {

class BlockCache : public Database::Derived {
 public:
  using Key = std::array<double, 9>;  // the linear part of a placement, Affine::key()

  // The drawing's cache, emptied first if the drawing changed since it was filled.
  static BlockCache& of(const Database& db);

  // Whether the contents of a block (null: none, a reference asked about on
  // its own) show a reference to another block. A block that leads back to
  // the one holding the reference, directly or through others, does not: the
  // drawing then refers to itself, and each block shows once.
  bool shows(const Database& db, ObjectId holder, ObjectId block);
  // Whether the block's contents fall under few enough distinct placements,
  // however deep, that its box is worked out exactly under each map asked
  // for; otherwise its box is its own box's corners placed, which holds it.
  bool exact(const Database& db, ObjectId block);

  // The box of a block's contents under a linear map; null if not yet known.
  const platform::Extents* box(ObjectId block, const Key& linear) const;
  void keep(ObjectId block, const Key& linear, const platform::Extents& box);

 private:
  struct Edge {
    ObjectId block;
    Key linear;
  };
  struct Node {
    int index = -1;
    int low = -1;
    int component = -1;
    bool onStack = false;
    bool many = false;  // more distinct placements below it than are kept
    std::vector<Edge> edges;
    std::vector<Key> placements;  // of the blocks below, itself included
  };
  struct BoxKey {
    std::uint64_t block;
    Key linear;
    bool operator==(const BoxKey& other) const;
  };
  struct BoxKeyHash {
    std::size_t operator()(const BoxKey& key) const;
  };

  Node& analysed(const Database& db, ObjectId block);
  void analyse(const Database& db, ObjectId root);
  void open(const Database& db, ObjectId block, std::vector<ObjectId>& calls);
  void finish(const std::vector<ObjectId>& members, int component);

  std::uint64_t generation_ = ~std::uint64_t{0};
  int visited_ = 0;
  int components_ = 0;
  std::vector<ObjectId> stack_;  // the open blocks of the search for components
  std::unordered_map<std::uint64_t, Node> nodes_;
  std::unordered_map<BoxKey, platform::Extents, BoxKeyHash> boxes_;
};

}  // namespace host::geometry
