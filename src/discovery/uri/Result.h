// Result: what an operation on a URI answers: a value or an error, never an exception.
//
// ok() tells which; value() may be asked for only then, error() only otherwise. Result<void> has no value.
#pragma once

#include "discovery/uri/Error.h"

#include <cassert>
#include <utility>
#include <variant>

namespace tessera {

template <class T>
class [[nodiscard]] Result {
public:
    Result(T value) : content_(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : content_(std::in_place_index<1>, std::move(error)) {}

    bool ok() const { return content_.index() == 0; }
    explicit operator bool() const { return ok(); }

    const T& value() const& { return *checked(std::get_if<0>(&content_)); }
    T& value() & { return *checked(std::get_if<0>(&content_)); }
    T&& value() && { return std::move(*checked(std::get_if<0>(&content_))); }
    T valueOr(T other) const { return ok() ? value() : std::move(other); }
    const Error& error() const { return *checked(std::get_if<1>(&content_)); }

private:
    template <class Pointer>
    static Pointer checked(Pointer pointer) {
        assert(pointer != nullptr);
        return pointer;
    }

    std::variant<T, Error> content_;
};

template <>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(Error error) : failed_(true), error_(std::move(error)) {}

    bool ok() const { return !failed_; }
    explicit operator bool() const { return ok(); }
    const Error& error() const {
        assert(failed_);
        return error_;
    }

private:
    bool failed_ = false;
    Error error_;
};

} // namespace tessera
