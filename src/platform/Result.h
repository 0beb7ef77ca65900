#pragma once

#include "platform/FileError.h"

#include <utility>
#include <variant>

namespace brivane {

/// What an operation on files gives back: its value, or the error for which there is none.
///
/// Both convert to a Result, so that a function returns whichever it has. Asking for the one that
/// is not there is a mistake of the caller's and throws std::bad_variant_access.
template<typename T = void>
class [[nodiscard]] Result {
public:
    Result(T value)
        : m_outcome(std::in_place_index<0>, std::move(value))
    {
    }
    Result(FileError error)
        : m_outcome(std::in_place_index<1>, std::move(error))
    {
    }

    explicit operator bool() const { return m_outcome.index() == 0; }
    [[nodiscard]] T& operator*() { return std::get<0>(m_outcome); }
    [[nodiscard]] const T& operator*() const { return std::get<0>(m_outcome); }
    [[nodiscard]] T* operator->() { return &std::get<0>(m_outcome); }
    [[nodiscard]] const T* operator->() const { return &std::get<0>(m_outcome); }
    [[nodiscard]] const FileError& error() const { return std::get<1>(m_outcome); }

private:
    std::variant<T, FileError> m_outcome;
};

/// Success without a value is `{}`.
template<>
class [[nodiscard]] Result<void> {
public:
    Result() = default;
    Result(FileError error)
        : m_outcome(std::move(error))
    {
    }

    explicit operator bool() const { return m_outcome.index() == 0; }
    [[nodiscard]] const FileError& error() const { return std::get<1>(m_outcome); }

private:
    std::variant<std::monostate, FileError> m_outcome;
};

} // namespace brivane
