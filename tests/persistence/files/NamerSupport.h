// The folder that the namers' tests ask: which numbers are taken, how long a name may be, and how often it was asked.
#pragma once

#include "persistence/files/PathSupport.h"
#include "persistence/paths/IUniqueNamer.h"

#include <functional>
#include <string>
#include <vector>

namespace tessera {

class FakeFolder final : public ICandidateChecker {
public:
    std::function<bool(const std::string&)> taken = [](const std::string&) { return false; };
    std::size_t longest = 200;
    std::vector<std::string> asked;

    bool isValid(const FStringRef& candidate) override { return utf8Of(candidate).size() <= longest; }
    bool isTaken(const FStringRef& candidate) override {
        asked.push_back(utf8Of(candidate));
        return taken(asked.back());
    }
};

// Whether the name is the stem with a number from 1 to last behind it.
inline std::function<bool(const std::string&)> takenUpTo(const std::string& stem, unsigned long last) {
    return [stem, last](const std::string& name) {
        return name.starts_with(stem + "-") && std::stoul(name.substr(stem.size() + 1)) <= last;
    };
}

struct NamerAnswer {
    bool found;
    std::string name;
};

inline NamerAnswer askNamer(IUniqueNamer& namer, const char* base, FakeFolder& folder) {
    FString result("before");
    const bool found = namer.makeName(FStringRef(base), FStringRef("wav"), folder, result);
    return {found, utf8Of(result)};
}

} // namespace tessera
