// Uri: the name of something in a file system: scheme, authority, path, query, fragment, in UTF-8 with "/" as the
// separator of paths.
//
// A plain path gives a URI whose path alone is set, in normal form; its empty scheme leads to the native file system.
#pragma once

#include <string>
#include <string_view>

namespace tessera {

struct Uri {
    static Uri fromPath(std::string_view path);

    // Without "." components, and with each ".." taken together with the component before it where there is one: the
    // path "a/../../b" becomes "../b". Roots stay: "c:", "c:/", the same behind one "/", "//host/", "/".
    static std::string normalizedPath(std::string_view path);

    // What stands behind the last "/".
    std::string_view lastComponent() const;
    // This path with a further component.
    Uri child(std::string_view name) const;

    friend bool operator==(const Uri&, const Uri&) = default;

    std::string scheme;
    std::string authority;
    std::string path;
    std::string query;
    std::string fragment;
};

} // namespace tessera
