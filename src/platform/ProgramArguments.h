// ProgramArguments: what a program was started with, in UTF-8. The standard's own array may have lost characters: there
// are systems that bring it into the code page of the day first.
#pragma once

#include <string>
#include <vector>

namespace tessera::platform {

class ProgramArguments {
public:
    // With what main was given; where the system keeps the whole line, that is asked instead.
    ProgramArguments(int count, char** values);
    ProgramArguments(const ProgramArguments&) = delete;
    ProgramArguments& operator=(const ProgramArguments&) = delete;

    // In the shape that main has them: the program first, a null behind the last. They live as long as the object.
    int count() const { return static_cast<int>(texts_.size()); }
    char** values() { return values_.data(); }

private:
    static std::vector<std::string> textsOf(int count, char** values);

    std::vector<std::string> texts_;
    std::vector<char*> values_;
};

inline ProgramArguments::ProgramArguments(int count, char** values) : texts_(textsOf(count, values)) {
    for (std::string& text : texts_) {
        values_.push_back(text.data());
    }
    values_.push_back(nullptr);
}

} // namespace tessera::platform
