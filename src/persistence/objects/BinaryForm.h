// The binary form of trees and of the objects in them: shorter and quicker than the XML form, with the same content.
//
//   document       32-bit count of object roots; for each its name, its 64-bit ID and, if an object record with that ID
//                  hasn't come in the stream yet, its object record. 32-bit count of tree roots; for each its name and
//                  a tree record
//   object record  class name, 64-bit ID, tree record
//   tree record    32-bit count; for each attribute its name, its 16-bit type, its value
//   type           1 integer: 64 bits; 4 float: 64 bits; 8 text; 2 a 16-bit sub-tag and what belongs to it
//
// Names and texts stand as framework strings stand on a stream, and nothing longer than 49,999 bytes can be read back.
// Values go in the stream's byte order. The ID of an object is its address while it is written; what was read and isn't
// built keeps the ID, the class name and the tree that it came with. A reference that leads nowhere has the ID 0.
// Attributes without a value, bare pointers and foreign interfaces aren't written.
//
// Several objects may have one ID, where documents were loaded into each other. An ID means the first of them that is
// in the stream, so roots of that ID become that object, and what another one held isn't written for them. Where
// another one stands in a tree it has its own record, and its own content.
#pragma once

#include <cstdint>

namespace tessera {

class FAttributes;
class FStream;

// The sub-tags of type 2.
namespace BinaryTag {

// 32-bit count, that many values.
inline constexpr std::uint16_t kIntList = 2;
inline constexpr std::uint16_t kFloatList = 3;
inline constexpr std::uint16_t kStringList8 = 4;
inline constexpr std::uint16_t kStringList16 = 41;
inline constexpr std::uint16_t kSubList = 5;
// Tree record.
inline constexpr std::uint16_t kTree = 6;
// 32-bit size, bytes.
inline constexpr std::uint16_t kBinary = 7;
// Object record.
inline constexpr std::uint16_t kObject = 20;
// 64-bit ID.
inline constexpr std::uint16_t kReference = 21;
// 32-bit count, for each element one of the last two with its tag.
inline constexpr std::uint16_t kObjectList = 201;

// What older programs wrote and this one only reads: an object as its class name and a tree record, without an ID, and
// a 32-bit count of such objects. Two still older sub-tags, for objects in a form that told no lengths, can't be read
// and can't be passed over.
inline constexpr std::uint16_t kPlainObject = 108;
inline constexpr std::uint16_t kPlainObjectList = 101;
inline constexpr std::uint16_t kChainedObjectList = 1;
inline constexpr std::uint16_t kChainedObject = 8;

} // namespace BinaryTag

// The objects and trees that are named in the two lists, in their order. A tree root that is no FAttributes stores
// itself into one. False as soon as an object's storeAttributes or a write fails, and when trees and objects stand in
// each other deeper than FAttributes::kDeepest.
bool saveBinary(FStream& stream, const FAttributes& objects, const FAttributes& trees);

// Appends to the two lists. Objects come as FXmlReference, and are built when somebody asks for them. False when
// something can't be read, and beyond kDeepest; what was read by then is in the lists, with its references unresolved.
// An object of a class that isn't known is reported as -98 with the class name and left out.
bool loadBinary(FStream& stream, FAttributes& objects, FAttributes& trees);

} // namespace tessera
