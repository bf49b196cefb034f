#pragma once

#include <QString>

#include <utility>
#include <variant>

// An error as a value: `kind` picks the message and the exit code, `message` carries the
// text of the library that failed (FFmpeg's, the file system's) when there is one.
// `Empty` is asked-for work with nothing to work on: it has its own text, which no other
// invalid value may borrow.
struct Error {
    enum class Kind { Unreadable, Unsupported, Cancelled, WriteFailed, Invalid, Empty, Internal };
    Kind kind = Kind::Internal;
    QString message;
    QString path;
    int avError = 0;
};

// Shaped like std::expected: either a value or an Error. Nothing throws across threads.
template<typename T>
class Result
{
public:
    Result(T value) : m_data(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : m_data(std::in_place_index<1>, std::move(error)) {}

    bool has_value() const { return m_data.index() == 0; }
    explicit operator bool() const { return has_value(); }
    T &value() & { return std::get<0>(m_data); }
    const T &value() const & { return std::get<0>(m_data); }
    T &&value() && { return std::get<0>(std::move(m_data)); }
    T &operator*() & { return value(); }
    const T &operator*() const & { return value(); }
    T *operator->() { return &value(); }
    const T *operator->() const { return &value(); }
    const Error &error() const { return std::get<1>(m_data); }

private:
    std::variant<T, Error> m_data;
};

struct Done {
};
using Status = Result<Done>;
