#include "appservices/defaults/PropertyTreeRival.h"

#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>

#include <sstream>

namespace tessera::benchmarks {

namespace pt = boost::property_tree;

struct PropertyTreeRival::Tree {
    pt::ptree root;
};

PropertyTreeRival::PropertyTreeRival(const std::vector<std::string>& groups) : tree_(std::make_unique<Tree>()) {
    pt::ptree& root = tree_->root.add_child("Defaults", pt::ptree());
    for (const std::string& name : groups) {
        pt::ptree& group = root.add_child("item", pt::ptree());
        group.put("Group", name);
        group.put(pt::ptree::path_type("window.left", '/'), 17);
        group.put(pt::ptree::path_type("window.top", '/'), 1234567);
        group.put(pt::ptree::path_type("window.zoom", '/'), 0.75);
        group.put(pt::ptree::path_type("lastFolder", '/'), "C:\\Users\\somebody\\Music");
        group.put(pt::ptree::path_type("title", '/'), "a title of some length");
    }
}

PropertyTreeRival::~PropertyTreeRival() = default;

std::string PropertyTreeRival::save() const {
    std::ostringstream stream;
    pt::write_xml(stream, tree_->root);
    return stream.str();
}

std::size_t PropertyTreeRival::load(const std::string& text) {
    std::istringstream stream(text);
    pt::ptree loaded;
    pt::read_xml(stream, loaded);
    return loaded.get_child("Defaults").size();
}

} // namespace tessera::benchmarks
