// PropertyTreeRival: the same settings in Boost's property tree. Behind a header of its own, since that library needs
// the compiler's type information, which ours is built without.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace tessera::benchmarks {

class PropertyTreeRival {
public:
    explicit PropertyTreeRival(const std::vector<std::string>& groups);
    ~PropertyTreeRival();

    // As XML.
    std::string save() const;
    // Reads what save has written, into a tree of its own; how many children that has.
    static std::size_t load(const std::string& text);

private:
    struct Tree;
    std::unique_ptr<Tree> tree_;
};

} // namespace tessera::benchmarks
