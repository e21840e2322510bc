// TextStore: many small texts in few blocks. A text ends with a NUL and stays where it is until the store is cleared;
// nothing is given back before.
#pragma once

#include <cstddef>
#include <memory>
#include <string_view>
#include <vector>

namespace tessera {

class TextStore {
public:
    const char16_t* add(std::u16string_view text);
    void clear();

private:
    // In characters; a longer text gets a block of its own.
    static constexpr std::size_t kBlockSize = 8192;

    std::vector<std::unique_ptr<char16_t[]>> blocks_;
    char16_t* free_ = nullptr;
    std::size_t left_ = 0;
};

} // namespace tessera
