// The blocks' cache. Which blocks lead back to themselves comes from their
// strongly connected components, found without recursion so that no nesting,
// however deep, runs out of stack; the components come out children first,
// so each block's placements are made from its children's.
#include "BlockCache.h"

#include <algorithm>
#include <cstring>
#include <unordered_set>

namespace host::geometry {
namespace {

// Past this many distinct placements below a block, working its box out under
// each map costs more than a looser box is worth.
constexpr std::size_t kMaxPlacements = 64;

// Maps compare by their bits, so that any number, even one that is not a
// number, finds itself again.
std::uint64_t bitsOf(double d) {
  std::uint64_t bits = 0;
  std::memcpy(&bits, &d, sizeof bits);
  return bits;
}

bool sameBits(const BlockCache::Key& a, const BlockCache::Key& b) {
  for (std::size_t i = 0; i < a.size(); ++i) {
    if (bitsOf(a[i]) != bitsOf(b[i])) return false;
  }
  return true;
}

std::size_t hashBits(const BlockCache::Key& key, std::size_t seed) {
  std::size_t h = seed;
  for (double d : key) h = (h ^ std::hash<std::uint64_t>{}(bitsOf(d))) * 1099511628211u;
  return h;
}

struct KeyHash {
  std::size_t operator()(const BlockCache::Key& key) const { return hashBits(key, 0); }
};
struct KeyEqual {
  bool operator()(const BlockCache::Key& a, const BlockCache::Key& b) const {
    return sameBits(a, b);
  }
};

BlockCache::Key product(const BlockCache::Key& a, const BlockCache::Key& b) {
  BlockCache::Key r{};
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      r[3 * i + j] = a[3 * i] * b[j] + a[3 * i + 1] * b[3 + j] + a[3 * i + 2] * b[6 + j];
    }
  }
  return r;
}

}  // namespace

bool BlockCache::BoxKey::operator==(const BoxKey& other) const {
  return block == other.block && sameBits(linear, other.linear);
}

std::size_t BlockCache::BoxKeyHash::operator()(const BoxKey& key) const {
  return hashBits(key.linear, std::hash<std::uint64_t>{}(key.block));
}

BlockCache& BlockCache::of(const Database& db) {
  BlockCache& cache = db.derived<BlockCache>();
  if (cache.generation_ != db.generation()) {
    cache.nodes_.clear();
    cache.boxes_.clear();
    cache.stack_.clear();
    cache.visited_ = 0;
    cache.components_ = 0;
    cache.generation_ = db.generation();
  }
  return cache;
}

bool BlockCache::shows(const Database& db, ObjectId holder, ObjectId block) {
  if (db.get<BlockRecord>(block) == nullptr) return false;
  if (holder.isNull()) return true;
  return analysed(db, holder).component != analysed(db, block).component;
}

bool BlockCache::exact(const Database& db, ObjectId block) {
  return !analysed(db, block).many;
}

const platform::Extents* BlockCache::box(ObjectId block, const Key& linear) const {
  auto it = boxes_.find(BoxKey{block.value(), linear});
  return it == boxes_.end() ? nullptr : &it->second;
}

void BlockCache::keep(ObjectId block, const Key& linear, const platform::Extents& box) {
  boxes_[BoxKey{block.value(), linear}] = box;
}

BlockCache::Node& BlockCache::analysed(const Database& db, ObjectId block) {
  Node& node = nodes_[block.value()];
  if (node.component < 0) analyse(db, block);
  return node;  // the map's elements stay where they are as it grows
}

void BlockCache::open(const Database& db, ObjectId block, std::vector<ObjectId>& calls) {
  Node& node = nodes_[block.value()];
  node.index = node.low = visited_++;
  node.onStack = true;
  for (ObjectId id : db.blockEntities(block)) {
    const Entity* e = db.openEntity(id);
    if (e == nullptr || e->kind() != EntityKind::BlockReference) continue;
    const auto& r = static_cast<const BlockReferenceEntity&>(*e);
    const auto* child = db.get<BlockRecord>(r.block);
    if (child == nullptr) continue;
    node.edges.push_back({r.block, placementOf(r, child->basePoint, Affine{}).copy.key()});
  }
  stack_.push_back(block);
  calls.push_back(block);
}

// Tarjan's search, its calls kept on a list of their own: a block's next edge
// is found again from how many of its edges it has gone through.
void BlockCache::analyse(const Database& db, ObjectId root) {
  std::vector<ObjectId> calls;
  std::vector<std::size_t> next;
  open(db, root, calls);
  next.push_back(0);
  while (!calls.empty()) {
    Node& node = nodes_[calls.back().value()];
    if (next.back() < node.edges.size()) {
      const ObjectId child = node.edges[next.back()++].block;
      Node& c = nodes_[child.value()];
      if (c.component >= 0) continue;  // done in this search or an earlier one
      if (c.index < 0) {
        open(db, child, calls);
        next.push_back(0);
      } else if (c.onStack) {
        node.low = std::min(node.low, c.index);
      }
      continue;
    }
    const ObjectId block = calls.back();
    calls.pop_back();
    next.pop_back();
    if (!calls.empty()) {
      Node& parent = nodes_[calls.back().value()];
      parent.low = std::min(parent.low, node.low);
    }
    if (node.low != node.index) continue;
    std::vector<ObjectId> members;
    ObjectId member;
    do {
      member = stack_.back();
      stack_.pop_back();
      nodes_[member.value()].onStack = false;
      members.push_back(member);
    } while (member != block);
    finish(members, components_++);
  }
}

// Every component below is finished by now, and references within this one
// are not shown.
void BlockCache::finish(const std::vector<ObjectId>& members, int component) {
  for (ObjectId member : members) nodes_[member.value()].component = component;
  for (ObjectId member : members) {
    Node& node = nodes_[member.value()];
    std::unordered_set<Key, KeyHash, KeyEqual> placements;
    placements.insert(Affine{}.key());
    for (const Edge& edge : node.edges) {
      const Node& child = nodes_[edge.block.value()];
      if (child.component == component) continue;
      node.many = node.many || child.many;
      for (const Key& below : child.placements) {
        if (node.many) break;
        placements.insert(product(edge.linear, below));
        node.many = placements.size() > kMaxPlacements;
      }
      if (node.many) break;
    }
    if (!node.many) node.placements.assign(placements.begin(), placements.end());
    node.edges.clear();
    node.edges.shrink_to_fit();
  }
}

}  // namespace host::geometry
