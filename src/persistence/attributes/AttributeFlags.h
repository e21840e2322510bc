// How a value is entered into a tree of attributes, and how the tree holds it.
#pragma once

#include <cstdint>

namespace tessera {

// The flags argument of every setter: a set of these. The marks are those of the constructor of FAttributeValue, and
// count only where a new record is made.
namespace AttributeFlags {

// The first value of that name, if there is one, gives way.
inline constexpr std::uint16_t kReplace = 0;
inline constexpr std::uint16_t kTransient = 1;
inline constexpr std::uint16_t kLocal = 2;
// A further record, whatever the tree has under the name already. This is how documents are read.
inline constexpr std::uint16_t kAppend = 4;
inline constexpr std::uint16_t kHidden = 8;

} // namespace AttributeFlags

// Who holds an object that is put into a tree or a list. The numbers are the bits of AttributeBits.
enum class AttributeHolding : std::uint16_t {
    // Only pointed at: the caller sees to it that the object outlives the tree.
    none = 0,
    // The tree takes a reference of its own.
    shared = 0x0010,
    // The caller's reference goes over to the tree.
    owned = 0x0020,
};

enum class BinaryHolding : bool {
    // The caller's bytes, which outlive the tree.
    byReference,
    copied,
};

} // namespace tessera
