#pragma once

#include <QString>

#include <optional>
#include <utility>

namespace platform {

// Why something failed: one line for a person or a log, with what it concerns. isRepeated: the same failure of the same
// thing once more, so that whoever keeps a log has it already.
struct Failure
{
    QString text;
    bool isRepeated = false;
};

// What a function returns that can fail and says why: a value, or a failure. It cannot be ignored. Both are returned as
// they are: return text; or return Failure{...};
// NOLINTBEGIN(google-explicit-constructor)
template <typename T = void> class [[nodiscard]] Result
{
public:
    Result(T value) : m_value(std::move(value)) {}
    Result(Failure failure) : m_failure(std::move(failure)) {}

    bool ok() const { return m_value.has_value(); }
    const T& value() const { return *m_value; } // only when ok
    T& value() { return *m_value; }
    const QString& error() const { return m_failure.text; } // empty when ok

private:
    std::optional<T> m_value;
    Failure m_failure;
};

// The same for a function without a value.
template <> class [[nodiscard]] Result<void>
{
public:
    Result() = default;
    Result(Failure failure) : m_failure(std::move(failure)) {}

    bool ok() const { return m_failure.text.isEmpty(); }
    const QString& error() const { return m_failure.text; }
    bool isRepeated() const { return m_failure.isRepeated; }

private:
    Failure m_failure;
};
// NOLINTEND(google-explicit-constructor)

} // namespace platform
