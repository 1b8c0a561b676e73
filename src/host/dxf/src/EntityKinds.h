// The codec of each entity kind: its subclasses and the codes it models, how its
// tags fill its model class and how the class is written back. EntityCodec.cpp
// picks the kind and writes what all kinds share around it.
#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "EntityCommon.h"

namespace host::dxf::entity {

// Readers get the tags of one entity, [begin, end) with begin its group-0 tag.
// Writers write the kind's own subclasses, between the common subclass and the
// XDATA.
extern const KindInfo kPointKind;
std::unique_ptr<Entity> readPoint(const Tag* begin, const Tag* end, ReadContext& context,
                                  CommonRead& common);
void writePoint(const PointEntity& e, EntityWriter& w);

extern const KindInfo kLineKind;
std::unique_ptr<Entity> readLine(const Tag* begin, const Tag* end, ReadContext& context,
                                 CommonRead& common);
void writeLine(const LineEntity& e, EntityWriter& w);

extern const KindInfo kArcKind;
std::unique_ptr<Entity> readArc(const Tag* begin, const Tag* end, ReadContext& context,
                                CommonRead& common);
void writeArc(const ArcEntity& e, EntityWriter& w);

extern const KindInfo kCircleKind;
std::unique_ptr<Entity> readCircle(const Tag* begin, const Tag* end, ReadContext& context,
                                   CommonRead& common);
void writeCircle(const CircleEntity& e, EntityWriter& w);

extern const KindInfo kEllipseKind;
std::unique_ptr<Entity> readEllipse(const Tag* begin, const Tag* end, ReadContext& context,
                                    CommonRead& common);
void writeEllipse(const EllipseEntity& e, EntityWriter& w);

extern const KindInfo kSplineKind;
std::unique_ptr<Entity> readSpline(const Tag* begin, const Tag* end, ReadContext& context,
                                   CommonRead& common);
void writeSpline(const SplineEntity& e, EntityWriter& w);

extern const KindInfo kLwPolylineKind;
std::unique_ptr<Entity> readLwPolyline(const Tag* begin, const Tag* end, ReadContext& context,
                                       CommonRead& common);
void writeLwPolyline(const LwPolylineEntity& e, EntityWriter& w);

extern const KindInfo kMlineKind;
std::unique_ptr<Entity> readMline(const Tag* begin, const Tag* end, ReadContext& context,
                                  CommonRead& common);
void writeMline(const MlineEntity& e, EntityWriter& w);

extern const KindInfo kTextKind;
std::unique_ptr<Entity> readText(const Tag* begin, const Tag* end, ReadContext& context,
                                 CommonRead& common);
void writeText(const TextEntity& e, EntityWriter& w);

extern const KindInfo kMTextKind;
std::unique_ptr<Entity> readMText(const Tag* begin, const Tag* end, ReadContext& context,
                                  CommonRead& common);
void writeMText(const MTextEntity& e, EntityWriter& w);
// The handles of the MTEXTs that hold the further columns of a multiline text
// in a file before 2018, as the ACAD XDATA of [begin, end) lists them.
std::vector<Handle> mtextColumnHandles(const Tag* begin, const Tag* end);

extern const KindInfo kAttributeKind;
std::unique_ptr<Entity> readAttribute(const Tag* begin, const Tag* end, ReadContext& context,
                                      CommonRead& common);
void writeAttribute(const AttributeEntity& e, EntityWriter& w);

extern const KindInfo kAttributeDefinitionKind;
std::unique_ptr<Entity> readAttributeDefinition(const Tag* begin, const Tag* end,
                                                ReadContext& context, CommonRead& common);
void writeAttributeDefinition(const AttributeDefinitionEntity& e, EntityWriter& w);

// ---- kinds followed by entities of their own, up to a SEQEND ----------------

// The original tags of the entities that follow a POLYLINE or an INSERT,
// found by handle.
class Followers {
 public:
  Followers() = default;
  Followers(const Tag* begin, const Tag* end);
  // The follower with this handle, else (handle 0, or none has it) the next of
  // this name not yet taken; an empty range when there is none.
  std::pair<const Tag*, const Tag*> take(Handle handle, std::string_view name);

 private:
  struct Entry {
    const Tag* begin;
    const Tag* end;
    Handle handle;
    bool taken;
  };
  std::vector<Entry> entries_;
  std::size_t hint_ = 0;
};

// What the followers of an entity take from it.
struct Parent {
  Handle handle = 0;
  std::string layer;  // encoded for the file
  bool paperSpace = false;
};

void writeSeqend(Handle handle, const Parent& parent, Followers& original, TagWriter& out,
                 WriteContext& context);

// POLYLINE: [begin, end) runs through its SEQEND. A mesh or polyface mesh is
// not a polyline this host models.
enum class PolylineForm { TwoD, ThreeD, Other };
PolylineForm polylineForm(const Tag* begin, const Tag* end);
extern const KindInfo kPolyline2dKind;
extern const KindInfo kPolyline3dKind;
std::unique_ptr<Entity> readPolyline(const Tag* begin, const Tag* end, bool threeD,
                                     ReadContext& context, CommonRead& common);
void writePolyline2d(const Polyline2dEntity& e, EntityWriter& w);
void writePolyline3d(const Polyline3dEntity& e, EntityWriter& w);
// The vertices and the SEQEND.
void writeVertices(const std::vector<PolylineVertex>& vertices, bool threeD, Handle seqend,
                   const Parent& parent, Followers& original, TagWriter& out,
                   WriteContext& context);

// INSERT: [begin, end) runs through its SEQEND when attributes follow.
extern const KindInfo kBlockReferenceKind;
std::unique_ptr<Entity> readBlockReference(const Tag* begin, const Tag* end, ReadContext& context,
                                           CommonRead& common,
                                           std::vector<std::unique_ptr<Entity>>& attributes);
void writeBlockReference(const BlockReferenceEntity& e, EntityWriter& w);
// The attributes and the SEQEND, when there are attributes.
void writeAttributes(const BlockReferenceEntity& e, const Parent& parent, Followers& original,
                     TagWriter& out, WriteContext& context);
// The attributes of the reference that are there to be written.
std::vector<const AttributeEntity*> attributesOf(const BlockReferenceEntity& e,
                                                 WriteContext& context);

// Writes an entity that has no followers (also an ATTRIB): start, common
// subclass, the kind's subclasses, XDATA.
void writeSingle(const Entity& entity, Handle owner, bool paperSpace, TagWriter& out,
                 WriteContext& context, const Tag* begin, const Tag* end);

}  // namespace host::dxf::entity
