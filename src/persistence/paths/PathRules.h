// What makes a text a root or an absolute path, and the separator of path texts.
//
// Path texts are 16-bit or 8-bit with backslashes on every system; "x:" is a drive on every system. Where the system
// has no drives, a single leading backslash is the root of the file tree, and such a text is absolute.
#pragma once

namespace tessera {

class FStringRef;

inline constexpr char16_t kPathSeparator = u'\\';
// The extension of files that have none.
inline constexpr char16_t kUnknownExtension[] = u"???";
// The size of the buffers that older callers pass for a path, its NUL included.
inline constexpr int kPathBufferLength = 260;

// "x:", "x:\", a share with nothing behind its root, the root of an archive ("vfs:\\" and a key), and every text
// shorter than two characters, but not a null text.
bool isRootPath(const FStringRef& text);

// Drive paths, shares, URL forms, and a leading backslash where that is the root of the file tree.
bool isAbsolutePath(const FStringRef& text);

} // namespace tessera
