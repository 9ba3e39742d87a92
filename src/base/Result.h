// SPDX-License-Identifier: Apache-2.0
/// Value or error, for everything that a user's file can make fail.
///
///     CResult<CFileView> view = CFileView::Open(path);
///     ASSIGN_OR_RETURN(CFileView bytes, CFileView::Open(path));
///     RETURN_IF_ERROR(CheckHeader(bytes));
#pragma once

#include <cassert>
#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace zov {

/// What kind of failure it is; the text says the rest. The order is of no meaning.
enum class EErr
{
    Unspecified,
    NotFound,    ///< no such file, sheet, column, record
    Access,      ///< permission refused, locked by another program
    Io,          ///< the device failed: full disk, read error
    Format,      ///< the bytes are not what the format asks for
    Limit,       ///< a bound of ours was exceeded (depth, count, size)
    Unsupported, ///< well formed, but of a kind that is not handled (encrypted, other version)
    Argument,    ///< the caller's value is out of range
    Singular,    ///< a matrix has no inverse
    Cancelled    ///< the user asked to stop; never shown as a fault
};

/// Where in a text: file as shown to the user, line and column counted from 1, 0 where unknown.
struct SSourcePos
{
    std::string file;
    std::size_t line = 0;
    std::size_t column = 0;
};

struct SError
{
    EErr code = EErr::Unspecified;
    std::string text; ///< lower-case start, no full stop; says what, found and expected
    SSourcePos pos;
    std::vector<std::string> notes;

    /// `file:line:column: text`, with what is known of the position.
    [[nodiscard]] std::string Full() const;
};

/// A value of type T or the reason why there is none.
template <class T>
class [[nodiscard]] CResult
{
public:
    CResult(T value) // NOLINT: implicit on purpose, so that `return value;` reads well
        : m_held(std::in_place_index<0>, std::move(value))
    {
    }
    CResult(SError error) // NOLINT
        : m_held(std::in_place_index<1>, std::move(error))
    {
    }

    [[nodiscard]] bool Ok() const { return m_held.index() == 0; }
    explicit operator bool() const { return Ok(); }

    [[nodiscard]] T& Value()
    {
        assert(Ok());
        return *std::get_if<0>(&m_held);
    }
    [[nodiscard]] const T& Value() const
    {
        assert(Ok());
        return *std::get_if<0>(&m_held);
    }
    [[nodiscard]] T Take() { return std::move(Value()); }
    T& operator*() { return Value(); }
    const T& operator*() const { return Value(); }
    T* operator->() { return &Value(); }
    const T* operator->() const { return &Value(); }

    [[nodiscard]] const SError& Error() const
    {
        assert(!Ok());
        return *std::get_if<1>(&m_held);
    }
    [[nodiscard]] SError TakeError() { return std::move(*std::get_if<1>(&m_held)); }

private:
    std::variant<T, SError> m_held;
};

template <>
class [[nodiscard]] CResult<void>
{
public:
    CResult() = default;
    CResult(SError error) // NOLINT
        : m_error(std::move(error))
    {
    }

    [[nodiscard]] bool Ok() const { return !m_error; }
    explicit operator bool() const { return Ok(); }
    [[nodiscard]] const SError& Error() const
    {
        assert(m_error);
        return *m_error; // NOLINT(bugprone-unchecked-optional-access)
    }
    [[nodiscard]] SError TakeError() { return std::move(*m_error); } // NOLINT

private:
    std::optional<SError> m_error;
};

/// `return Fail(EErr::Format, "line ...");`
[[nodiscard]] SError Fail(EErr code, std::string text);
[[nodiscard]] SError FailAt(EErr code, SSourcePos pos, std::string text);

} // namespace zov

#define ZOV_CONCAT_INNER(a, b) a##b
#define ZOV_CONCAT(a, b) ZOV_CONCAT_INNER(a, b)
#define RETURN_IF_ERROR(expression)                                                                \
    do {                                                                                           \
        if (auto zovOutcome = (expression); !zovOutcome.Ok()) {                                    \
            return zovOutcome.TakeError();                                                         \
        }                                                                                          \
    } while (false)
#define ASSIGN_OR_RETURN(declaration, expression)                                                  \
    auto ZOV_CONCAT(zovResult, __LINE__) = (expression);                                           \
    if (!ZOV_CONCAT(zovResult, __LINE__).Ok()) {                                                   \
        return ZOV_CONCAT(zovResult, __LINE__).TakeError();                                        \
    }                                                                                              \
    declaration = ZOV_CONCAT(zovResult, __LINE__).Take()
