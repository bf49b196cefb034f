#pragma once

#include <QList>
#include <QString>

#include <map>
#include <variant>

// A JSON document as the app writes it. Objects keep their members sorted by key, so every
// document comes out in the same order on every run.
class JsonValue
{
public:
    using Array = QList<JsonValue>;
    using Object = std::map<QString, JsonValue>;
    using Storage = std::variant<std::nullptr_t, bool, qint64, double, QString, Array, Object>;

    JsonValue() : m_value(nullptr) {}
    JsonValue(bool value) : m_value(value) {}
    JsonValue(int value) : m_value(static_cast<qint64>(value)) {}
    JsonValue(qint64 value) : m_value(value) {}
    JsonValue(double value) : m_value(value) {}
    JsonValue(const QString &value) : m_value(value) {}
    JsonValue(const char16_t *value) : m_value(QString::fromUtf16(value)) {}
    JsonValue(Array value) : m_value(std::move(value)) {}
    JsonValue(Object value) : m_value(std::move(value)) {}

    const Storage &storage() const { return m_value; }
    bool isObject() const { return std::holds_alternative<Object>(m_value); }
    Object &object() { return std::get<Object>(m_value); }
    const Object &object() const { return std::get<Object>(m_value); }
    const Array &array() const { return std::get<Array>(m_value); }

    friend bool operator==(const JsonValue &, const JsonValue &) = default;

private:
    Storage m_value;
};

// Sets `key` only when the optional holds a value: unknown values are left out, never null.
template<typename T>
void putOptional(JsonValue::Object &object, const QString &key, const std::optional<T> &value)
{
    if (value)
        object.emplace(key, JsonValue(*value));
}
