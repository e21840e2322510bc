// AudioExportScriptList: the accepted scripts of a folder, by product name.
//
// Names are ordered as bytes; scripts of one name stand side by side in the order in which they were found. A plain
// value. Scanning never fails: a folder that isn't there, and a file that is no accepted script, add nothing.
#pragma once

#include "exportscripts/AudioExportScript.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <utility>

namespace tessera {

enum class ScriptKind : std::int32_t {
    // Editions of the peer.
    peers = 0,
    hosts = 1,
};

class AudioExportScriptList {
    using Scripts = std::multimap<std::string, AudioExportScript, std::less<>>;

public:
    using Iterator = Scripts::const_iterator;

    // Scans the machine's folder of scripts.
    AudioExportScriptList();
    explicit AudioExportScriptList(const FNPath& folder);
    static AudioExportScriptList none() { return AudioExportScriptList(Scripts()); }

    bool isEmpty() const { return scripts_.empty(); }
    std::size_t count() const { return scripts_.size(); }
    Iterator begin() const { return scripts_.begin(); }
    Iterator end() const { return scripts_.end(); }
    // All scripts of one product.
    std::pair<Iterator, Iterator> scriptsOf(std::string_view name) const { return scripts_.equal_range(name); }

    // The scripts of the products of that kind; of any other kind there are none.
    AudioExportScriptList select(ScriptKind kind) const;

private:
    explicit AudioExportScriptList(Scripts scripts) : scripts_(std::move(scripts)) {}
    void scan(const FNPath& folder);

    Scripts scripts_;
};

// The machine-wide folder of scripts, or an empty path when it doesn't exist.
FNPath scriptsFolder();

} // namespace tessera
