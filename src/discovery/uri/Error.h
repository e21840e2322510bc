// Error: why an operation on a URI failed: the platform's number in its category, and a text. An error of this layer
// itself has the number 0 and says it all in its text.
#pragma once

#include <string>
#include <system_error>

namespace tessera {

struct Error {
    Error() = default;
    explicit Error(std::string text) : message(std::move(text)) {}
    // The number stands for the platform's own, also where the standard library calls its category the generic one.
    explicit Error(std::error_code error) : code(error.value()), message(error.message()) {}

    int code = 0;
    const std::error_category* category = &std::system_category();
    std::string message;
};

} // namespace tessera
