#include "discovery/uri/Uri.h"

#include <algorithm>
#include <vector>

namespace tessera {

namespace {

bool isLetter(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

// "c:" or "c:/", after one "/" or none; 0 when there is no drive.
std::size_t driveRootLength(std::string_view path) {
    const std::size_t start = !path.empty() && path[0] == '/' ? 1 : 0;
    if (path.size() < start + 2 || !isLetter(path[start]) || path[start + 1] != ':') {
        return 0;
    }
    const bool slash = path.size() > start + 2 && path[start + 2] == '/';
    return start + (slash ? 3 : 2);
}

// "//host/".
std::size_t networkRootLength(std::string_view path) {
    if (path.size() < 4 || path.substr(0, 2) != "//" || path[2] == '/') {
        return 0;
    }
    const std::size_t slash = path.find('/', 2);
    return slash == std::string_view::npos ? 0 : slash + 1;
}

std::size_t rootLength(std::string_view path) {
    if (const std::size_t drive = driveRootLength(path); drive != 0) {
        return drive;
    }
    if (const std::size_t network = networkRootLength(path); network != 0) {
        return network;
    }
    return !path.empty() && path[0] == '/' ? 1 : 0;
}

// Whether there is nothing to take out: the rule, since most paths come from this layer itself.
bool isNormal(std::string_view rest) {
    std::size_t start = 0;
    while (start < rest.size()) {
        std::size_t end = rest.find('/', start);
        if (end == std::string_view::npos) {
            end = rest.size();
        } else if (end + 1 == rest.size()) {
            return false;
        }
        const std::string_view component = rest.substr(start, end - start);
        if (component.empty() || component == "." || component == "..") {
            return false;
        }
        start = end + 1;
    }
    return true;
}

} // namespace

std::string Uri::normalizedPath(std::string_view path) {
    const std::string_view root = path.substr(0, rootLength(path));
    const std::string_view rest = path.substr(root.size());
    if (isNormal(rest) && (root.empty() || root.back() == '/' || rest.empty())) {
        return std::string(path);
    }
    std::vector<std::string_view> components;
    for (std::size_t start = 0; start <= rest.size();) {
        const std::size_t end = std::min(rest.find('/', start), rest.size());
        const std::string_view component = rest.substr(start, end - start);
        start = end + 1;
        if (component.empty() || component == ".") {
            continue;
        }
        if (component == ".." && !components.empty() && components.back() != "..") {
            components.pop_back();
            continue;
        }
        components.push_back(component);
    }
    std::string normal(root);
    for (const std::string_view component : components) {
        if (!normal.empty() && normal.back() != '/') {
            normal += '/';
        }
        normal += component;
    }
    return normal;
}

Uri Uri::fromPath(std::string_view path) {
    Uri uri;
    uri.path = normalizedPath(path);
    return uri;
}

std::string_view Uri::lastComponent() const {
    const std::string_view whole = path;
    const std::size_t slash = whole.rfind('/');
    return slash == std::string_view::npos ? whole : whole.substr(slash + 1);
}

Uri Uri::child(std::string_view name) const {
    Uri uri = *this;
    if (!uri.path.empty() && uri.path.back() != '/') {
        uri.path += '/';
    }
    uri.path = normalizedPath(uri.path.append(name));
    return uri;
}

} // namespace tessera
